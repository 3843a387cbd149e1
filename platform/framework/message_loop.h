// One step of a message loop.
#pragma once

#include <platform/window.h>

namespace platform {

// Filters a message through the PreTranslateMessage of its windows, translates and dispatches it.
void DeliverMessage(MSG& message);

}  // namespace platform
