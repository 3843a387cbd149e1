// Events of the window system that are no input, when their turn has come.
#pragma once

#include "platform/window/window_events.h"

namespace platform {

void HandleEvent(const WindowEvent& happened);

}  // namespace platform
