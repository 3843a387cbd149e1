// Maximising, and what a window says of its own sizes.
#pragma once

#include "platform/window/core/core.h"

namespace platform {

// What WM_GETMINMAXINFO answers. The sizes that its user may give the window are kept in the record, and told
// to the window system. The window may be gone afterwards.
MINMAXINFO AskSizes(const std::shared_ptr<Window>& window);
// The same, for windows whose user can size or maximise them.
void RefreshSizes(const std::shared_ptr<Window>& window);

// Fills the monitor with a top-level, or brings it back.
void SetMaximised(const std::shared_ptr<Window>& window, bool maximised);
// The outside maximised it, or brought it back.
void AcceptMaximised(Window& window, bool maximised);

}  // namespace platform
