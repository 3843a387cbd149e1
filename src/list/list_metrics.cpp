#include "list/list_metrics.h"

#include <algorithm>
#include <string_view>

#include "items/arithmetic.h"

namespace {

constexpr int kCaptionLeft = 5;     // of a row: from the icon box to the caption
constexpr int kCaptionTop = 4;      // of a row
constexpr int kLeastRow = 80;       // the least width of a row's rectangles
constexpr float kFocusRoom = 400;   // that a focused caption may take up in a grid
constexpr float kBelowCaption = 3;  // from a grid's caption to the end of its rectangles
constexpr int kBelowRow = 3;

Gdiplus::RectF CaptionBox(const QKCaptionStyle& style, std::u16string_view text, int room, float height,
                          QKCaptionExtents* known) {
    const auto width = static_cast<float>(room);
    return known ? known->Measure(style, text, width, height) : QKMeasureCaption(style, text, width, height);
}

CRect GridRect(const CRect& cell, const CRect& caption, float captionHeight) {
    return {cell.left, cell.top, cell.right,
            qkui::Whole(static_cast<float>(caption.top) + captionHeight + kBelowCaption)};
}

CRect RowRect(const CRect& cell, float right) {
    CRect rect(cell.left, cell.top, qkui::Whole(right), qkui::Sum(cell.bottom, kBelowRow));
    if (rect.Width() < kLeastRow) rect.right = qkui::Sum(rect.left, kLeastRow);
    return rect;
}

// Where a row's caption starts, and a margin after it.
float RowCaption(const QKListMetrics& m, const CRect& cell, int margin) {
    return static_cast<float>(qkui::Sum(m.imageWidth, margin, cell.left));
}

}  // namespace

CRect QKGridCaptionCell(const QKListMetrics& m, const CRect& cell) {
    return {cell.left, qkui::Sum(cell.top, m.imageHeight, m.innerTop, m.textGap), cell.right, cell.bottom};
}

CRect QKCaptionCell(const QKListMetrics& m, const CRect& cell) {
    if (m.Rows())
        return {qkui::Sum(cell.left, kCaptionLeft, m.imageWidth), qkui::Sum(cell.top, kCaptionTop),
                qkui::Saturate(std::int64_t{cell.right} - m.imageWidth - kCaptionLeft), cell.bottom};
    return QKGridCaptionCell(m, cell);
}

// By the cell's width as it is set, not as it is: in rows that is -1, and the box starts left of the row.
CRect QKIconBox(const QKListMetrics& m, const CRect& cell) {
    return {CPoint(qkui::Sum(qkui::Difference(m.itemWidth, m.imageWidth) / 2, cell.left),
                   qkui::Sum(cell.top, m.innerTop)),
            CSize(m.imageWidth, m.imageHeight)};
}

int QKIconOverhang(const QKListMetrics& m) {
    return std::max(-QKIconBox(m, CRect()).left, 0);
}

CRect QKNoPlace() {
    return {-1, -1, -1, -1};
}

bool QKIsPlaced(const CRect& cell) {
    return !(cell == QKNoPlace());
}

void QKMeasureHit(const QKListMeasure& measure, std::u16string_view text, QKEntryRects& rects,
                  QKCaptionExtents* known) {
    const QKListMetrics& m = measure.metrics;
    const Gdiplus::RectF box = CaptionBox(measure.style, text, rects.caption.Width(),
                                          static_cast<float>(rects.caption.Height()), known);
    constexpr float kMargins = kCaptionLeft;  // on both sides of the caption
    rects.hit = m.Rows() ? RowRect(rects.cell, RowCaption(m, rects.cell, kCaptionLeft) + box.Width + kMargins)
                         : GridRect(rects.cell, rects.caption, box.Height);
}

void QKMeasureFocus(const QKListMeasure& measure, std::u16string_view text, QKEntryRects& rects,
                    QKCaptionExtents* known) {
    const QKListMetrics& m = measure.metrics;
    const float height = m.Rows() ? static_cast<float>(rects.caption.Height()) : kFocusRoom;
    const Gdiplus::RectF box = CaptionBox(measure.style, text, rects.caption.Width(), height, known);
    rects.focus = m.Rows() ? RowRect(rects.cell, RowCaption(m, rects.cell, 2 * kCaptionLeft) + box.Width)
                           : GridRect(rects.cell, rects.caption, box.Height);
}

bool QKHasHitCover(const QKListMeasure& measure, const CRect& cell, const CRect& caption) {
    if (measure.style.format.GetFormatFlags() & Gdiplus::StringFormatFlagsNoClip) return false;
    const auto near = [](int edge) { return edge > -QKExactPixels && edge < QKExactPixels; };
    return !caption.IsRectEmpty() && near(caption.left) && near(caption.top) && near(caption.right) &&
           near(caption.bottom) && near(cell.left);
}

CRect QKHitCover(const QKListMetrics& m, const CRect& cell, const CRect& caption) {
    if (m.Rows())
        return RowRect(cell, RowCaption(m, cell, 2 * kCaptionLeft + 1) + static_cast<float>(caption.Width()));
    return GridRect(cell, caption, static_cast<float>(caption.Height()) + 1);
}

CRect QKDrawnBounds(const QKDrawnMetrics& drawn, const QKDrawnParts& parts, const QKEntryRects& rects) {
    CRect bounds;
    const auto include = [&bounds](const CRect& rect) { bounds.UnionRect(CRect(bounds), rect); };
    // Corners keep their size in a frame that is smaller than they are.
    const auto includeFrame = [&](CRect rect) {
        if (rect.Width() < 2 * drawn.frame.cx || rect.Height() < 2 * drawn.frame.cy)
            rect.InflateRect(drawn.frame.cx, drawn.frame.cy);
        include(rect);
    };
    includeFrame(rects.hit);
    if (parts.focused) includeFrame(rects.focus);
    if (parts.icon) include(QKIconBox(drawn.metrics, rects.cell));
    if (parts.caption) {
        include(rects.caption);
        if (parts.focused)
            include(CRect(rects.caption.TopLeft(), CSize(rects.caption.Width(), rects.focus.Height())));
    }
    return bounds;
}
