#include "platform/window/x11/pixel_conversion.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace platform::x11 {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

// 255 / alpha in 16.16 fixed point, rounded so that a full channel gives 255.
const std::array<std::uint32_t, 256>& Reciprocals() {
    static const auto table = [] {
        std::array<std::uint32_t, 256> values{};
        for (std::uint32_t alpha = 1; alpha < 256; ++alpha)
            values[alpha] = ((255U << 16) + alpha / 2) / alpha;
        return values;
    }();
    return table;
}

std::uint32_t Unpremultiplied(std::uint32_t pixel, const std::array<std::uint32_t, 256>& reciprocals) {
    const std::uint32_t factor = reciprocals[pixel >> 24];
    const auto channel = [&](int shift) {
        const std::uint32_t value = (((pixel >> shift) & 0xFF) * factor + 0x8000) >> 16;
        return std::min<std::uint32_t>(value, 255) << shift;
    };
    return kOpaque | channel(16) | channel(8) | channel(0);
}

// Premultiplied pixels times opacity / 255, rounded; two channels at once.
void Fade(std::uint32_t opacity, std::uint32_t* pixels, std::size_t count) {
    constexpr std::uint32_t kTwo = 0x00FF00FF;
    const auto times = [opacity](std::uint32_t two) {
        const std::uint32_t product = two * opacity + 0x00800080;
        return (product + (product >> 8 & kTwo)) >> 8 & kTwo;
    };
    for (std::size_t i = 0; i < count; ++i)
        pixels[i] = times(pixels[i] & kTwo) | times(pixels[i] >> 8 & kTwo) << 8;
}

}  // namespace

void ConvertPixels(const DisplayPlan& plan, const std::uint32_t* source, std::uint32_t* target,
                   std::size_t count) {
    const std::uint32_t key = plan.key;
    switch (plan.conversion) {
        case Conversion::None:
            std::memcpy(target, source, count * sizeof *source);
            break;
        case Conversion::ForceOpaque:
            for (std::size_t i = 0; i < count; ++i)
                target[i] = source[i] | kOpaque;
            break;
        case Conversion::KeyToTransparent:
            for (std::size_t i = 0; i < count; ++i) {
                const std::uint32_t colour = source[i] & 0xFFFFFF;
                target[i] = colour == key ? 0 : colour | kOpaque;
            }
            break;
        case Conversion::Unpremultiply: {
            const auto& reciprocals = Reciprocals();
            for (std::size_t i = 0; i < count; ++i) {
                const std::uint32_t pixel = source[i];
                if (pixel >= kOpaque || pixel == 0) {
                    target[i] = pixel | kOpaque;
                } else {
                    target[i] = Unpremultiplied(pixel, reciprocals);
                }
            }
            break;
        }
    }
    if (plan.opacity != 255) Fade(plan.opacity, target, count);
}

void BlendOver(const std::uint32_t* behind, std::uint32_t* pixels, std::size_t count) {
    constexpr std::uint32_t kTwo = 0x00FF00FF;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t rest = 255 - (pixels[i] >> 24);
        const auto times = [rest](std::uint32_t two) {
            const std::uint32_t product = two * rest + 0x00800080;
            return (product + (product >> 8 & kTwo)) >> 8 & kTwo;
        };
        const std::uint32_t low = (pixels[i] & kTwo) + times(behind[i] & kTwo);
        const std::uint32_t green = (pixels[i] >> 8 & 0xFF) + times(behind[i] >> 8 & 0xFF);
        // Colours brighter than their alpha saturate.
        pixels[i] = kOpaque | std::min(low >> 16, 255U) << 16 | std::min(green, 255U) << 8 |
                    std::min(low & 0xFFFF, 255U);
    }
}

}  // namespace platform::x11
