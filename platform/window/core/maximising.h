// Top-levels that fill their monitor.
#pragma once

#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

// Fills the monitor with a top-level, or brings it back.
void SetMaximised(const std::shared_ptr<Window>& window, bool maximised);
// The outside maximised it, or brought it back.
void AcceptMaximised(Window& window, bool maximised);

}  // namespace platform
