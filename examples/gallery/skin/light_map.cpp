#include "examples/gallery/skin/light_map.h"

#include <algorithm>
#include <cmath>

#include "examples/gallery/skin/noise.h"

namespace skin {

LightMap::LightMap(int width, int height)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

const Colour& LightMap::Clamped(int x, int y) const {
    const int column = std::clamp(x, 0, width_ - 1);
    const int row = std::clamp(y, 0, height_ - 1);
    return pixels_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(column)];
}

Colour LightMap::Sample(double x, double y) const {
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const double shareX = x - left;
    return Mix(Mix(Clamped(left, top), Clamped(left + 1, top), shareX),
               Mix(Clamped(left, top + 1), Clamped(left + 1, top + 1), shareX), y - top);
}

void LightMap::Light(int x, int y, Colour colour, double strength) {
    // Screen rather than add: bright places saturate softly and keep their hue.
    Colour& pixel = At(x, y);
    pixel.red = 1 - (1 - pixel.red) * (1 - std::min(1.0, colour.red * strength));
    pixel.green = 1 - (1 - pixel.green) * (1 - std::min(1.0, colour.green * strength));
    pixel.blue = 1 - (1 - pixel.blue) * (1 - std::min(1.0, colour.blue * strength));
}

Canvas LightMap::ToCanvas() const {
    Canvas canvas(width_, height_);
    for (int y = 0; y < height_; ++y) {
        const std::span<std::uint32_t> row = canvas.Row(y);
        for (int x = 0; x < width_; ++x) {
            const Colour& pixel = Clamped(x, y);
            const double dither = Lattice(x, y, 77) - 0.5;
            const auto channel = [dither](double value) {
                return static_cast<std::uint32_t>(std::clamp(std::lround(value * 255 + dither), 0L, 255L));
            };
            row[static_cast<std::size_t>(x)] =
                0xff000000U | channel(pixel.red) << 16 | channel(pixel.green) << 8 | channel(pixel.blue);
        }
    }
    canvas.PixelsChanged();
    return canvas;
}

}  // namespace skin
