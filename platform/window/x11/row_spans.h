// The pixels of a surface that belong to a shape, as spans per row, kept up to date row by row, and turned
// into the rectangles that the server takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"
#include "platform/window/x11/display_plan.h"

namespace platform::x11 {

struct Span {
    std::int16_t left;
    std::int16_t right;  // the first outside
    friend bool operator==(const Span&, const Span&) = default;
};

// Spans of one row, from left to right, never touching.
using Spans = std::vector<Span>;

class RowSpans {
  public:
    // Reads every row anew.
    void Scan(const Surface& surface, const SpanRule& rule);
    // Reads the rows that a region touches. True when any of them differs from before. The surface must have
    // the size of the last Scan.
    bool Rescan(const Surface& surface, const SpanRule& rule, const Region& damage);
    // The rows of a region instead of a surface.
    void Take(const Region& region);
    void Clear();

    int Height() const { return static_cast<int>(rows_.size()); }
    const Spans& Row(int y) const { return rows_[static_cast<std::size_t>(y)]; }
    // How many rectangles Rectangles would return.
    std::size_t Count() const;
    // Sorted by row, then column; equal neighbouring rows share their rectangles.
    std::vector<xcb_rectangle_t> Rectangles() const;
    // The same area on a grid of `columns` by `rows` pixels: a cell belongs when any pixel of it does.
    RowSpans Coarsened(int columns, int rows) const;
    // Each row from its first to its last pixel.
    RowSpans Hull() const;

  private:
    std::vector<Spans> rows_;
    int width_ = 0;
};

// At most about `limit` rectangles that look like `spans`: exact where they suffice, else ever coarser.
std::vector<xcb_rectangle_t> LimitedRectangles(const RowSpans& spans, std::size_t limit);

}  // namespace platform::x11
