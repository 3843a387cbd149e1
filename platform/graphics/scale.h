// Between units and pixels, where a unit is `scale` pixels.
#pragma once

#include <platform/geometry.h>
#include <platform/saturate.h>

namespace platform {

constexpr int kMostScale = 4;

// That of the screen that windows are shown on, and pictures looked for. Any thread.
int ScreenScale();
void SetScreenScaleTo(int scale);

inline int ScaledLength(int units, int scale) {
    return scale == 1 ? units : Saturate(std::int64_t{units} * scale);
}
inline POINT ScaledPoint(POINT point, int scale) {
    return {ScaledLength(point.x, scale), ScaledLength(point.y, scale)};
}
inline CRect ScaledRect(const RECT& rect, int scale) {
    return {ScaledLength(rect.left, scale), ScaledLength(rect.top, scale), ScaledLength(rect.right, scale),
            ScaledLength(rect.bottom, scale)};
}

// The unit that a pixel lies in.
constexpr int UnitOf(int pixel, int scale) {
    return pixel >= 0 ? pixel / scale : -((scale - 1 - pixel) / scale);
}
constexpr POINT UnitOf(POINT pixel, int scale) {
    return {UnitOf(pixel.x, scale), UnitOf(pixel.y, scale)};
}
// All units that a rectangle of pixels touches.
inline CRect UnitsOf(const RECT& pixels, int scale) {
    return {UnitOf(pixels.left, scale), UnitOf(pixels.top, scale), UnitOf(pixels.right + scale - 1, scale),
            UnitOf(pixels.bottom + scale - 1, scale)};
}

}  // namespace platform
