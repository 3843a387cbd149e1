// The text that a key makes on the plain keyboard of the headless user.
#pragma once

#include "platform/window/window_system.h"

namespace platform {

// 0 for a key without text.
char16_t TextOfKey(UINT virtualKey, const InputState& state);

// How a unit of text is typed. What the plain keyboard lacks comes from VK_PACKET.
struct KeyStroke {
    UINT virtualKey;
    bool shift;
    char16_t text;
};
KeyStroke KeyForText(char16_t unit);

}  // namespace platform
