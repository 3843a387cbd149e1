// Files dragged out of the program: the core's own modal loop.
#pragma once

#include "platform/window/core/core.h"

namespace platform {

// Gives an input event to the drag. True when the drag took it: while one runs, no window gets any input.
bool FeedFileDrag(const event::Pointer& event);
bool FeedFileDrag(const event::Key& event);

}  // namespace platform
