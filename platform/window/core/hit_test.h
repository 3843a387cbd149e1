// Which window takes the pointer at a point.
#pragma once

#include <platform/types.h>

namespace platform {

// From a top-level down: the deepest window that takes the pointer there; children that are disabled count.
// Empty when all let it through, also those under the top-level.
HWND HitTopLevel(HWND topLevel, POINT screen, int* hit);
// From the topmost window there.
HWND FindPointerTarget(POINT screen, int* hit);

}  // namespace platform
