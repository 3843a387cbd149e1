#include "list/list_layout.h"

#include <algorithm>

#include <qkui/list/list_ctrl.h>
#include "items/arithmetic.h"
#include "list/cell_search.h"
#include "list/list_access.h"
#include "list/list_text.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

// Whether the cells of a layout are as exact elsewhere.
bool IsExact(const ListLayout& layout) {
    const ListMetrics& m = layout.measure.metrics;
    const auto exact = [](auto... numbers) {
        return ((numbers > -kExactPixels && numbers < kExactPixels) && ...);
    };
    return exact(layout.corner.x, layout.corner.y, layout.given.cx, layout.given.cy, m.itemWidth,
                 m.itemHeight, m.imageWidth, m.imageHeight, m.innerTop, m.textGap);
}

void LoadFrames(std::array<std::shared_ptr<Gdiplus::Image>, 9>& images, const CStringArray& paths) {
    if (paths.GetSize() != static_cast<INT_PTR>(images.size())) return;
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = std::make_shared<Gdiplus::Image>(paths[static_cast<INT_PTR>(i)]);
}

}  // namespace

ListMetrics ListAccess::Metrics(const QKListCtrl& list) {
    return {list.m_nListType,    list.m_nItemWidth, list.m_nItemHeight, list.m_nImageWidth,
            list.m_nImageHeight, list.m_nInerTop,   list.m_nTextGap};
}

// Drawing leaves its own trimming in the format.
ListMeasure ListAccess::Measure(const QKListCtrl& list) {
    ListMeasure measure = {Metrics(list), {list.m_pFont, list.m_format}};
    measure.style.format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    return measure;
}

// The cells that the settings make; nothing for a list too small for the first one.
std::optional<CellGrid> ListAccess::Grid(const QKListCtrl& list, bool columns) {
    const int stepX = Sum(list.m_nWIner, list.m_nItemWidth);
    const int stepY = Sum(list.m_nHIner, list.m_nItemHeight);
    const int length = columns ? list.m_nHeight : list.m_nWidth;
    CellGrid grid = {Corner(list),
                     {list.m_nItemWidth, list.m_nItemHeight},
                     columns ? stepY : stepX,
                     columns ? stepX : stepY,
                     columns,
                     0,
                     0};
    if (length < grid.along) return std::nullopt;
    grid.SetLines(length, columns ? list.m_nItemHeight : list.m_nItemWidth);
    return grid;
}

// The cells that entries are laid out in.
std::optional<CellGrid> ListAccess::LayoutGrid(const QKListCtrl& list) {
    if (list.m_nListType != QKLT_LIST) return Grid(list, list.m_nArrange == 0);
    const int inset = list.m_state->scroll.on ? IconOverhang(Metrics(list)) : 0;
    return CellGrid{CPoint(Sum(Corner(list).x, inset), Corner(list).y),
                    {Difference(list.m_nWidth, inset), list.m_nItemHeight},
                    Sum(list.m_nHIner, list.m_nItemHeight),
                    0,  // one column without end
                    true,
                    0,
                    0};
}

std::optional<CellPlace> ListAccess::PlaceFirstFree(QKListCtrl& list, const std::optional<CellGrid>& grid) {
    if (!grid) return std::nullopt;
    const std::optional<CRect> cell = Entries(list).FirstFree(*grid, 0);
    if (!cell) return std::nullopt;
    Grow(list, *cell);
    return CellPlace{*cell, CaptionCell(Metrics(list), *cell)};
}

// On a desktop: in the cell under the point, or the first free one after it, down the columns. A point that
// no cell is under counts as one in the first where cells go on without end; else there is no place for it.
std::optional<CellPlace> ListAccess::PlaceAtPoint(QKListCtrl& list, int x, int y) {
    if (list.m_nListMode != QKLIST_DESKTOP) return std::nullopt;
    const std::optional<CellGrid> grid = Grid(list, !list.m_state->scroll.on || list.m_nArrange == 0);
    if (!grid) return std::nullopt;
    // In the band at the bottom that no cell starts in, too; a list that scrolls has none.
    const bool atBottom =
        !list.m_state->scroll.on && std::int64_t{y} + grid->along >= std::int64_t{list.m_nY} + list.m_nHeight;
    const std::int64_t start = atBottom ? 0 : grid->NumberAt(CPoint(x, y)).value_or(grid->count);
    const std::optional<CRect> cell = Entries(list).FirstFree(*grid, start);
    if (!cell) return std::nullopt;
    Grow(list, *cell);
    return CellPlace{*cell, GridCaptionCell(Metrics(list), *cell)};  // of any type
}

// An entry that is told where it lies: it may be no entry of this list.
void ListAccess::PlaceRecord(QKListCtrl& list, QKListItem& item, const std::optional<CellPlace>& place) {
    if (!place) return;
    item.rcItem = place->cell;
    item.rcText = place->caption;
    list.ReCalcStateRect(&item);
}

void ListAccess::Grow(QKListCtrl& list, const CRect& cell) {
    if (list.m_state->scroll.on) return;
    const CRect now = View(list);
    if (now.bottom >= cell.bottom && now.right >= cell.right) return;
    if (now.bottom < cell.bottom) list.m_nHeight = Difference(cell.bottom, list.m_nY);
    if (now.right < cell.right) list.m_nWidth = Difference(cell.right, list.m_nX);
    list.m_nStatus = QKItemBase::QK_NORMAL;
}

void QKListCtrl::ScaleItemXY(QKListItem* item) {
    WithinMemory([&] {
        m_state->entries->Find(item);
        const std::optional<CellPlace> place =
            ListAccess::PlaceFirstFree(*this, ListAccess::LayoutGrid(*this));
        if (place && m_nListType == QKLT_LIST) item->szTextCath[0] = u'\0';
        ListAccess::PlaceRecord(*this, *item, place);
    });
}

void QKListCtrl::ScaleItemXY_Auto(QKListItem* item, int x, int y) {
    WithinMemory([&] {
        m_state->entries->Find(item);
        ListAccess::PlaceRecord(*this, *item, ListAccess::PlaceAtPoint(*this, x, y));
    });
}

void ListAccess::LayOutAll(QKListCtrl& list) {
    const Uninterrupted uninterrupted;
    WithinMemory([&] {
        ListLayout layout = {Measure(list),
                             list.m_nWIner,
                             list.m_nHIner,
                             list.m_nArrange,
                             {list.m_nWidth, list.m_nHeight},
                             Entries(list).Generation(),
                             {},
                             Corner(list)};
        if (!MoveLayout(list, layout)) PlaceAll(list, layout);
    });
    KeepInRange(list);
}

// When only the list has moved since the last time, its cells move with it.
bool ListAccess::MoveLayout(QKListCtrl& list, const ListLayout& layout) {
    ListEntries& entries = Entries(list);
    if (!list.m_hParent || !entries.LastLayout() || !entries.AllPlaced()) return false;
    ListLayout& last = *entries.LastLayout();
    if (!(last.measure == layout.measure) || last.gapX != layout.gapX || last.gapY != layout.gapY ||
        last.arrange != layout.arrange || !(last.given == layout.given) ||
        last.generation != layout.generation || !IsExact(last) || !IsExact(layout) ||
        last.grown.cx >= kExactPixels || last.grown.cy >= kExactPixels)
        return false;
    if (list.m_nListType == QKLT_LIST) entries.Captions().EmptyAll();
    const CPoint by(layout.corner.x - last.corner.x, layout.corner.y - last.corner.y);
    last.corner = layout.corner;
    if (!(last.grown == layout.given)) list.m_nStatus = QKItemBase::QK_NORMAL;
    list.m_nWidth = last.grown.cx;
    list.m_nHeight = last.grown.cy;
    entries.Move(by, layout.measure);
    return true;
}

// In collection order: the first entries take the first cells.
void ListAccess::PlaceAll(QKListCtrl& list, ListLayout& layout) {
    ListEntries& entries = Entries(list);
    entries.LastLayout().reset();
    entries.Unplace();
    CSize size(list.m_nWidth, list.m_nHeight);
    std::optional<CellGrid> grid = LayoutGrid(list);
    for (int i = 0; i < entries.Count(); ++i) {
        const std::optional<CellPlace> place = PlaceFirstFree(list, grid);
        if (!place) continue;
        if (const CSize grown(list.m_nWidth, list.m_nHeight); !(grown == size)) {
            size = grown;
            grid = LayoutGrid(list);
        }
        Entry& entry = entries.EntryAt(i);
        if (list.m_nListType == QKLT_LIST) entries.Captions().Empty(entry);
        entries.Place(entry, place->cell, place->caption, list.m_hParent ? &layout.measure : nullptr);
    }
    entries.EndLayout();
    if (!list.m_hParent) return;
    layout.generation = entries.Generation();
    layout.grown = {list.m_nWidth, list.m_nHeight};
    entries.LastLayout() = layout;
}

void QKListCtrl::SetRect(const CRect* rect) {
    if (!rect) return;
    ListAccess::MoveView(*this, *rect);
    ListAccess::LayOutAll(*this);
}

void QKListCtrl::SetRect(CRect* rect) {
    if (!rect) return;
    SetRect(static_cast<const CRect*>(rect));
    GetRect(rect);
}

void QKListCtrl::ReSetPos(int full) {
    if (full) return ListAccess::LayOutAll(*this);
    m_state->entries->LastLayout().reset();
    WithinMemory([this] {
        m_state->entries->SyncAll();
        const ListMeasure measure = ListAccess::Measure(*this);
        for (int i = 0; i < m_state->entries->Count(); ++i) {
            Entry& entry = m_state->entries->EntryAt(i);
            auto [cell, caption, hit, focus] = m_state->entries->RectsOf(entry);
            cell.bottom = Sum(cell.top, m_nItemHeight);
            caption.top = Sum(cell.top, m_nImageHeight, m_nInerTop, m_nTextGap);
            caption.bottom = cell.bottom;
            m_state->entries->Place(entry, cell, caption, m_hParent ? &measure : nullptr);
        }
        m_state->entries->EndLayout();
    });
}

// `setRects` sets state rectangles of an entry, which may be no entry of this list.
template <class SetRects>
void ListAccess::MeasureRecord(QKListCtrl& list, QKListItem& item, SetRects setRects) {
    WithinMemory([&] {
        Entry* entry = Entries(list).Find(&item);
        if (entry) Entries(list).SyncRecord(*entry);
        if (!list.m_hParent) return;
        EntryRects rects{item.rcItem, item.rcText, item.rcMState, item.rcFState};
        setRects(rects);
        item.rcMState = rects.hit;
        item.rcFState = rects.focus;
        if (entry) Entries(list).SyncFromRecord(*entry);
    });
}

void QKListCtrl::SetMStateRect(QKListItem* item) {
    ListAccess::MeasureRecord(*this, *item, [&](EntryRects& rects) {
        MeasureHit(ListAccess::Measure(*this), TextOf(item->szText), rects);
    });
}

void QKListCtrl::SetFStateRect(QKListItem* item) {
    ListAccess::MeasureRecord(*this, *item, [&](EntryRects& rects) {
        MeasureFocus(ListAccess::Measure(*this), TextOf(item->szText), rects);
    });
}

void QKListCtrl::ReCalcStateRect(QKListItem* item) {
    SetFStateRect(item);
    SetMStateRect(item);
}

int QKListCtrl::GetListMaxHeight() {
    return WithinMemory(0, [this] {
        return m_state->scroll.on ? ListAccess::Content(*this).cy
                                  : Difference(m_state->entries->LowestBottom(), m_nY);
    });
}

int QKListCtrl::GetListMaxWidth() {
    return WithinMemory(0, [this] {
        return m_state->scroll.on ? ListAccess::Content(*this).cx
                                  : Difference(m_state->entries->RightmostRight(), m_nX);
    });
}

void QKListCtrl::SetListType(QKListType type) {
    struct Preset {
        int itemWidth, itemHeight, gapX, gapY, image;
        Gdiplus::StringAlignment alignment;
    };
    const Preset preset = type == QKLT_BIGICON ? Preset{75, 90, 2, 10, 48, Gdiplus::StringAlignmentCenter}
                          : type == QKLT_ICON  ? Preset{75, 74, 0, 8, 32, Gdiplus::StringAlignmentCenter}
                                               : Preset{-1, 20, -1, 3, 18, Gdiplus::StringAlignmentNear};
    m_format.SetAlignment(preset.alignment);
    SetListType(type, preset.itemWidth, preset.itemHeight, preset.image, preset.image, preset.gapX,
                preset.gapY);
    RedrawList();
}

void QKListCtrl::SetListType(QKListType type, int itemWidth, int itemHeight, int imageWidth, int imageHeight,
                             int gapX, int gapY) {
    m_nListType = type;
    m_nItemWidth = itemWidth;
    m_nItemHeight = itemHeight;
    m_nImageWidth = imageWidth;
    m_nImageHeight = imageHeight;
    m_nWIner = gapX;
    m_nHIner = gapY;
}

void QKListCtrl::SetMouseMoveImage(const CStringArray& paths) {
    LoadFrames(m_pMoveImage, paths);
}

void QKListCtrl::SetMouseDownImage(const CStringArray& paths) {
    LoadFrames(m_pDownImage, paths);
}

void QKListCtrl::SetFouceImage(const CStringArray& paths) {
    LoadFrames(m_pFouceImage, paths);
}
