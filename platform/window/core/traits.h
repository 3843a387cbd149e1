// What the window system must know of a top-level besides pixels.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// Works it out, and tells the window system when it changed.
void UpdateTraits(Window& topLevel);
void UpdateTraitsOfOwned(const Window& owner);

}  // namespace platform
