// The loops over pixels: premultiplied 0xAARRGGBB words. A row that is read may be the row that is written,
// but rows never overlap otherwise.
//
// A product of two 8-bit values is divided by 255 with rounding, exactly, as cairo's own loops do; so that a
// picture does not depend on which of the two drew it.
#pragma once

#include <cstddef>
#include <cstdint>

#include <platform/geometry.h>

#include "platform/graphics/surface.h"

namespace platform {

// a * b / 255, rounded.
constexpr std::uint32_t MultiplyChannels(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}
constexpr std::uint32_t Premultiply(std::uint32_t straight) {
    const std::uint32_t alpha = straight >> 24;
    return (alpha << 24) | (MultiplyChannels((straight >> 16) & 0xFF, alpha) << 16) |
           (MultiplyChannels((straight >> 8) & 0xFF, alpha) << 8) | MultiplyChannels(straight & 0xFF, alpha);
}
// The nearest straight colour. For every alpha, Premultiply gives back what Unpremultiply was given, as
// long as no channel is above alpha; channels that are count as 255. Alpha 0 gives 0.
std::uint32_t Unpremultiply(std::uint32_t premultiplied);

void PremultiplyRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count);
void UnpremultiplyRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count);
// Cuts every channel to its alpha: what is drawn from here on relies on it.
void ClampPremultipliedRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count);
// Sets the alpha of every pixel to 255 and leaves the rest.
void MakeOpaqueRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count);

// to = from over to.
void BlendRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count);
void BlendColorRow(std::uint32_t* to, std::uint32_t color, std::size_t count);
bool IsOpaqueRow(const std::uint32_t* row, std::size_t count);

// Over a rectangle that lies inside the surface. None of them calls Touch.
void FillPixels(Surface& target, const CRect& rect, std::uint32_t pixel);
void BlendColor(Surface& target, const CRect& rect, std::uint32_t color);
// `from` lies with its (0, 0) at (left, top) of the target.
void CopyPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top);
void BlendPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top);

}  // namespace platform
