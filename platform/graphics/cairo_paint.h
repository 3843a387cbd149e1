// Small steps that every drawing through cairo needs.
#pragma once

#include <cairo.h>

#include <platform/gdiplus.h>

#include "platform/graphics/pixel_rows.h"

namespace platform {

// Cairo counts in 24.8 bits; coordinates from here on would wrap there.
constexpr double kCairoFarthest = 4e6;
inline bool IsNear(double coordinate) {
    return coordinate > -kCairoFarthest && coordinate < kCairoFarthest;  // a NaN is not
}

// A straight colour as the source. It is spelled so that cairo arrives at the same premultiplied bytes as
// Premultiply.
inline void SetSource(cairo_t* cairo, const Gdiplus::Color& color) {
    const std::uint32_t pixel = Premultiply(color.GetValue());
    const double alpha = pixel >> 24;
    const auto channel = [&](int shift) {
        return alpha > 0 ? static_cast<double>((pixel >> shift) & 0xFF) / alpha : 0.0;
    };
    cairo_set_source_rgba(cairo, channel(16), channel(8), channel(0), alpha / 255);
}

// An ellipse inside a box with an area, as a closed sub-path.
void AddEllipseTo(cairo_t* cairo, double x, double y, double width, double height);

}  // namespace platform
