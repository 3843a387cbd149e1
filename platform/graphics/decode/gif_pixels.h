// One frame of an animated picture, unpacked.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/graphics/decode/gif_index.h"

namespace platform {

struct GifPixels {
    std::vector<std::uint8_t> indices;  // width x height of the frame, rows from the top
    // Premultiplied; the transparent index is 0, indices beyond the table are opaque black.
    std::array<std::uint32_t, 256> colours;
};

// Nothing when the data is damaged or has no colours. `screenEnd` as in GifIndex.
std::optional<GifPixels> UnpackGifFrame(std::span<const std::uint8_t> bytes, std::size_t screenEnd,
                                        const GifFrame& frame);

}  // namespace platform
