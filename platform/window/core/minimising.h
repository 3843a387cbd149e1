// Top-levels that are put away.
#pragma once

#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

// Puts a top-level away, or brings it back.
void SetMinimised(const std::shared_ptr<Window>& window, bool minimised);
// The window is minimised or back; tells it and the core's other parts, not the window system.
void AcceptMinimised(const std::shared_ptr<Window>& window, bool minimised);

}  // namespace platform
