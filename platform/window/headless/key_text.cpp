#include "platform/window/headless/key_text.h"

#include <platform/window.h>

namespace platform {

char16_t TextOfKey(UINT virtualKey, const InputState& state) {
    switch (virtualKey) {
        case VK_BACK:
        case VK_TAB:
        case VK_RETURN:
        case VK_ESCAPE:
        case VK_SPACE:
            return static_cast<char16_t>(virtualKey);
        default:
            break;
    }
    if (virtualKey >= 'A' && virtualKey <= 'Z') {
        if (state.control) return static_cast<char16_t>(virtualKey - 'A' + 1);
        return static_cast<char16_t>(state.shift ? virtualKey : virtualKey - 'A' + 'a');
    }
    if (virtualKey >= '0' && virtualKey <= '9' && !state.shift && !state.control)
        return static_cast<char16_t>(virtualKey);
    return 0;
}

}  // namespace platform
