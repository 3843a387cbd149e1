// The entries of a list: the collection in its order, and fast answers about it. Every answer is what a walk
// of the collection from its head would give.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

#include "list/caption_store.h"
#include "list/cell_search.h"
#include "list/entry_selection.h"
#include "list/icon_pool.h"
#include "list/identifiers.h"
#include "list/list_layout.h"
#include "list/list_metrics.h"
#include "list/list_node.h"
#include "list/record_state.h"
#include "list/rect_index.h"

// An entry is a node. Its record is made when a host asks for the entry, and may be written to by the host
// from then on. What differs in a record from when the list last looked at it, the host wrote: the list takes
// that over. What the list finds out is written into records before a host gets them, and into those it may
// be looking at (PushKept).
//
// The list looks at records before each answer: at all while they are few. Once there were more than
// Pace::all, it looks before each answer at those handed out lately and at those that the answer is about, at
// some of the others with each frame and layout, in turn, and at all before what takes time for each entry
// anyway.
//
// Captions are measured when somebody asks for what depends on it. Until then an entry's hit rectangle is
// only known to lie inside another one. The index is made in one go when somebody asks what it answers.
//
// Where memory runs out, std::bad_alloc leaves a call. The collection and its entries are whole then, and
// what is derived from them is made anew before the next answer.
class QKListEntries : public std::enable_shared_from_this<QKListEntries> {
  public:
    QKListEntries() = default;
    ~QKListEntries();
    QKListEntries(const QKListEntries&) = delete;
    QKListEntries& operator=(const QKListEntries&) = delete;

    // ---- The collection. It owns the entries and their records.

    int Count() const { return static_cast<int>(nodes_.size()); }
    // Null outside. Its record, if any, was looked at.
    QKListNode* At(int position);
    // As it stands, for those who change entries in bulk.
    QKListNode& Node(int position) { return *nodes_[static_cast<std::size_t>(position)]; }
    int PositionOf(const QKListNode& node) const;
    // The first node that has a record, which was looked at.
    QKListNode* Find(const QKListItem* item);
    QKIconPool& Icons() { return icons_; }
    // Before the node at `position`, which may be the count. Its rectangles are in client pixels; one that
    // was placed is measured by `measure`. Without memory nothing changes.
    QKListNode& Insert(std::unique_ptr<QKListNode> node, int position, const QKListMeasure* measure);
    // Takes the node out; the record, if it has one, is its caller's.
    QKListItem* Extract(QKListNode& node);
    // Puts a host's record into a place. The record that was there is its caller's. Without memory nothing
    // changes.
    void Replace(QKListNode& node, QKListItem* item);
    void Swap(QKListNode& a, QKListNode& b);
    void Release();  // all of them
    // The selected ones, wherever their records stand, and out of the selection. Whether there were any.
    bool ReleaseSelected();

    // ---- Records that hosts hold

    // How many of them the list looks at.
    struct Pace {
        std::size_t all = 1024;   // so long as there were never more: at all
        std::size_t lately = 64;  // then: those handed out last
        std::size_t inTurn = 64;  // and others with each frame and layout
    };
    void SetPace(const Pace& pace) { pace_ = pace; }

    // The host gets this record, up to date, and may change it from now on, unless it may only read it.
    QKListItem* HandOut(QKListNode& node, bool toChange = true);
    struct HeldRecord {
        QKListNode* node;
        QKListItem* item;
        QKRecordState seen;          // when it was last read or written
        std::uint64_t captionEpoch;  // that its rendered caption was last emptied for
        std::uint64_t layout;        // that its entry was last measured in
        std::unique_ptr<QKCaptionExtents> extents;
        bool lately = false;    // among those handed out last
        bool isShared = false;  // stands in several places
    };
    const std::vector<HeldRecord>& Held() const { return held_; }
    // A frame or a layout begins: at some records more.
    void LookInTurn();
    void LookAtAll();
    // What the record says is the entry's, and that of all places where it stands.
    void Pull(QKListNode& node);
    // The record is up to date.
    void BringUpToDate(QKListNode& node);

    // ---- Answers

    int NextId();
    std::optional<CRect> OccupantAt(CPoint point);
    QKListNode* FirstMeeting(const CRect& rect);  // by the cell
    std::vector<QKListNode*> HitBy(CPoint point);
    std::vector<QKListNode*> HitBy(const CRect& area);
    // Everything that draws into an area, or has its cell there. `metrics`: as the list has them now.
    std::vector<QKListNode*> DrawnIn(const CRect& area, const QKDrawnMetrics& metrics);
    CRect CellOf(const QKListNode& node) const;  // in client pixels
    std::optional<CPoint> ContentEnd();  // the largest right and bottom of placed cells, in client pixels
    int LowestBottom();                  // the largest bottom, never below 0
    int RightmostRight();
    // In client pixels. The state rectangles of an entry that is not measured yet are no more than a cover.
    QKEntryRects RectsOf(const QKListNode& node) const;

    struct InOrder {
        bool operator()(const QKListNode* a, const QKListNode* b) const { return a->order < b->order; }
    };
    using NodeSet = std::set<QKListNode*, InOrder>;
    const NodeSet& Hovered();   // nMouseState is not 0
    const NodeSet& Focused();   // nFocusState is not 1
    const NodeSet& Selected();  // nSelState is not 1
    // The same number for the same set of selected entries, and as good as always another one for another.
    std::uint64_t SelectionMark();

    // ---- States

    void SetMouse(QKListNode& node, int state);
    void SetFocus(QKListNode& node, int state);  // also empties the text of the rendered caption
    void SetUnselected(QKListNode& node, int state);
    // The flag, and whether the entry is in the selection.
    void SetSelected(QKListNode& node, bool selected);

    bool IsSelected(const QKListItem* item) const;
    void Select(const QKListItem* item);
    void Deselect(const QKListItem* item);
    // Takes out every entry but those that `stays` names; records that are no entries stay.
    void DeselectEntries(const std::function<bool(const QKListNode*)>& stays);
    void ClearSelection() { selection_.Clear(); }

    // ---- Layout

    std::optional<CRect> FirstFree(const QKCellGrid& grid, std::int64_t start);
    // Before everything is placed anew: no entry has a place.
    void Unplace();
    void EndLayout() { PushKept(); }  // everything has its place
    // Cell and caption of an entry; its state rectangles follow when they are asked for, or stay what they
    // are without `measure`.
    void Place(QKListNode& node, const CRect& cell, const CRect& caption, const QKListMeasure* measure);
    // Moves every entry, as a new layout of the same cells would; they must all be placed.
    void Offset(CPoint by, const QKListMeasure& measure);
    bool AllPlaced() const { return unplaced_ == 0; }
    // Moves every entry that has a place, whoever gave it that, and leaves its caption as it is. Those
    // without one cost a walk.
    void Scroll(CPoint by);
    // Captions measure differently now; entries stay where they are.
    void MeasureAnew(const QKListMeasure& measure);
    // Changes whenever the collection, or a cell or caption in it, changes otherwise than by Offset and
    // Scroll.
    std::uint64_t Generation();
    // The last layout of all entries, for who lays them out.
    std::optional<QKListLayout>& LastLayout() { return lastLayout_; }

    // ---- Pictures of entries, for who describes frames

    struct Picture {
        std::uint64_t number;  // equal numbers and places: equal pictures
        CPoint place;
        CRect touched;  // client pixels
    };
    // Of an entry that DrawnIn found and that looks as it did; nothing where it has to be described.
    std::optional<Picture> KnownPicture(const QKListNode& node) const;
    // The entry was described, with icon and caption as they are. Nothing where its picture may become
    // another one without a change of the entry.
    std::optional<Picture> KeepPicture(QKListNode& node, const CRect& touched);

    // ---- Rendered captions

    QKCaptionStore& Captions() { return captions_; }
    void ReleaseCaptions();
    // Whether the rendered caption shows the entry's text.
    bool ShowsText(const QKListNode& node) const;
    // The rendered caption is of the text as it is.
    void TakeCaption(QKListNode& node, std::unique_ptr<Gdiplus::Image> caption);
    void EmptyCaption(QKListNode& node);
    void EmptyCaptions();  // of all entries

  private:
    class Change;

    void Sync();
    void Forget();
    void Repair();
    void Rebuild();
    void Join(QKListNode& node);
    void Leave(QKListNode& node);
    void Renumber();

    HeldRecord& HeldOf(const QKListNode& node) { return held_[node.heldAt]; }
    const HeldRecord& HeldOf(const QKListNode& node) const { return held_[node.heldAt]; }
    void MakeRoomToHold();
    void AddHeld(QKListNode& node);
    void Share(QKListNode& node);
    void StopHolding(QKListNode& node);
    void LookAt(std::size_t first, std::size_t end);
    void NoteLately(QKListNode& node);
    void PushKept();
    void PullOne(QKListNode& node);
    void Push(QKListNode& node);
    template <class Visit>
    void ForEachOf(const QKListItem* item, Visit visit) {
        const auto [begin, end] = byItem_.equal_range(item);
        for (auto at = begin; at != end; ++at)
            visit(*at->second);
    }

    bool IsMeasured(const QKListNode& node) const;
    QKListNode* OccupantOf(CPoint point);
    std::vector<QKListNode*> Meeting(const CRect& area);
    void Resolve(QKListNode& node);
    void Measure(QKListNode& node, const QKListMeasure& measure);
    void MeasureLaterBy(const QKListMeasure& measure);
    void SetRects(QKListNode& node, const QKEntryRects& rects, QKListNode::Extent extent);
    void Occupy(QKListNode& node, const CRect& cell);
    void Vacate(QKListNode& node);
    void SetReach(QKListNode& node);
    CRect ReachOf(const QKListNode& node) const;
    void NeedIndex();
    void DropIndex();
    bool AreNear(const QKEntryRects& rects) const;
    void MoveOriginBack();
    void FindExtent();
    CRect FromOrigin(CRect rect) const;
    CPoint FromOrigin(CPoint point) const;
    CRect ToClient(CRect rect) const;

    void AddToSets(QKListNode& node);
    void TakeFromSets(QKListNode& node);
    void Restate(QKListNode& node, std::int8_t mouse, std::int8_t focus, std::int8_t unselected);
    void ChangeState(QKListNode& node, std::int8_t QKListNode::*state, int QKListItem::*inRecord,
                     int QKRecordState::*seen, int value);

    std::deque<std::unique_ptr<QKListNode>> nodes_;  // both ends are cheap to change
    QKIconPool icons_;
    bool stale_ = false;  // what is derived from the nodes

    std::unordered_multimap<const QKListItem*, QKListNode*> byItem_;  // those that have a record
    std::vector<HeldRecord> held_;
    Pace pace_;
    bool isMany_ = false;              // there were more than Pace::all since there were none
    std::vector<QKListNode*> lately_;  // the last one at the end
    int shared_ = 0;                   // of those held
    std::size_t turn_ = 0;             // of those held, which is looked at next
    std::uint64_t lookedIn_ = 0;       // the last QKUninterrupted in which they were looked at

    std::uint64_t pictureEpoch_ = 0;  // grows when all pictures become other ones

    CPoint origin_;  // of the rectangles in the nodes, in client pixels
    QKRectIndex index_;
    bool isIndexed_ = false;
    QKCellSearch search_;
    QKListMeasure measureBy_;  // of the entries not yet measured
    QKDrawnMetrics drawnBy_ = {};
    int unmeasured_ = 0;
    int unplaced_ = 0;
    std::uint64_t generation_ = 0;
    std::uint64_t layout_ = 0;  // grows when entries move: captions that a host may have changed are measured
    std::optional<QKListLayout> lastLayout_;

    QKIdentifiers ids_;
    NodeSet hovered_, focused_, selectedFlags_;
    std::uint64_t selectionMark_ = 0;  // the sum of a number for each selected entry
    bool extentKnown_ = true;
    CPoint extent_;  // the largest right and bottom of all cells, seen from the origin

    QKEntrySelection selection_;

    QKCaptionStore captions_;
    std::uint64_t captionEpoch_ = 0;  // grows when all captions become stale
};
