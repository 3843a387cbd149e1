// A picture in floating point. Wide gradients are worked out here and rounded once, with dither, so that a
// night sky shows no bands.
#pragma once

#include <vector>

#include "examples/gallery/skin/canvas.h"

namespace skin {

class LightMap {
  public:
    LightMap(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }

    Colour& At(int x, int y) {
        return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                       static_cast<std::size_t>(x)];
    }
    // Between pixels; clamped to the edge.
    Colour Sample(double x, double y) const;
    void Cover(int x, int y, Colour colour, double share) { At(x, y) = Mix(At(x, y), colour, share); }
    void Light(int x, int y, Colour colour, double strength);

    Canvas ToCanvas() const;

  private:
    const Colour& Clamped(int x, int y) const;

    int width_;
    int height_;
    std::vector<Colour> pixels_;
};

}  // namespace skin
