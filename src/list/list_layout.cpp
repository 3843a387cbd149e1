#include "list/list_layout.h"

#include <algorithm>
#include <cstdlib>

#include "list/cell_search.h"
#include "list/list_entries.h"

namespace {

// Sums of settings of the host's: they end at the ends of an int.
int Sum(int a, int b) {
    const std::int64_t sum = std::int64_t{a} + b;
    return static_cast<int>(std::clamp<std::int64_t>(sum, INT32_MIN, INT32_MAX));
}

}  // namespace

QKListMetrics QKListCtrl::Metrics() const {
    return {m_nListType,    m_nItemWidth, m_nItemHeight, m_nImageWidth,
            m_nImageHeight, m_nInerTop,   m_nTextGap,    m_szFrame};
}

// The cells that the settings make; nothing for a list too small for the first one.
std::optional<QKCellGrid> QKListCtrl::Grid(bool columns) const {
    const int stepX = Sum(m_nWIner, m_nItemWidth);
    const int stepY = Sum(m_nHIner, m_nItemHeight);
    const SIZE cell = {m_nItemWidth, m_nItemHeight};
    const CPoint corner(m_nX, m_nY);
    if (columns) {
        if (m_nHeight < stepY) return std::nullopt;
        return QKCellGrid{corner, cell, stepY, stepX, true, QKCellGrid::LineOf(m_nHeight, cell.cy, stepY)};
    }
    if (m_nWidth < stepX) return std::nullopt;
    return QKCellGrid{corner, cell, stepX, stepY, false, QKCellGrid::LineOf(m_nWidth, cell.cx, stepX)};
}

bool QKListCtrl::PlaceFirstFree(QKListItem& entry) {
    std::optional<QKCellGrid> grid;
    if (m_nListType == QKLT_LIST)  // one column without end
        grid = QKCellGrid{
            CPoint(m_nX, m_nY), {m_nWidth, m_nItemHeight}, Sum(m_nHIner, m_nItemHeight), 0, true, 0};
    else
        grid = Grid(m_nArrange == 0);
    if (!grid) return false;
    const std::optional<CRect> cell = m_lstItems->FirstFree(*grid, 0);
    return cell && PlaceAt(entry, *cell, QKCaptionCell(Metrics(), *cell));
}

// On a desktop: in the cell under the point, or the first free one after it, down the columns. A point that
// no cell is under counts as one in the first.
bool QKListCtrl::PlaceAtPoint(QKListItem& entry, int x, int y) {
    if (m_nListMode != QKLIST_DESKTOP) return false;
    const std::optional<QKCellGrid> grid = Grid(true);
    if (!grid) return false;
    // In the band at the bottom that no cell starts in, too.
    const bool atBottom = std::int64_t{y} + grid->along >= std::int64_t{m_nY} + m_nHeight;
    const std::int64_t start = atBottom ? 0 : grid->NumberAt(CPoint(x, y)).value_or(0);
    const std::optional<CRect> cell = m_lstItems->FirstFree(*grid, start);
    return cell && PlaceAt(entry, *cell, QKGridCaptionCell(Metrics(), *cell));  // of any type
}

bool QKListCtrl::PlaceAt(QKListItem& entry, const CRect& cell, const CRect& caption) {
    entry.rcItem = cell;
    entry.rcText = caption;
    Grow(cell);
    return true;
}

void QKListCtrl::Grow(const CRect& cell) {
    const CRect list(CPoint(m_nX, m_nY), CSize(m_nWidth, m_nHeight));
    if (list.bottom >= cell.bottom && list.right >= cell.right) return;
    if (list.bottom < cell.bottom) m_nHeight = cell.bottom - m_nY;
    if (list.right < cell.right) m_nWidth = cell.right - m_nX;
    m_nStatus = QK_NORMAL;
}

void QKListCtrl::ScaleItemXY(QKListItem* entry) {
    if (PlaceFirstFree(*entry)) ReCalcStateRect(entry);
}

void QKListCtrl::ScaleItemXY_Auto(QKListItem* entry, int x, int y) {
    if (PlaceAtPoint(*entry, x, y)) ReCalcStateRect(entry);
}

// In collection order: the first entries take the first cells. When only the list has moved since the last
// time, its cells move with it.
void QKListCtrl::LayOutAll() {
    QKListEntries& entries = *m_lstItems;
    Layout layout = {
        Metrics(), m_nWIner,          m_nHIner, m_nArrange, {m_nWidth, m_nHeight}, entries.Generation(),
        {},        CPoint(m_nX, m_nY)};
    const bool emptiesCaptions = m_nListType == QKLT_LIST;
    constexpr int kExact = 1 << 22;  // measured rectangles are sums of floats: whole numbers up to here
    const Layout* last = m_pLayout.get();
    const auto farthest =
        std::max({std::abs(m_nX), std::abs(m_nY), std::abs(layout.corner.x), std::abs(layout.corner.y)});
    if (last && m_hParent && last->metrics == layout.metrics && last->gapX == layout.gapX &&
        last->gapY == layout.gapY && last->arrange == layout.arrange && last->given == layout.given &&
        last->generation == layout.generation && entries.AllPlaced() && farthest < kExact &&
        last->grown.cx < kExact && last->grown.cy < kExact) {
        if (emptiesCaptions) entries.EmptyCaptions();
        entries.Offset(CPoint(m_nX - last->corner.x, m_nY - last->corner.y), layout.metrics);
        if (!(last->grown == layout.given)) m_nStatus = QK_NORMAL;
        m_nWidth = last->grown.cx;
        m_nHeight = last->grown.cy;
        m_pLayout->corner = layout.corner;
        return;
    }
    m_pLayout.reset();
    entries.Unplace();
    for (int i = 0; i < entries.Count(); ++i) {
        QKListNode& node = entries.Node(i);
        if (!PlaceFirstFree(*node.item)) continue;
        if (m_hParent)
            entries.Placed(node, layout.metrics, emptiesCaptions);
        else
            entries.Reread(node);
    }
    if (!m_hParent) return;
    layout.generation = entries.Generation();
    layout.grown = {m_nWidth, m_nHeight};
    m_pLayout = std::make_unique<Layout>(layout);
}

void QKListCtrl::SetRect(CRect* rect) {
    QKItemBase::SetRect(rect);
    LayOutAll();
    GetRect(rect);
}

void QKListCtrl::ReSetPos(int full) {
    if (full) {
        LayOutAll();
        return;
    }
    m_pLayout.reset();
    for (int i = 0; i < m_lstItems->Count(); ++i) {
        QKListNode& node = *m_lstItems->At(i);
        QKListItem& entry = *node.item;
        entry.rcItem.bottom = entry.rcItem.top + m_nItemHeight;
        entry.rcText.top = entry.rcItem.top + m_nImageHeight + m_nInerTop + m_nTextGap;
        entry.rcText.bottom = entry.rcItem.top + m_nItemHeight;
        if (m_hParent) m_lstItems->Placed(node, Metrics(), false);
        m_lstItems->Reread(node);
    }
}

void QKListCtrl::SetMStateRect(QKListItem* entry) {
    if (m_hParent) QKMeasureHit(Metrics(), {m_pFont.get(), &m_measureFormat}, *entry);
    if (QKListNode* node = m_lstItems->Find(entry)) m_lstItems->Reread(*node);
}

void QKListCtrl::SetFStateRect(QKListItem* entry) {
    if (m_hParent) QKMeasureFocus(Metrics(), {m_pFont.get(), &m_measureFormat}, *entry);
    if (QKListNode* node = m_lstItems->Find(entry)) m_lstItems->Reread(*node);
}

void QKListCtrl::ReCalcStateRect(QKListItem* entry) {
    SetFStateRect(entry);
    SetMStateRect(entry);
}

int QKListCtrl::GetListMaxHeight() {
    return m_lstItems->LowestBottom() - m_nY;
}

int QKListCtrl::GetListMaxWidth() {
    return m_lstItems->RightmostRight() - m_nX;
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
        images[i] = std::make_unique<Gdiplus::Image>(paths[static_cast<INT_PTR>(i)]);
    m_szFrame = {0, 0};
    for (const NineImages* set : {&m_pMoveImage, &m_pDownImage, &m_pFouceImage})
        for (const auto& image : *set) {
            if (!image) continue;
            m_szFrame.cx = std::max(m_szFrame.cx, static_cast<LONG>(image->GetWidth()));
            m_szFrame.cy = std::max(m_szFrame.cy, static_cast<LONG>(image->GetHeight()));
        }
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
