// The text that a key makes on the plain keyboard of the headless user.
#pragma once

#include "platform/window/window_system.h"

namespace platform {

// 0 for a key without text.
char16_t TextOfKey(UINT virtualKey, const InputState& state);

}  // namespace platform
