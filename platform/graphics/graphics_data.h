// What a Graphics and a GraphicsPath hold, shared by the drawing and the text modules.
#pragma once

#include <memory>
#include <optional>

#include <platform/gdiplus.h>

#include "platform/graphics/device_context.h"

typedef struct _cairo cairo_t;

namespace platform {

class DeviceContext;

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
    std::shared_ptr<DeviceContext> context_;
    std::optional<CRect> touched_;
    cairo_t* cairo_ = nullptr;  // owned
    bool drawn_ = false;        // its end is to be told
};

struct GraphicsData {
    // Why nothing can be drawn: the lasting status, ObjectBusy while a context is given out, Win32Error when
    // the target is gone or a context holds no bitmap. Ok otherwise.
    Gdiplus::Status Check();
    // Empty when Check would not say Ok, or when the clip, narrowed to `within` (surface coordinates), holds
    // no pixel. Shapes are smoothed as `smoothing` asks; text is up to its font options.
    std::optional<DrawingPass> Begin(const std::optional<CRect>& within = {});

    Gdiplus::Status status = Gdiplus::Ok;  // of the object as a whole
    HDC context;                           // drawn on, or
    std::weak_ptr<ImageData> image;        // drawn on
    bool onImage = false;
    Gdiplus::SmoothingMode smoothing = Gdiplus::SmoothingModeDefault;
    Gdiplus::InterpolationMode interpolation = Gdiplus::InterpolationModeDefault;
    Gdiplus::Matrix transform;
    std::optional<CRect> clip;  // in context coordinates
    HDC lent;                   // given out by GetHDC
};

}  // namespace platform
