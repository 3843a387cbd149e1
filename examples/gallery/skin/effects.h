// Soft light: blurred shadows and glows outside an outline, shade inside it.
#pragma once

#include <vector>

#include "examples/gallery/skin/canvas.h"

namespace skin {

// One value per pixel, 0 to 1: coverage.
struct Plane {
    Plane(int planeWidth, int planeHeight);

    float& At(int x, int y) {
        return values[static_cast<std::size_t>(y) * Stride() + static_cast<std::size_t>(x)];
    }
    float At(int x, int y) const {
        return values[static_cast<std::size_t>(y) * Stride() + static_cast<std::size_t>(x)];
    }
    std::size_t Stride() const { return static_cast<std::size_t>(width); }

    int width;
    int height;
    std::vector<float> values;
};

Plane CoverageOf(const Canvas& picture);
// Gaussian blur; what lies outside the plane counts as zero.
void Blur(Plane& plane, double sigma);
// A canvas of one colour whose alpha is the plane times the colour's alpha.
Canvas Tinted(const Plane& plane, Colour colour);

struct Softness {
    double sigma = 2;
    double dx = 0;
    double dy = 0;
};

// Draws the blurred, moved outline. The outline itself is usually filled on top afterwards. Outlines are in
// pixels of the canvas, whatever its transform.
void DropShadow(Canvas& canvas, const Outline& outline, Colour colour, Softness softness);
// Darkens (or lights) the inside along the outline's edge, as if the light came from -dx, -dy.
void InnerShadow(Canvas& canvas, const Outline& outline, Colour colour, Softness softness);

}  // namespace skin
