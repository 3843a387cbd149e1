#include "platform/window/x11/window_outline.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <xcb/shape.h>

namespace platform::x11 {

namespace {

// The server works on a bounding shape in time quadratic in its rectangles, and freezes for seconds beyond
// some ten thousand. An input shape is cheap; its limit is the length of a request.
constexpr std::size_t kMostBoundingRectangles = 4000;
constexpr std::size_t kMostInputRectangles = 200000;

void SendShape(const Connection& connection, xcb_window_t window, xcb_shape_sk_t kind,
               const std::vector<xcb_rectangle_t>& rectangles) {
    xcb_shape_rectangles(connection.Get(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

void RemoveShape(const Connection& connection, xcb_window_t window, xcb_shape_sk_t kind) {
    xcb_shape_mask(connection.Get(), XCB_SHAPE_SO_SET, kind, window, 0, 0, XCB_PIXMAP_NONE);
}

Region ToRegion(const std::vector<xcb_rectangle_t>& rectangles) {
    std::vector<RECT> rects;
    rects.reserve(rectangles.size());
    for (const xcb_rectangle_t& r : rectangles)
        rects.push_back({r.x, r.y, r.x + r.width, r.y + r.height});
    return Region(rects);
}

std::vector<xcb_rectangle_t> ToRectangles(const Region& region) {
    RowSpans rows;
    rows.Take(region);
    return LimitedRectangles(rows, kMostBoundingRectangles);
}

}  // namespace

void WindowOutline::SetRegion(std::optional<Region> region) {
    if (region == region_) return;
    region_ = std::move(region);
    boundingStale_ = true;
}

void WindowOutline::SetRules(const SpanRule& bounding, const SpanRule& input, const Surface* surface) {
    if (!(bounding == bounding_)) boundingStale_ = true;
    if (!(input == input_)) inputStale_ = true;
    bounding_ = bounding;
    input_ = input;
    spans_.Clear();
    width_ = height_ = 0;
    if (surface != nullptr && ReadsPixels()) ScanAll(*surface);
}

void WindowOutline::PixelsChanged(const Surface& surface, const Region& damage) {
    if (!ReadsPixels()) return;
    if (surface.Width() != width_ || surface.Height() != height_) {
        ScanAll(surface);
    } else if (spans_.Rescan(surface, PixelRule(), damage)) {
        MarkPixelShapeStale();
    }
}

void WindowOutline::ScanAll(const Surface& surface) {
    spans_.Scan(surface, PixelRule());
    width_ = surface.Width();
    height_ = surface.Height();
    MarkPixelShapeStale();
}

void WindowOutline::MarkPixelShapeStale() {
    (bounding_.ReadsPixels() ? boundingStale_ : inputStale_) = true;
}

void WindowOutline::Send(const Connection& connection, xcb_window_t window, xcb_window_t frame) {
    if (!connection.IsAlive() || !connection.Has().shape || window == 0) return;
    const bool bounding = std::exchange(boundingStale_, false);
    const bool input = std::exchange(inputStale_, false);
    for (const xcb_window_t target : {window, frame}) {
        if (bounding && target != 0) SendBounding(connection, target);
        if (input && target != 0) SendInput(connection, target);
    }
}

void WindowOutline::Restore(const Connection& connection, xcb_window_t frame, xcb_shape_kind_t kind) const {
    if (kind == XCB_SHAPE_SK_BOUNDING && (region_ || bounding_.kind != SpanRule::Kind::Everything)) {
        SendBounding(connection, frame);
    } else if (kind == XCB_SHAPE_SK_INPUT && input_.kind != SpanRule::Kind::Everything) {
        SendInput(connection, frame);
    }
}

void WindowOutline::SendBounding(const Connection& connection, xcb_window_t window) const {
    std::vector<xcb_rectangle_t> rectangles;
    switch (bounding_.kind) {
        case SpanRule::Kind::Nothing:
            break;
        case SpanRule::Kind::Everything:
            if (!region_) {
                RemoveShape(connection, window, XCB_SHAPE_SK_BOUNDING);
                return;
            }
            rectangles = ToRectangles(*region_);
            break;
        default:
            rectangles = LimitedRectangles(spans_, kMostBoundingRectangles);
            if (region_) {
                Region common = ToRegion(rectangles);
                common.Intersect(*region_);
                rectangles = ToRectangles(common);
            }
    }
    SendShape(connection, window, XCB_SHAPE_SK_BOUNDING, rectangles);
}

void WindowOutline::SendInput(const Connection& connection, xcb_window_t window) const {
    if (input_.kind == SpanRule::Kind::Everything) {
        RemoveShape(connection, window, XCB_SHAPE_SK_INPUT);
        return;
    }
    std::vector<xcb_rectangle_t> rectangles;
    if (input_.ReadsPixels()) {
        const std::size_t room = connection.MaximumRequest() / sizeof(xcb_rectangle_t) - 8;
        rectangles = LimitedRectangles(spans_, std::min(kMostInputRectangles, room));
    }
    SendShape(connection, window, XCB_SHAPE_SK_INPUT, rectangles);
}

}  // namespace platform::x11
