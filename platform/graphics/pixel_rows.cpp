#include "platform/graphics/pixel_rows.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/graphics/row_blends.h"

namespace platform {
namespace {

// ceil(2^24 / alpha): channel * 255 / alpha, rounded, as one multiplication. Exact for all pairs (tested).
constexpr std::array<std::uint32_t, 256> MakeReciprocals() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t alpha = 1; alpha < 256; ++alpha)
        table[alpha] = ((1U << 24) + alpha - 1) / alpha;
    return table;
}
constexpr std::array<std::uint32_t, 256> kReciprocals = MakeReciprocals();

}  // namespace

std::uint32_t Unpremultiply(std::uint32_t premultiplied) {
    const std::uint32_t alpha = premultiplied >> 24;
    if (alpha == 255) return premultiplied;
    if (alpha == 0) return 0;
    const std::uint64_t reciprocal = kReciprocals[alpha];
    const std::uint32_t half = alpha / 2;
    const auto straight = [&](int shift) {
        const std::uint32_t channel = std::min((premultiplied >> shift) & 0xFF, alpha);
        return static_cast<std::uint32_t>(((channel * 255 + half) * reciprocal) >> 24) << shift;
    };
    return (alpha << 24) | straight(16) | straight(8) | straight(0);
}

void PremultiplyRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t alpha = from[i] >> 24;
        to[i] = (alpha << 24) | ScalePixel(from[i] & 0x00FFFFFF, alpha);
    }
}

void UnpremultiplyRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Unpremultiply(from[i]);
}

void ClampPremultipliedRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = from[i];
        const std::uint32_t alpha = pixel >> 24;
        to[i] = (alpha << 24) | (std::min((pixel >> 16) & 0xFF, alpha) << 16) |
                (std::min((pixel >> 8) & 0xFF, alpha) << 8) | std::min(pixel & 0xFF, alpha);
    }
}

void MakeOpaqueRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = from[i] | 0xFF000000U;
}

void BlendRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    FastestRowBlends().pixels(to, from, count);
}

void BlendColorRow(std::uint32_t* to, std::uint32_t color, std::size_t count) {
    FastestRowBlends().color(to, color, count);
}

void BlendCoverageRow(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage,
                      std::size_t count) {
    FastestRowBlends().coverage(to, color, coverage, count);
}

bool IsOpaqueRow(const std::uint32_t* row, std::size_t count) {
    std::uint32_t all = 0xFF000000U;
    for (std::size_t i = 0; i < count; ++i)
        all &= row[i];
    return all == 0xFF000000U;
}

void FillPixels(Surface& target, const CRect& rect, std::uint32_t pixel) {
    for (int y = rect.top; y < rect.bottom; ++y)
        std::fill_n(target.Row(y) + rect.left, static_cast<std::size_t>(rect.Width()), pixel);
}

void BlendColor(Surface& target, const CRect& rect, std::uint32_t color) {
    if (color >> 24 == 255) {
        FillPixels(target, rect, color);
        return;
    }
    for (int y = rect.top; y < rect.bottom; ++y)
        BlendColorRow(target.Row(y) + rect.left, color, static_cast<std::size_t>(rect.Width()));
}

void CopyPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top) {
    const std::size_t bytes = static_cast<std::size_t>(rect.Width()) * 4;
    const std::ptrdiff_t pitch = static_cast<std::ptrdiff_t>(bytes);
    if (target.Stride() == pitch && from.Stride() == pitch) {
        std::memcpy(target.Row(rect.top) + rect.left, from.Row(rect.top - top) + rect.left - left,
                    bytes * static_cast<std::size_t>(rect.Height()));
        return;
    }
    for (int y = rect.top; y < rect.bottom; ++y)
        std::memcpy(target.Row(y) + rect.left, from.Row(y - top) + rect.left - left, bytes);
}

void BlendPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top) {
    for (int y = rect.top; y < rect.bottom; ++y)
        BlendRow(target.Row(y) + rect.left, from.Row(y - top) + rect.left - left,
                 static_cast<std::size_t>(rect.Width()));
}

}  // namespace platform
