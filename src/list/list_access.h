// What the library does with lists beyond what hosts see of them.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <qkui/list/list_ctrl.h>
#include "list/list_state.h"

namespace qkui {

class DisplayList;
class OperationSink;

struct ListAccess {
    static ListEntries& Entries(const QKListCtrl& list) { return *list.m_state->entries; }
    static ListScroll& Scroll(const QKListCtrl& list) { return list.m_state->scroll; }
    static ListKeys& Keys(const QKListCtrl& list) { return list.m_state->keys; }
    static const ListCalls& Calls(const QKListCtrl& list) { return list.m_state->calls; }
    // Ends with the list, also where copies of it live on.
    static std::shared_ptr<const void> Life(const QKListCtrl& list) { return list.m_state->life; }

    // ---- Layout
    static ListMetrics Metrics(const QKListCtrl& list);
    static ListMeasure Measure(const QKListCtrl& list);
    static std::optional<CellGrid> Grid(const QKListCtrl& list, bool columns);
    static std::optional<CellGrid> LayoutGrid(const QKListCtrl& list);
    template <class Place>
    static bool Add(QKListCtrl& list, QKListItem& host, int index, Place place);
    static std::optional<CellPlace> PlaceFirstFree(QKListCtrl& list, const std::optional<CellGrid>& grid);
    static std::optional<CellPlace> PlaceAtPoint(QKListCtrl& list, int x, int y);
    static void PlaceRecord(QKListCtrl& list, QKListItem& item, const std::optional<CellPlace>& place);
    template <class SetRects>
    static void MeasureRecord(QKListCtrl& list, QKListItem& item, SetRects setRects);
    static void Grow(QKListCtrl& list, const CRect& cell);
    static void LayOutAll(QKListCtrl& list);
    static bool MoveLayout(QKListCtrl& list, const ListLayout& layout);
    static void PlaceAll(QKListCtrl& list, ListLayout& layout);

    // ---- Scrolling. The corner is the content's, from which cells are counted.
    static CPoint Corner(const QKListCtrl& list);
    static CRect View(const QKListCtrl& list);
    static CRect Clipped(const QKListCtrl& list, const CRect& rect);  // to what a list that scrolls shows
    static CSize Content(QKListCtrl& list);
    static void MoveView(QKListCtrl& list, const CRect& rect);
    static bool ScrollTo(QKListCtrl& list, CPoint position);
    static void KeepInRange(QKListCtrl& list) { ScrollTo(list, GetScrollPosNow(list)); }
    static CPoint GetScrollPosNow(const QKListCtrl& list);
    static CSize LineSize(const QKListCtrl& list);
    static bool Turn(QKListCtrl& list, int delta);
    static void FollowBar(QKListCtrl& list);
    static void ShowOnBar(QKListCtrl& list);
    static CRect BandArea(const QKListCtrl& list, const CRect& band);
    static std::vector<Entry*> HitBy(QKListCtrl& list, CPoint point);

    // ---- Keys: where they lead, by index; -1 where they lead nowhere.
    enum class Way { Up, Down, Left, Right, PageUp, PageDown, Home, End };
    static int Locate(QKListCtrl& list, const EntryMark& mark);
    static int Caret(QKListCtrl& list);
    static int Target(QKListCtrl& list, int from, Way way);
    static int Beside(QKListCtrl& list, int from, Way way);
    static int APageFrom(QKListCtrl& list, int from, Way way);
    static int Placed(QKListCtrl& list, int index, int step);
    static EntryMark MarkAt(QKListCtrl& list, int index);
    static void SelectRange(QKListCtrl& list, int from, int to, bool select);
    static void Pressed(QKListCtrl& list, const Entry& entry);
    static void Unfocus(QKListCtrl& list, const Entry* except);

    // ---- What the host wants called
    static std::function<void(QKListItem*, POINT*)> ClickCall(const QKListCtrl& list);
    static std::function<void(QKListItem*, POINT*)> RightClickCall(const QKListCtrl& list);
    static std::function<void(QKListItem*)> DoubleClickCall(const QKListCtrl& list);

    // ---- Drawing: a frame begins; every entry that draws into an area, in drawing order; what it draws.
    static void BeginFrame(QKListCtrl& list);
    static SIZE LargestFrame(const QKListCtrl& list);
    static const std::vector<Entry*>& DrawnIn(QKListCtrl& list, const CRect& area);
    // `scale`: pixels to a unit of what it is painted on; 0 for who wants to know each part of the frames.
    static void ComposeEntry(QKListCtrl& list, Entry& entry, OperationSink& sink, int scale);
    // Adds the numbers and the pixels of an entry's picture to a step that was begun.
    static void DescribeEntry(QKListCtrl& list, Entry& entry, DisplayList& inputs);
    static Gdiplus::Image* CaptionOf(QKListCtrl& list, Entry& entry, const Gdiplus::RectF& place,
                                     Gdiplus::StringTrimming trimming);
};

}  // namespace qkui
