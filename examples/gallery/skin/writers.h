// Files out of canvases. Each throws std::runtime_error, naming the file, when it cannot be written.
#pragma once

#include <filesystem>
#include <span>

#include "examples/gallery/skin/canvas.h"

namespace skin {

void WritePng(const Canvas& picture, const std::filesystem::path& file);
// The alpha channel is ignored by these two: for opaque pictures.
void WriteJpeg(const Canvas& picture, const std::filesystem::path& file, int quality);
void WriteBmp(const Canvas& picture, const std::filesystem::path& file);
// Pictures up to 48 pixels are stored as bitmaps, larger ones as PNG, as readers of every age expect.
void WriteIco(std::span<const Canvas> pictures, const std::filesystem::path& file);

}  // namespace skin
