// What kind of picture some bytes hold, and whether the size that their header claims can be believed.
#pragma once

#include <cstdint>
#include <span>

namespace platform {

enum class PictureKind { Unknown, Png, Jpeg, Gif, Bmp, Icon, Tiff, WebP };

// By content alone: file names and resource types lie.
PictureKind RecognisePicture(std::span<const std::uint8_t> bytes);

// False for a size beyond the limits, and for a large one that so few bytes cannot encode however well they
// are packed: a hundred bytes that claim tens of megapixels would cost their reader the memory for them.
bool IsBelievableSize(PictureKind kind, std::int64_t width, std::int64_t height, std::size_t bytes);

}  // namespace platform
