#include "list/list_layout.h"

#include <algorithm>

#include <qkui/list/list_ctrl.h>
#include "items/arithmetic.h"
#include "list/cell_search.h"
#include "list/list_entries.h"
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

}  // namespace

ListMetrics QKListCtrl::Metrics() const {
    return {m_nListType, m_nItemWidth, m_nItemHeight, m_nImageWidth, m_nImageHeight, m_nInerTop, m_nTextGap};
}

// Drawing leaves its own trimming in the format.
ListMeasure QKListCtrl::Measure() const {
    ListMeasure measure = {Metrics(), {m_pFont, m_format}};
    measure.style.format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    return measure;
}

// The cells that the settings make; nothing for a list too small for the first one.
std::optional<CellGrid> QKListCtrl::Grid(bool columns) const {
    const int stepX = Sum(m_nWIner, m_nItemWidth);
    const int stepY = Sum(m_nHIner, m_nItemHeight);
    const int length = columns ? m_nHeight : m_nWidth;
    CellGrid grid = {
        Corner(), {m_nItemWidth, m_nItemHeight}, columns ? stepY : stepX, columns ? stepX : stepY, columns, 0,
        0};
    if (length < grid.along) return std::nullopt;
    grid.SetLines(length, columns ? m_nItemHeight : m_nItemWidth);
    return grid;
}

// The cells that entries are laid out in.
std::optional<CellGrid> QKListCtrl::LayoutGrid() const {
    if (m_nListType != QKLT_LIST) return Grid(m_nArrange == 0);
    const int inset = m_scroll.on ? IconOverhang(Metrics()) : 0;
    return CellGrid{CPoint(Sum(Corner().x, inset), Corner().y),
                    {Difference(m_nWidth, inset), m_nItemHeight},
                    Sum(m_nHIner, m_nItemHeight),
                    0,  // one column without end
                    true,
                    0,
                    0};
}

std::optional<CellPlace> QKListCtrl::PlaceFirstFree(const std::optional<CellGrid>& grid) {
    if (!grid) return std::nullopt;
    const std::optional<CRect> cell = m_lstItems->FirstFree(*grid, 0);
    if (!cell) return std::nullopt;
    Grow(*cell);
    return CellPlace{*cell, CaptionCell(Metrics(), *cell)};
}

// On a desktop: in the cell under the point, or the first free one after it, down the columns. A point that
// no cell is under counts as one in the first where cells go on without end; else there is no place for it.
std::optional<CellPlace> QKListCtrl::PlaceAtPoint(int x, int y) {
    if (m_nListMode != QKLIST_DESKTOP) return std::nullopt;
    const std::optional<CellGrid> grid = Grid(!m_scroll.on || m_nArrange == 0);
    if (!grid) return std::nullopt;
    // In the band at the bottom that no cell starts in, too; a list that scrolls has none.
    const bool atBottom = !m_scroll.on && std::int64_t{y} + grid->along >= std::int64_t{m_nY} + m_nHeight;
    const std::int64_t start = atBottom ? 0 : grid->NumberAt(CPoint(x, y)).value_or(grid->count);
    const std::optional<CRect> cell = m_lstItems->FirstFree(*grid, start);
    if (!cell) return std::nullopt;
    Grow(*cell);
    return CellPlace{*cell, GridCaptionCell(Metrics(), *cell)};  // of any type
}

// An entry that is told where it lies: it may be no entry of this list.
void QKListCtrl::PlaceRecord(QKListItem& entry, const std::optional<CellPlace>& place) {
    if (!place) return;
    entry.rcItem = place->cell;
    entry.rcText = place->caption;
    ReCalcStateRect(&entry);
}

void QKListCtrl::Grow(const CRect& cell) {
    if (m_scroll.on) return;
    const CRect list(CPoint(m_nX, m_nY), CSize(m_nWidth, m_nHeight));
    if (list.bottom >= cell.bottom && list.right >= cell.right) return;
    if (list.bottom < cell.bottom) m_nHeight = Difference(cell.bottom, m_nY);
    if (list.right < cell.right) m_nWidth = Difference(cell.right, m_nX);
    m_nStatus = QK_NORMAL;
}

void QKListCtrl::ScaleItemXY(QKListItem* entry) {
    WithinMemory([&] {
        m_lstItems->Find(entry);
        const std::optional<CellPlace> place = PlaceFirstFree(LayoutGrid());
        if (place && m_nListType == QKLT_LIST) entry->szTextCath[0] = u'\0';
        PlaceRecord(*entry, place);
    });
}

void QKListCtrl::ScaleItemXY_Auto(QKListItem* entry, int x, int y) {
    WithinMemory([&] {
        m_lstItems->Find(entry);
        PlaceRecord(*entry, PlaceAtPoint(x, y));
    });
}

void QKListCtrl::LayOutAll() {
    const Uninterrupted uninterrupted;
    WithinMemory([this] {
        ListLayout layout = {
            Measure(), m_nWIner, m_nHIner, m_nArrange, {m_nWidth, m_nHeight}, m_lstItems->Generation(),
            {},        Corner()};
        if (!MoveLayout(layout)) PlaceAll(layout);
    });
    KeepInRange();
}

// When only the list has moved since the last time, its cells move with it.
bool QKListCtrl::MoveLayout(const ListLayout& layout) {
    ListEntries& entries = *m_lstItems;
    if (!m_hParent || !entries.LastLayout() || !entries.AllPlaced()) return false;
    ListLayout& last = *entries.LastLayout();
    if (!(last.measure == layout.measure) || last.gapX != layout.gapX || last.gapY != layout.gapY ||
        last.arrange != layout.arrange || !(last.given == layout.given) ||
        last.generation != layout.generation || !IsExact(last) || !IsExact(layout) ||
        last.grown.cx >= kExactPixels || last.grown.cy >= kExactPixels)
        return false;
    if (m_nListType == QKLT_LIST) entries.Captions().EmptyAll();
    const CPoint by(layout.corner.x - last.corner.x, layout.corner.y - last.corner.y);
    last.corner = layout.corner;
    if (!(last.grown == layout.given)) m_nStatus = QK_NORMAL;
    m_nWidth = last.grown.cx;
    m_nHeight = last.grown.cy;
    entries.Move(by, layout.measure);
    return true;
}

// In collection order: the first entries take the first cells.
void QKListCtrl::PlaceAll(ListLayout& layout) {
    ListEntries& entries = *m_lstItems;
    entries.LastLayout().reset();
    entries.Unplace();
    CSize size(m_nWidth, m_nHeight);
    std::optional<CellGrid> grid = LayoutGrid();
    for (int i = 0; i < entries.Count(); ++i) {
        const std::optional<CellPlace> place = PlaceFirstFree(grid);
        if (!place) continue;
        if (const CSize grown(m_nWidth, m_nHeight); !(grown == size)) {
            size = grown;
            grid = LayoutGrid();
        }
        Entry& node = entries.EntryAt(i);
        if (m_nListType == QKLT_LIST) entries.Captions().Empty(node);
        entries.Place(node, place->cell, place->caption, m_hParent ? &layout.measure : nullptr);
    }
    entries.EndLayout();
    if (!m_hParent) return;
    layout.generation = entries.Generation();
    layout.grown = {m_nWidth, m_nHeight};
    entries.LastLayout() = layout;
}

void QKListCtrl::SetRect(const CRect* rect) {
    if (!rect) return;
    MoveView(*rect);
    LayOutAll();
}

void QKListCtrl::SetRect(CRect* rect) {
    if (!rect) return;
    SetRect(static_cast<const CRect*>(rect));
    GetRect(rect);
}

void QKListCtrl::ReSetPos(int full) {
    if (full) return LayOutAll();
    m_lstItems->LastLayout().reset();
    WithinMemory([this] {
        m_lstItems->SyncAll();
        const ListMeasure measure = Measure();
        for (int i = 0; i < m_lstItems->Count(); ++i) {
            Entry& node = m_lstItems->EntryAt(i);
            auto [cell, caption, hit, focus] = m_lstItems->RectsOf(node);
            cell.bottom = Sum(cell.top, m_nItemHeight);
            caption.top = Sum(cell.top, m_nImageHeight, m_nInerTop, m_nTextGap);
            caption.bottom = cell.bottom;
            m_lstItems->Place(node, cell, caption, m_hParent ? &measure : nullptr);
        }
        m_lstItems->EndLayout();
    });
}

// `setRects` sets state rectangles of an entry, which may be no entry of this list.
template <class SetRects>
void QKListCtrl::MeasureRecord(QKListItem& entry, SetRects setRects) {
    WithinMemory([&] {
        Entry* node = m_lstItems->Find(&entry);
        if (node) m_lstItems->SyncRecord(*node);
        if (!m_hParent) return;
        EntryRects rects{entry.rcItem, entry.rcText, entry.rcMState, entry.rcFState};
        setRects(rects);
        entry.rcMState = rects.hit;
        entry.rcFState = rects.focus;
        if (node) m_lstItems->SyncFromRecord(*node);
    });
}

void QKListCtrl::SetMStateRect(QKListItem* entry) {
    MeasureRecord(*entry, [&](EntryRects& rects) { MeasureHit(Measure(), TextOf(entry->szText), rects); });
}

void QKListCtrl::SetFStateRect(QKListItem* entry) {
    MeasureRecord(*entry, [&](EntryRects& rects) { MeasureFocus(Measure(), TextOf(entry->szText), rects); });
}

void QKListCtrl::ReCalcStateRect(QKListItem* entry) {
    SetFStateRect(entry);
    SetMStateRect(entry);
}

int QKListCtrl::GetListMaxHeight() {
    return WithinMemory(
        0, [this] { return m_scroll.on ? Content().cy : Difference(m_lstItems->LowestBottom(), m_nY); });
}

int QKListCtrl::GetListMaxWidth() {
    return WithinMemory(
        0, [this] { return m_scroll.on ? Content().cx : Difference(m_lstItems->RightmostRight(), m_nX); });
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

void QKListCtrl::LoadFrames(NineImages& images, const CStringArray& paths) {
    if (paths.GetSize() != static_cast<INT_PTR>(images.size())) return;
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = std::make_shared<Gdiplus::Image>(paths[static_cast<INT_PTR>(i)]);
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
