#include "list/list_metrics.h"

#include <algorithm>
#include <string_view>

#include "items/arithmetic.h"

namespace qkui {
namespace {

constexpr int kCaptionLeft = 5;     // of a row: from the icon box to the caption
constexpr int kCaptionTop = 4;      // of a row
constexpr int kLeastRow = 80;       // the least width of a row's rectangles
constexpr float kFocusRoom = 400;   // that a focused caption may take up in a grid
constexpr float kBelowCaption = 3;  // from a grid's caption to the end of its rectangles
constexpr int kBelowRow = 3;

Gdiplus::RectF CaptionBox(const CaptionStyle& style, std::u16string_view text, int room, float height,
                          CaptionExtents* known) {
    const auto width = static_cast<float>(room);
    return known ? known->Measure(style, text, width, height) : MeasureCaption(style, text, width, height);
}

CRect GridRect(const CRect& cell, const CRect& caption, float captionHeight) {
    return {cell.left, cell.top, cell.right,
            Whole(static_cast<float>(caption.top) + captionHeight + kBelowCaption)};
}

CRect RowRect(const CRect& cell, float right) {
    CRect rect(cell.left, cell.top, Whole(right), Sum(cell.bottom, kBelowRow));
    if (rect.Width() < kLeastRow) rect.right = Sum(rect.left, kLeastRow);
    return rect;
}

// Where a row's caption starts, and a margin after it.
float RowCaption(const ListMetrics& m, const CRect& cell, int margin) {
    return static_cast<float>(Sum(m.imageWidth, margin, cell.left));
}

}  // namespace

CRect GridCaptionCell(const ListMetrics& m, const CRect& cell) {
    return {cell.left, Sum(cell.top, m.imageHeight, m.innerTop, m.textGap), cell.right, cell.bottom};
}

CRect CaptionCell(const ListMetrics& m, const CRect& cell) {
    if (m.Rows())
        return {Sum(cell.left, kCaptionLeft, m.imageWidth), Sum(cell.top, kCaptionTop),
                Saturate(std::int64_t{cell.right} - m.imageWidth - kCaptionLeft), cell.bottom};
    return GridCaptionCell(m, cell);
}

// By the cell's width as it is set, not as it is: in rows that is -1, and the box starts left of the row.
CRect IconBox(const ListMetrics& m, const CRect& cell) {
    return {CPoint(Sum(Difference(m.itemWidth, m.imageWidth) / 2, cell.left), Sum(cell.top, m.innerTop)),
            CSize(m.imageWidth, m.imageHeight)};
}

int IconOverhang(const ListMetrics& m) {
    return std::max(-IconBox(m, CRect()).left, 0);
}

CRect NoPlace() {
    return {-1, -1, -1, -1};
}

bool IsPlaced(const CRect& cell) {
    return !(cell == NoPlace());
}

void MeasureHit(const ListMeasure& measure, std::u16string_view text, EntryRects& rects,
                CaptionExtents* known) {
    const ListMetrics& m = measure.metrics;
    const Gdiplus::RectF box = CaptionBox(measure.style, text, rects.caption.Width(),
                                          static_cast<float>(rects.caption.Height()), known);
    constexpr float kMargins = kCaptionLeft;  // on both sides of the caption
    rects.hit = m.Rows() ? RowRect(rects.cell, RowCaption(m, rects.cell, kCaptionLeft) + box.Width + kMargins)
                         : GridRect(rects.cell, rects.caption, box.Height);
}

void MeasureFocus(const ListMeasure& measure, std::u16string_view text, EntryRects& rects,
                  CaptionExtents* known) {
    const ListMetrics& m = measure.metrics;
    const float height = m.Rows() ? static_cast<float>(rects.caption.Height()) : kFocusRoom;
    const Gdiplus::RectF box = CaptionBox(measure.style, text, rects.caption.Width(), height, known);
    rects.focus = m.Rows() ? RowRect(rects.cell, RowCaption(m, rects.cell, 2 * kCaptionLeft) + box.Width)
                           : GridRect(rects.cell, rects.caption, box.Height);
}

bool HasHitCover(const ListMeasure& measure, const CRect& cell, const CRect& caption) {
    if (measure.style.format.GetFormatFlags() & Gdiplus::StringFormatFlagsNoClip) return false;
    const auto near = [](int edge) { return edge > -kExactPixels && edge < kExactPixels; };
    return !caption.IsRectEmpty() && near(caption.left) && near(caption.top) && near(caption.right) &&
           near(caption.bottom) && near(cell.left);
}

CRect HitCover(const ListMetrics& m, const CRect& cell, const CRect& caption) {
    if (m.Rows())
        return RowRect(cell, RowCaption(m, cell, 2 * kCaptionLeft + 1) + static_cast<float>(caption.Width()));
    return GridRect(cell, caption, static_cast<float>(caption.Height()) + 1);
}

CRect DrawnBounds(const DrawnMetrics& drawn, const DrawnParts& parts, const EntryRects& rects) {
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
    if (parts.icon) include(IconBox(drawn.metrics, rects.cell));
    if (parts.caption) {
        include(rects.caption);
        if (parts.focused)
            include(CRect(rects.caption.TopLeft(), CSize(rects.caption.Width(), rects.focus.Height())));
    }
    return bounds;
}

}  // namespace qkui
