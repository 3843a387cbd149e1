// The two shapes of a window on the server: what of it is there (bounding) and what of that takes the
// pointer (input). They come from a region that the core gives and from the window's own pixels.
#pragma once

#include <optional>

#include <xcb/shape.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/display_plan.h"
#include "platform/window/x11/row_spans.h"

namespace platform::x11 {

class WindowOutline {
  public:
    // Empty: no region.
    void SetRegion(std::optional<Region> region);
    // The rules by which pixels count, and the pixels (null: there are none yet).
    void SetRules(const SpanRule& bounding, const SpanRule& input, const Surface* surface);
    // Pixels of the surface have changed within `damage`; or, with another size, all of them.
    void PixelsChanged(const Surface& surface, const Region& damage);
    // The window is a new one, or one whose input shape the window manager missed: send all again.
    void Forget() { boundingStale_ = inputStale_ = true; }
    void ForgetInput() { inputStale_ = true; }
    // Sends what has changed, to the window and to the frame around it (0: none).
    void Send(const Connection& connection, xcb_window_t window, xcb_window_t frame);
    // The window manager has removed a shape of the frame: it gets it again, where it should have one.
    void Restore(const Connection& connection, xcb_window_t frame, xcb_shape_kind_t kind) const;

  private:
    const SpanRule& PixelRule() const { return bounding_.ReadsPixels() ? bounding_ : input_; }
    bool ReadsPixels() const { return bounding_.ReadsPixels() || input_.ReadsPixels(); }
    void ScanAll(const Surface& surface);
    void MarkPixelShapeStale();
    void SendBounding(const Connection& connection, xcb_window_t window) const;
    void SendInput(const Connection& connection, xcb_window_t window) const;

    std::optional<Region> region_;
    SpanRule bounding_, input_;
    RowSpans spans_;  // by whichever of the two rules reads pixels
    int width_ = 0;   // of the surface scanned; 0: none yet
    int height_ = 0;
    bool boundingStale_ = false;
    bool inputStale_ = false;
};

}  // namespace platform::x11
