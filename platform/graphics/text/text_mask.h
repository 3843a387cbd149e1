// The 8-bit coverage of a laid-out text: what is painted with a colour.
#pragma once

#include "platform/graphics/text/text_cache.h"
#include "platform/graphics/text/text_layout.h"

namespace platform {

// A part of a text's ink, (part.left, part.top) of the text's box at (0, 0) of the surface. Parts of one text
// show the same pixels as the whole. Null without memory.
SurfacePtr RenderCoverage(const LaidText& text, const PixelBox& part);

}  // namespace platform
