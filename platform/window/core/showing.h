// Showing and hiding.
#pragma once

#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

enum class Activate { No, Yes };
// WM_SHOWWINDOW and all that follows; nothing when the window is in that state already.
void SetShown(const std::shared_ptr<Window>& window, bool shown, Activate activate);

}  // namespace platform
