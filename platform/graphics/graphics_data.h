// What a Graphics and a GraphicsPath hold, shared by the drawing and the text modules.
#pragma once

#include <memory>
#include <optional>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

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

struct GraphicsData {
    // Why nothing can be drawn: the lasting status, ObjectBusy while a context is given out, Win32Error when
    // the target is gone or a context holds no bitmap. Ok otherwise.
    Gdiplus::Status Check();
    bool IsSmooth() const {
        return smoothing == Gdiplus::SmoothingModeAntiAlias || smoothing == Gdiplus::SmoothingModeHighQuality;
    }
    Gdiplus::Status status = Gdiplus::Ok;  // of the object as a whole
    HDC context;                           // drawn on, or
    std::weak_ptr<ImageData> image;        // drawn on
    bool onImage = false;
    Gdiplus::SmoothingMode smoothing = Gdiplus::SmoothingModeDefault;
    Gdiplus::CompositingMode compositing = Gdiplus::CompositingModeSourceOver;
    Gdiplus::InterpolationMode interpolation = Gdiplus::InterpolationModeDefault;
    Gdiplus::Matrix transform;
    std::optional<CRect> clip;  // in context coordinates
    HDC lent;                   // given out by GetHDC
};

}  // namespace platform
