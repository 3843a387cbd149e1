#include "list/list_layout.h"

#include <algorithm>

#include "items/arithmetic.h"
#include "list/cell_search.h"
#include "list/list_ctrl.h"
#include "list/list_entries.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

namespace {

// Whether the cells of a layout are as exact elsewhere.
bool IsExact(const QKListLayout& layout) {
    const QKListMetrics& m = layout.measure.metrics;
    const auto exact = [](auto... numbers) {
        return ((numbers > -QKExactPixels && numbers < QKExactPixels) && ...);
    };
    return exact(layout.corner.x, layout.corner.y, layout.given.cx, layout.given.cy, m.itemWidth,
                 m.itemHeight, m.imageWidth, m.imageHeight, m.innerTop, m.textGap);
}

}  // namespace

QKListMetrics QKListCtrl::Metrics() const {
    return {m_nListType, m_nItemWidth, m_nItemHeight, m_nImageWidth, m_nImageHeight, m_nInerTop, m_nTextGap};
}

// Drawing leaves its own trimming in the format.
QKListMeasure QKListCtrl::Measure() const {
    QKListMeasure measure = {Metrics(), {m_pFont, m_format}};
    measure.style.format.SetTrimming(Gdiplus::StringTrimmingEllipsisCharacter);
    return measure;
}

// The cells that the settings make; nothing for a list too small for the first one.
std::optional<QKCellGrid> QKListCtrl::Grid(bool columns) const {
    const int stepX = QKSum(m_nWIner, m_nItemWidth);
    const int stepY = QKSum(m_nHIner, m_nItemHeight);
    const int length = columns ? m_nHeight : m_nWidth;
    QKCellGrid grid = {CPoint(m_nX, m_nY),
                       {m_nItemWidth, m_nItemHeight},
                       columns ? stepY : stepX,
                       columns ? stepX : stepY,
                       columns,
                       0,
                       0};
    if (length < grid.along) return std::nullopt;
    grid.SetLines(length, columns ? m_nItemHeight : m_nItemWidth);
    return grid;
}

bool QKListCtrl::PlaceFirstFree(QKListItem& entry) {
    std::optional<QKCellGrid> grid;
    if (m_nListType == QKLT_LIST)  // one column without end
        grid = QKCellGrid{
            CPoint(m_nX, m_nY), {m_nWidth, m_nItemHeight}, QKSum(m_nHIner, m_nItemHeight), 0, true, 0, 0};
    else
        grid = Grid(m_nArrange == 0);
    if (!grid) return false;
    const std::optional<CRect> cell = m_lstItems->FirstFree(*grid, 0);
    if (!cell) return false;
    PlaceAt(entry, *cell, QKCaptionCell(Metrics(), *cell));
    if (m_nListType == QKLT_LIST) entry.szTextCath[0] = u'\0';
    return true;
}

// On a desktop: in the cell under the point, or the first free one after it, down the columns. A point that
// no cell is under counts as one in the first where cells go on without end; else there is no place for it.
bool QKListCtrl::PlaceAtPoint(QKListItem& entry, int x, int y) {
    if (m_nListMode != QKLIST_DESKTOP) return false;
    const std::optional<QKCellGrid> grid = Grid(true);
    if (!grid) return false;
    // In the band at the bottom that no cell starts in, too.
    const bool atBottom = std::int64_t{y} + grid->along >= std::int64_t{m_nY} + m_nHeight;
    const std::int64_t start = atBottom ? 0 : grid->NumberAt(CPoint(x, y)).value_or(grid->count);
    const std::optional<CRect> cell = m_lstItems->FirstFree(*grid, start);
    if (!cell) return false;
    PlaceAt(entry, *cell, QKGridCaptionCell(Metrics(), *cell));  // of any type
    return true;
}

void QKListCtrl::PlaceAt(QKListItem& entry, const CRect& cell, const CRect& caption) {
    entry.rcItem = cell;
    entry.rcText = caption;
    Grow(cell);
}

void QKListCtrl::Grow(const CRect& cell) {
    const CRect list(CPoint(m_nX, m_nY), CSize(m_nWidth, m_nHeight));
    if (list.bottom >= cell.bottom && list.right >= cell.right) return;
    if (list.bottom < cell.bottom) m_nHeight = QKDifference(cell.bottom, m_nY);
    if (list.right < cell.right) m_nWidth = QKDifference(cell.right, m_nX);
    m_nStatus = QK_NORMAL;
}

void QKListCtrl::ScaleItemXY(QKListItem* entry) {
    QKWithinMemory([&] {
        if (PlaceFirstFree(*entry)) ReCalcStateRect(entry);
    });
}

void QKListCtrl::ScaleItemXY_Auto(QKListItem* entry, int x, int y) {
    QKWithinMemory([&] {
        if (PlaceAtPoint(*entry, x, y)) ReCalcStateRect(entry);
    });
}

void QKListCtrl::LayOutAll() {
    const QKUninterrupted uninterrupted;
    QKWithinMemory([this] {
        QKListLayout layout = {Measure(),
                               m_nWIner,
                               m_nHIner,
                               m_nArrange,
                               {m_nWidth, m_nHeight},
                               m_lstItems->Generation(),
                               {},
                               CPoint(m_nX, m_nY)};
        if (!MoveLayout(layout)) PlaceAll(layout);
    });
}

// When only the list has moved since the last time, its cells move with it.
bool QKListCtrl::MoveLayout(const QKListLayout& layout) {
    QKListEntries& entries = *m_lstItems;
    if (!m_hParent || !entries.LastLayout() || !entries.AllPlaced()) return false;
    QKListLayout& last = *entries.LastLayout();
    if (!(last.measure == layout.measure) || last.gapX != layout.gapX || last.gapY != layout.gapY ||
        last.arrange != layout.arrange || !(last.given == layout.given) ||
        last.generation != layout.generation || !IsExact(last) || !IsExact(layout) ||
        last.grown.cx >= QKExactPixels || last.grown.cy >= QKExactPixels)
        return false;
    if (m_nListType == QKLT_LIST) entries.EmptyCaptions();
    const CPoint by(m_nX - last.corner.x, m_nY - last.corner.y);
    last.corner = layout.corner;
    if (!(last.grown == layout.given)) m_nStatus = QK_NORMAL;
    m_nWidth = last.grown.cx;
    m_nHeight = last.grown.cy;
    entries.Offset(by, layout.measure);
    return true;
}

// In collection order: the first entries take the first cells.
void QKListCtrl::PlaceAll(QKListLayout& layout) {
    QKListEntries& entries = *m_lstItems;
    entries.LastLayout().reset();
    entries.Unplace();
    for (int i = 0; i < entries.Count(); ++i) {
        QKListNode& node = entries.Node(i);
        if (!PlaceFirstFree(*node.item)) continue;
        if (m_hParent)
            entries.Placed(node, layout.measure);
        else
            entries.Reread(node);
        entries.RereadOthers(node);
    }
    if (!m_hParent) return;
    layout.generation = entries.Generation();
    layout.grown = {m_nWidth, m_nHeight};
    entries.LastLayout() = layout;
}

void QKListCtrl::SetRect(const CRect* rect) {
    if (!rect) return;
    QKItemBase::SetRect(rect);
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
    QKWithinMemory([this] {
        for (int i = 0; i < m_lstItems->Count(); ++i) {
            QKListNode& node = *m_lstItems->At(i);
            QKListItem& entry = *node.item;
            entry.rcItem.bottom = QKSum(entry.rcItem.top, m_nItemHeight);
            entry.rcText.top = QKSum(entry.rcItem.top, m_nImageHeight, m_nInerTop, m_nTextGap);
            entry.rcText.bottom = entry.rcItem.bottom;
            if (m_hParent) m_lstItems->Placed(node, Measure());
            m_lstItems->Reread(node);
        }
    });
}

void QKListCtrl::SetMStateRect(QKListItem* entry) {
    QKWithinMemory([&] {
        if (m_hParent) QKMeasureHit(Measure(), *entry);
        if (QKListNode* node = m_lstItems->Find(entry)) m_lstItems->Reread(*node);
    });
}

void QKListCtrl::SetFStateRect(QKListItem* entry) {
    QKWithinMemory([&] {
        if (m_hParent) QKMeasureFocus(Measure(), *entry);
        if (QKListNode* node = m_lstItems->Find(entry)) m_lstItems->Reread(*node);
    });
}

void QKListCtrl::ReCalcStateRect(QKListItem* entry) {
    SetFStateRect(entry);
    SetMStateRect(entry);
}

int QKListCtrl::GetListMaxHeight() {
    return QKWithinMemory(0, [this] { return QKDifference(m_lstItems->LowestBottom(), m_nY); });
}

int QKListCtrl::GetListMaxWidth() {
    return QKWithinMemory(0, [this] { return QKDifference(m_lstItems->RightmostRight(), m_nX); });
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
