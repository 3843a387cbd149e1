// Device contexts on windows.
#pragma once

#include <memory>

#include <platform/types.h>

#include "platform/graphics/surface.h"

namespace platform {

// Deletes every device context still out on a window, or on any.
void DropContexts(HWND window);
void DropAllContexts();
// One pixel, for contexts without a surface.
std::shared_ptr<Surface> NullSurface();
// Those of before are gone already.
void ResetContexts();

}  // namespace platform
