// Straight colour to the premultiplied form of surfaces and back, rounded to the nearest value.
#pragma once

#include <algorithm>
#include <cstdint>

namespace platform {

constexpr std::uint32_t PremultipliedFrom(std::uint32_t a, std::uint32_t r, std::uint32_t g,
                                          std::uint32_t b) {
    if (a != 255) {
        r = (r * a + 127) / 255;
        g = (g * a + 127) / 255;
        b = (b * a + 127) / 255;
    }
    return (a << 24) | (r << 16) | (g << 8) | b;
}

// One channel. A value above its alpha, which no drawing makes but direct writing can, counts as full.
constexpr std::uint32_t StraightChannel(std::uint32_t value, std::uint32_t a) {
    return a == 0 ? 0 : std::min<std::uint32_t>(255, (value * 255 + a / 2) / a);
}

}  // namespace platform
