#include "platform/window/x11/row_spans.h"

#include <algorithm>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

constexpr int kBlock = 16;

// The first pixel from `x` on that belongs (`wanted`) or does not; the width when there is none. Long runs
// are passed over in blocks, which the vectoriser counts at once.
template <bool wanted, class Belongs>
int FindNext(const std::uint32_t* pixels, int x, int width, Belongs belongs) {
    for (; x + kBlock <= width; x += kBlock) {
        int count = 0;
        for (int i = 0; i < kBlock; ++i)
            count += belongs(pixels[x + i]) ? 1 : 0;
        if (count != (wanted ? 0 : kBlock)) break;
    }
    while (x < width && belongs(pixels[x]) != wanted)
        ++x;
    return x;
}

template <class Belongs>
void ScanRow(const std::uint32_t* pixels, int width, Belongs belongs, Spans& out) {
    out.clear();
    int x = 0;
    while ((x = FindNext<true>(pixels, x, width, belongs)) < width) {
        const int left = x;
        x = FindNext<false>(pixels, x, width, belongs);
        out.push_back({static_cast<std::int16_t>(left), static_cast<std::int16_t>(x)});
    }
}

void ScanRow(const std::uint32_t* pixels, int width, const SpanRule& rule, Spans& out) {
    switch (rule.kind) {
        case SpanRule::Kind::Nothing:
            out.clear();
            return;
        case SpanRule::Kind::Everything:
            out.assign(1, {0, static_cast<std::int16_t>(width)});
            return;
        case SpanRule::Kind::AlphaAtLeast: {
            const int least = rule.threshold;
            ScanRow(
                pixels, width,
                [least](std::uint32_t pixel) { return static_cast<int>(pixel >> 24) >= least; }, out);
            return;
        }
        case SpanRule::Kind::NotKey: {
            const std::uint32_t key = rule.key;
            ScanRow(
                pixels, width, [key](std::uint32_t pixel) { return (pixel & 0xFFFFFF) != key; }, out);
            return;
        }
    }
}

// Joins spans sorted by their left ends where they overlap or touch.
void Join(Spans& spans) {
    std::size_t kept = 0;
    for (const Span& span : spans) {
        if (kept > 0 && span.left <= spans[kept - 1].right) {
            spans[kept - 1].right = std::max(spans[kept - 1].right, span.right);
        } else {
            spans[kept++] = span;
        }
    }
    spans.resize(kept);
}

}  // namespace

void RowSpans::Scan(const Surface& surface, const SpanRule& rule) {
    width_ = std::min<int>(surface.Width(), INT16_MAX);
    rows_.resize(static_cast<std::size_t>(std::min<int>(surface.Height(), INT16_MAX)));
    for (int y = 0; y < Height(); ++y)
        ScanRow(surface.Row(y), width_, rule, rows_[static_cast<std::size_t>(y)]);
}

bool RowSpans::Rescan(const Surface& surface, const SpanRule& rule, const Region& damage) {
    bool changed = false;
    Spans fresh;
    int done = 0;  // rows above were read; the region's rectangles are sorted by row
    for (int i = 0; i < damage.Count(); ++i) {
        const CRect rect = damage.Rect(i);
        const int bottom = std::min<int>(rect.bottom, Height());
        for (int y = std::max<int>(rect.top, done); y < bottom; ++y) {
            ScanRow(surface.Row(y), width_, rule, fresh);
            Spans& row = rows_[static_cast<std::size_t>(y)];
            if (row == fresh) continue;
            row = fresh;
            changed = true;
        }
        done = std::max(done, bottom);
    }
    return changed;
}

void RowSpans::Take(const Region& region) {
    Clear();
    const CRect box = region.Box();
    if (box.IsRectEmpty()) return;
    width_ = ToX(box.right);
    rows_.resize(static_cast<std::size_t>(std::max<int>(ToX(box.bottom), 0)));
    for (int i = 0; i < region.Count(); ++i) {
        const CRect rect = region.Rect(i);
        for (int y = std::max<int>(rect.top, 0); y < std::min<int>(rect.bottom, Height()); ++y)
            rows_[static_cast<std::size_t>(y)].push_back({ToX(rect.left), ToX(rect.right)});
    }
}

void RowSpans::Clear() {
    rows_.clear();
    width_ = 0;
}

std::size_t RowSpans::Count() const {
    std::size_t count = 0;
    for (std::size_t y = 0; y < rows_.size(); ++y)
        if (y == 0 || rows_[y] != rows_[y - 1]) count += rows_[y].size();
    return count;
}

std::vector<xcb_rectangle_t> RowSpans::Rectangles() const {
    std::vector<xcb_rectangle_t> rectangles;
    for (std::size_t top = 0; top < rows_.size();) {
        std::size_t bottom = top + 1;
        while (bottom < rows_.size() && rows_[bottom] == rows_[top])
            ++bottom;
        for (const Span& span : rows_[top])
            rectangles.push_back({span.left, static_cast<std::int16_t>(top),
                                  static_cast<std::uint16_t>(span.right - span.left),
                                  static_cast<std::uint16_t>(bottom - top)});
        top = bottom;
    }
    return rectangles;
}

RowSpans RowSpans::Coarsened(int columns, int rows) const {
    RowSpans result;
    result.width_ = width_;
    result.rows_.resize(rows_.size());
    Spans cells;
    for (int top = 0; top < Height(); top += rows) {
        cells.clear();
        const int bottom = std::min(top + rows, Height());
        for (int y = top; y < bottom; ++y)
            for (const Span& span : Row(y)) {
                const int right = (span.right + columns - 1) / columns * columns;
                cells.push_back({static_cast<std::int16_t>(span.left / columns * columns),
                                 static_cast<std::int16_t>(std::min(right, width_))});
            }
        std::sort(cells.begin(), cells.end(), [](const Span& a, const Span& b) { return a.left < b.left; });
        Join(cells);
        for (int y = top; y < bottom; ++y)
            result.rows_[static_cast<std::size_t>(y)] = cells;
    }
    return result;
}

RowSpans RowSpans::Hull() const {
    RowSpans result;
    result.width_ = width_;
    result.rows_.reserve(rows_.size());
    for (const Spans& row : rows_)
        result.rows_.push_back(row.empty() ? Spans{} : Spans{{row.front().left, row.back().right}});
    return result;
}

std::vector<xcb_rectangle_t> LimitedRectangles(const RowSpans& spans, std::size_t limit) {
    if (spans.Count() <= limit) return spans.Rectangles();
    struct Grid {
        int columns, rows;
    };
    for (const Grid grid : {Grid{1, 2}, Grid{2, 2}, Grid{4, 4}, Grid{8, 8}}) {
        const RowSpans coarse = spans.Coarsened(grid.columns, grid.rows);
        if (coarse.Count() <= limit) return coarse.Rectangles();
    }
    RowSpans hull = spans.Hull();
    for (int rows = 2; hull.Count() > limit; rows *= 2)
        hull = spans.Coarsened(1, rows).Hull();
    return hull.Rectangles();
}

}  // namespace platform::x11
