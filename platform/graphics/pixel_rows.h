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
// Bytes 0 and 2 of `pair`, each times `factor` / 255.
constexpr std::uint32_t ScalePair(std::uint32_t pair, std::uint32_t factor) {
    const std::uint32_t product = pair * factor + 0x00800080;
    return ((product + ((product >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF;
}
// Every channel times `factor` / 255.
constexpr std::uint32_t ScalePixel(std::uint32_t pixel, std::uint32_t factor) {
    return ScalePair(pixel & 0x00FF00FF, factor) | (ScalePair((pixel >> 8) & 0x00FF00FF, factor) << 8);
}
constexpr std::uint32_t Premultiply(std::uint32_t straight) {
    const std::uint32_t alpha = straight >> 24;
    return (alpha << 24) | ScalePixel(straight & 0x00FFFFFF, alpha);
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
// to = the colour over to, as far as each pixel is covered.
void BlendCoverageRow(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage,
                      std::size_t count);
bool IsOpaqueRow(const std::uint32_t* row, std::size_t count);

// Over a rectangle that lies inside the surface. None of them calls Touch.
void FillPixels(Surface& target, const CRect& rect, std::uint32_t pixel);
void BlendColor(Surface& target, const CRect& rect, std::uint32_t color);
// `from` lies with its (0, 0) at (left, top) of the target.
void CopyPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top);
void BlendPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top);

}  // namespace platform
