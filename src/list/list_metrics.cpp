#include "list/list_metrics.h"

#include <algorithm>
#include <string_view>

#include "items/arithmetic.h"
#include "list/list_text.h"

namespace {

constexpr int kCaptionLeft = 5;     // of a row: from the icon box to the caption
constexpr int kCaptionTop = 4;      // of a row
constexpr int kLeastRow = 80;       // the least width of a row's rectangles
constexpr float kFocusRoom = 400;   // that a focused caption may take up in a grid
constexpr float kBelowCaption = 3;  // from a grid's caption to the end of its rectangles
constexpr int kBelowRow = 3;

Gdiplus::RectF CaptionBox(const QKCaptionStyle& style, const QKListItem& entry, float height,
                          QKCaptionExtents* known) {
    const auto width = static_cast<float>(entry.rcText.Width());
    const std::u16string_view text = QKTextOf(entry.szText);
    return known ? known->Measure(style, text, width, height) : QKMeasureCaption(style, text, width, height);
}

CRect GridRect(const QKListItem& entry, float captionHeight) {
    return {entry.rcItem.left, entry.rcItem.top, entry.rcItem.right,
            QKWhole(static_cast<float>(entry.rcText.top) + captionHeight + kBelowCaption)};
}

CRect RowRect(const QKListItem& entry, float right) {
    CRect rect(entry.rcItem.left, entry.rcItem.top, QKWhole(right), QKSum(entry.rcItem.bottom, kBelowRow));
    if (rect.Width() < kLeastRow) rect.right = QKSum(rect.left, kLeastRow);
    return rect;
}

// Where a row's caption starts, and a margin after it.
float RowCaption(const QKListMetrics& m, const QKListItem& entry, int margin) {
    return static_cast<float>(QKSum(m.imageWidth, margin, entry.rcItem.left));
}

}  // namespace

CRect QKGridCaptionCell(const QKListMetrics& m, const CRect& cell) {
    return {cell.left, QKSum(cell.top, m.imageHeight, m.innerTop, m.textGap), cell.right, cell.bottom};
}

CRect QKCaptionCell(const QKListMetrics& m, const CRect& cell) {
    if (m.Rows())
        return {QKSum(cell.left, kCaptionLeft, m.imageWidth), QKSum(cell.top, kCaptionTop),
                QKSaturate(std::int64_t{cell.right} - m.imageWidth - kCaptionLeft), cell.bottom};
    return QKGridCaptionCell(m, cell);
}

// By the cell's width as it is set, not as it is: in rows that is -1, and the box starts left of the row.
CRect QKIconBox(const QKListMetrics& m, const CRect& cell) {
    return {
        CPoint(QKSum(QKDifference(m.itemWidth, m.imageWidth) / 2, cell.left), QKSum(cell.top, m.innerTop)),
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

void QKMeasureHit(const QKListMeasure& measure, QKListItem& entry, QKCaptionExtents* known) {
    const QKListMetrics& m = measure.metrics;
    const Gdiplus::RectF box =
        CaptionBox(measure.style, entry, static_cast<float>(entry.rcText.Height()), known);
    constexpr float kMargins = kCaptionLeft;  // on both sides of the caption
    entry.rcMState = m.Rows() ? RowRect(entry, RowCaption(m, entry, kCaptionLeft) + box.Width + kMargins)
                              : GridRect(entry, box.Height);
}

void QKMeasureFocus(const QKListMeasure& measure, QKListItem& entry, QKCaptionExtents* known) {
    const QKListMetrics& m = measure.metrics;
    const float height = m.Rows() ? static_cast<float>(entry.rcText.Height()) : kFocusRoom;
    const Gdiplus::RectF box = CaptionBox(measure.style, entry, height, known);
    entry.rcFState = m.Rows() ? RowRect(entry, RowCaption(m, entry, 2 * kCaptionLeft) + box.Width)
                              : GridRect(entry, box.Height);
}

bool QKHasHitCover(const QKListMeasure& measure, const QKListItem& entry) {
    if (measure.style.format.GetFormatFlags() & Gdiplus::StringFormatFlagsNoClip) return false;
    const auto near = [](int edge) { return edge > -QKExactPixels && edge < QKExactPixels; };
    const CRect& caption = entry.rcText;
    return !caption.IsRectEmpty() && near(caption.left) && near(caption.top) && near(caption.right) &&
           near(caption.bottom) && near(entry.rcItem.left);
}

CRect QKHitCover(const QKListMetrics& m, const QKListItem& entry) {
    if (m.Rows())
        return RowRect(entry,
                       RowCaption(m, entry, 2 * kCaptionLeft + 1) + static_cast<float>(entry.rcText.Width()));
    return GridRect(entry, static_cast<float>(entry.rcText.Height()) + 1);
}

CRect QKDrawnBounds(const QKDrawnMetrics& drawn, const QKListItem& entry, const CRect& hit) {
    CRect bounds;
    const auto include = [&bounds](const CRect& rect) { bounds.UnionRect(CRect(bounds), rect); };
    // Corners keep their size in a frame that is smaller than they are.
    const auto includeFrame = [&](CRect rect) {
        if (rect.Width() < 2 * drawn.frame.cx || rect.Height() < 2 * drawn.frame.cy)
            rect.InflateRect(drawn.frame.cx, drawn.frame.cy);
        include(rect);
    };
    includeFrame(hit);
    const bool focused = entry.nFocusState != 1;
    if (focused) includeFrame(entry.rcFState);
    if (entry.pImage && QKIsPlaced(entry)) include(QKIconBox(drawn.metrics, entry.rcItem));
    if (entry.szText[0] && entry.bShowText) {
        include(entry.rcText);
        if (focused)
            include(CRect(entry.rcText.TopLeft(), CSize(entry.rcText.Width(), entry.rcFState.Height())));
    }
    return bounds;
}
