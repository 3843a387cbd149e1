// A layer that cairo draws a shape into before the platform's loops blend it. Cairo never sees the
// clip, so a partial repaint cannot differ from a full one by the rounding of an edge that the clip cut.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "platform/graphics/draw_target.h"
#include "platform/graphics/graphics_data.h"

namespace platform {

class OffscreenLayer {
  public:
    enum class Kind { Coverage, Pixels };

    OffscreenLayer() = default;
    ~OffscreenLayer();
    OffscreenLayer(const OffscreenLayer&) = delete;
    OffscreenLayer& operator=(const OffscreenLayer&) = delete;

    // Makes room for what lies inside `box`, a rectangle of the world, and `margin` world units around it.
    // Ok without room when none of it can be seen; InvalidParameter beyond cairo's coordinates.
    Gdiplus::Status Prepare(const GraphicsData& graphics, const DrawTarget& target, const Box& box,
                            double margin, Kind kind);
    // Null without room. Carries the world transform and the smoothing.
    cairo_t* Cairo() const { return cairo_; }

    // Blends what was drawn: through its coverage, or as it is.
    void BlendColor(DrawTarget& target, std::uint32_t pixel);
    void BlendPixels(DrawTarget& target);

  private:
    bool MakeRoom(Kind kind);

    CRect place_;  // in surface coordinates
    std::shared_ptr<void> memory_;
    int stride_ = 0;
    cairo_surface_t* surface_ = nullptr;  // owned
    cairo_t* cairo_ = nullptr;            // owned
};

}  // namespace platform
