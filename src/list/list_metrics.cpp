#include "list/list_metrics.h"

#include <algorithm>

namespace {

constexpr int kCaptionLeft = 5;     // of a row: from the icon box to the caption
constexpr int kCaptionTop = 4;      // of a row
constexpr int kLeastRow = 80;       // the least width of a row's rectangles
constexpr float kFocusRoom = 400;   // that a focused caption may take up in a grid
constexpr float kBelowCaption = 3;  // from a grid's caption to the end of its rectangles
constexpr int kBelowRow = 3;

// An entry without caption still has a line to be hit.
Gdiplus::RectF CaptionBox(const QKCaptionStyle& style, const QKListItem& entry, float width, float height) {
    const LPCWSTR text = entry.szText[0] ? entry.szText : u"0";
    return Gdiplus::GetTextExtent(text, -1, style.font, {0, 0, width, height}, style.format).box;
}

CRect GridRect(const QKListItem& entry, float captionHeight) {
    return {entry.rcItem.left, entry.rcItem.top, entry.rcItem.right,
            static_cast<int>(static_cast<float>(entry.rcText.top) + captionHeight + kBelowCaption)};
}

CRect RowRect(const QKListItem& entry, float right) {
    CRect rect(entry.rcItem.left, entry.rcItem.top, static_cast<int>(right), entry.rcItem.bottom + kBelowRow);
    if (rect.Width() < kLeastRow) rect.right = rect.left + kLeastRow;
    return rect;
}

}  // namespace

CRect QKGridCaptionCell(const QKListMetrics& m, const CRect& cell) {
    return {cell.left, cell.top + m.imageHeight + m.innerTop + m.textGap, cell.right, cell.bottom};
}

CRect QKCaptionCell(const QKListMetrics& m, const CRect& cell) {
    if (m.Rows())
        return {cell.left + kCaptionLeft + m.imageWidth, cell.top + kCaptionTop,
                cell.right - m.imageWidth - kCaptionLeft, cell.bottom};
    return QKGridCaptionCell(m, cell);
}

// By the cell's width as it is set, not as it is: in rows that is -1, and the box starts left of the row.
CRect QKIconBox(const QKListMetrics& m, const CRect& cell) {
    return {CPoint((m.itemWidth - m.imageWidth) / 2 + cell.left, cell.top + m.innerTop),
            CSize(m.imageWidth, m.imageHeight)};
}

bool QKIsPlaced(const QKListItem& entry) {
    return !(entry.rcItem == CRect(-1, -1, -1, -1));
}

void QKUnplace(QKListItem& entry) {
    entry.rcItem = entry.rcText = entry.rcMState = entry.rcFState = CRect(-1, -1, -1, -1);
}

void QKOffset(QKListItem& entry, CPoint by) {
    for (CRect* rect : {&entry.rcItem, &entry.rcText, &entry.rcMState, &entry.rcFState})
        rect->OffsetRect(by.x, by.y);
}

void QKMeasureHit(const QKListMetrics& m, const QKCaptionStyle& style, QKListItem& entry) {
    const Gdiplus::RectF box = CaptionBox(style, entry, static_cast<float>(entry.rcText.Width()),
                                          static_cast<float>(entry.rcText.Height()));
    constexpr float kMargins = kCaptionLeft;  // on both sides of the caption
    entry.rcMState =
        m.Rows() ? RowRect(entry, static_cast<float>(m.imageWidth + kCaptionLeft + entry.rcItem.left) +
                                      box.Width + kMargins)
                 : GridRect(entry, box.Height);
}

void QKMeasureFocus(const QKListMetrics& m, const QKCaptionStyle& style, QKListItem& entry) {
    const Gdiplus::RectF box = CaptionBox(style, entry, static_cast<float>(entry.rcText.Width()),
                                          m.Rows() ? static_cast<float>(entry.rcText.Height()) : kFocusRoom);
    entry.rcFState =
        m.Rows() ? RowRect(entry, static_cast<float>(m.imageWidth + 2 * kCaptionLeft + entry.rcItem.left) +
                                      box.Width)
                 : GridRect(entry, box.Height);
}

bool QKHasHitCover(const QKListItem& entry) {
    return !entry.rcText.IsRectEmpty();
}

CRect QKHitCover(const QKListMetrics& m, const QKListItem& entry) {
    if (m.Rows())
        return RowRect(entry, static_cast<float>(m.imageWidth + 2 * kCaptionLeft + entry.rcItem.left + 1) +
                                  static_cast<float>(entry.rcText.Width()));
    return GridRect(entry, static_cast<float>(entry.rcText.Height()) + 1);
}

CRect QKDrawnBounds(const QKListMetrics& m, const QKListItem& entry, const CRect& hit) {
    CRect bounds;
    const auto include = [&bounds](const CRect& rect) { bounds.UnionRect(CRect(bounds), rect); };
    // Corners keep their size in a frame that is smaller than they are.
    const auto includeFrame = [&](CRect rect) {
        if (rect.Width() < 2 * m.frameSize.cx || rect.Height() < 2 * m.frameSize.cy)
            rect.InflateRect(m.frameSize.cx, m.frameSize.cy);
        include(rect);
    };
    includeFrame(hit);
    const bool focused = entry.nFocusState != 1;
    if (focused) includeFrame(entry.rcFState);
    if (entry.pImage && QKIsPlaced(entry)) include(QKIconBox(m, entry.rcItem));
    if (entry.szText[0] && entry.bShowText) {
        include(entry.rcText);
        if (focused)
            include(CRect(entry.rcText.TopLeft(), CSize(entry.rcText.Width(), entry.rcFState.Height())));
    }
    return bounds;
}
