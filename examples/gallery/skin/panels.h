// Windows that are not rectangles: a glass panel with an alpha channel, a medal with a hard edge.
#pragma once

#include "examples/gallery/skin/canvas.h"

namespace skin {

Canvas GlassPanel();
// Opaque everywhere; everything outside the medal is palette::kColourKey, nothing inside it is.
Canvas KeyedMedal();

}  // namespace skin
