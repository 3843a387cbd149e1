// The core's end of what a window system reports.
#pragma once

#include "platform/window/core/core.h"

namespace platform {

// Handles an event that is no input, when its turn has come.
void HandleEvent(const WindowEvent& happened);

}  // namespace platform
