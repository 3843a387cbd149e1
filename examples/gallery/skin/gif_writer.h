// Animated GIFs. Throws std::runtime_error, naming the file, when one cannot be written.
#pragma once

#include <filesystem>
#include <span>

#include "examples/gallery/skin/moving.h"

namespace skin {

// Each frame is stored as the part that it draws. Soft edges are mixed with `matte`.
void WriteGif(std::span<const MovingFrame> frames, Colour matte, const std::filesystem::path& file);

}  // namespace skin
