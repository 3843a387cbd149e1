// Resizable frames of nine images: corners at their own size, edges stretched along the sides, a centre.
#pragma once

#include <platform/gdiplus.h>

namespace qkui {

class OperationSink;

// The operations of a frame around `rect` of nine images, row by row from the top left: three of the top,
// three of the middle, three of the bottom; any may be null. The centre starts at the right edge's width from
// the left and shows the right edge's height of its image, for frames that are the same on both sides it is
// the middle; without a right edge it shows its own height.
PLATFORM_API void RecordNinePatch(Gdiplus::Image* const* images, const Gdiplus::RectF& rect,
                                  OperationSink& sink);

}  // namespace qkui
