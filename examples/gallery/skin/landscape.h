// The window backgrounds: a lake at night under ridgelines and a moon, and the weave that tiles.
#pragma once

#include <cstdint>

#include "examples/gallery/skin/canvas.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace skin {

// What one view of the lake is made of.
struct Scene {
    PictureSize size;
    double shore;       // height of the water line, share of the picture's height
    double moonX;       // share of the width
    double moonY;       // share of the height
    double moonRadius;  // pixels
    std::span<const Stop> sky;
    Colour haze;         // light that lies over the feet of the mountains
    Colour farRidge;     // the ridges run from this …
    Colour nearRidge;    // … to this
    double clouds;       // 0 to 1
    double aurora;       // 0 to 1
    std::uint32_t seed;  // everything random follows from it
};

Canvas DuskOverTheLake(PictureSize size);
Canvas NorthernLights(PictureSize size);
Canvas DrawScene(const Scene& scene);
Canvas WeaveTile(PictureSize size);

}  // namespace skin
