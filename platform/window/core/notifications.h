// What the lower parts of the core tell those above, which they know nothing of. Answered where all parts are
// held together (core.cpp).
#pragma once

#include "platform/window/window_events.h"

namespace platform {

// Where the window system's events go.
WindowEvents& EventSink();
void SystemChosen();
// No further call reaches it.
void SystemLost();
void SystemGone();
// A thread is to own the windows: the first one, or after one that has none any more.
void OwnerChanges();
// The thread that owns the windows ends: they go without a message.
void OwnerEnds();

}  // namespace platform
