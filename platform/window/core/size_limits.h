// What a window says of its own sizes.
#pragma once

#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

// What WM_GETMINMAXINFO answers. The sizes that its user may give the window are kept in the record, and told
// to the window system. The window may be gone afterwards.
MINMAXINFO AskSizes(const std::shared_ptr<Window>& window);
// The same, for windows whose user can size or maximise them.
void RefreshSizes(const std::shared_ptr<Window>& window);
MONITORINFO MonitorOf(const Window& window);

}  // namespace platform
