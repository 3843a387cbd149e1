// What a Graphics and a GraphicsPath hold, shared by the drawing and the text modules.
#pragma once

#include <memory>
#include <optional>

#include <platform/gdiplus.h>

#include "platform/graphics/device_context.h"

typedef struct _cairo cairo_t;

namespace platform {

// A path is collected in a cairo context without pixels, in world units, untransformed.
struct PathData {
    explicit PathData(Gdiplus::FillMode fillMode);
    ~PathData();
    PathData(const PathData&) = delete;
    PathData& operator=(const PathData&) = delete;

    Gdiplus::FillMode mode;
    cairo_t* outline;  // owned
};

// One drawing operation on a target: a cairo context that is clipped to everything that may be drawn on and
// carries the world transform. Destroying it tells the surface and the device context what was touched.
class DrawingPass {
  public:
    ~DrawingPass();
    DrawingPass(DrawingPass&& other) noexcept;
    cairo_t* Cairo() const { return cairo_; }
    const Target& On() const { return target_; }
    // Narrows what is reported as touched, in surface coordinates; without it the whole clip counts.
    void Touched(const RECT& surfaceRect) { touched_ = surfaceRect; }

  private:
    friend struct GraphicsData;
    DrawingPass() = default;
    Target target_;
    HDC context_;
    std::optional<CRect> touched_;
    cairo_t* cairo_ = nullptr;  // owned
};

struct GraphicsData {
    // Empty when the target is gone (the status is then set in `status`) or nothing can be drawn.
    std::optional<DrawingPass> Begin();

    Gdiplus::Status status = Gdiplus::Ok;  // of the object as a whole
    HDC context;                           // drawn on, or
    std::weak_ptr<ImageData> image;        // drawn on
    bool onImage = false;
    Gdiplus::SmoothingMode smoothing = Gdiplus::SmoothingModeDefault;
    Gdiplus::InterpolationMode interpolation = Gdiplus::InterpolationModeDefault;
    Gdiplus::Matrix transform;
    std::optional<Gdiplus::Rect> clip;  // in world coordinates of the time it was set, transformed
    HDC lent;                           // given out by GetHDC
};

}  // namespace platform
