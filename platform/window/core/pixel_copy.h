// Copying pixels and noting which of them changed.
#pragma once

#include <platform/geometry.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"

namespace platform {

// Row y of `to` becomes row y + sourceOrigin.y of `from`, transparent outside of it; within a part of `to`.
// Returns what differed: a few boxes of neighbouring rows.
Region CopyPixels(Surface& to, const Surface& from, POINT sourceOrigin, const CRect& part);

}  // namespace platform
