// Resizable frames of nine images: corners at their own size, edges stretched along the sides, a centre.
#pragma once

#include <platform/gdiplus.h>

namespace qkui {

class OperationSink;

// Row by row from the top left: three of the top, three of the middle, three of the bottom. Any may be null.
using QKNineImages = Gdiplus::Image* [9];

// The pieces of a frame around `rect`. The centre starts at the right edge's width from the left and shows
// the right edge's height of its image, for frames that are the same on both sides it is the middle; without
// a right edge it shows its own height.
PLATFORM_API void RecordNinePatch(Gdiplus::Image* const* images, const Gdiplus::RectF& rect,
                                  OperationSink& pieces);

}  // namespace qkui
