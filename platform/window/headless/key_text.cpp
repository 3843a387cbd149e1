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

KeyStroke KeyForText(char16_t unit) {
    switch (unit) {
        case u'\n':
            return {VK_RETURN, false, u'\r'};
        case VK_BACK:
        case VK_TAB:
        case VK_RETURN:
        case VK_ESCAPE:
        case VK_SPACE:
            return {unit, false, unit};
        default:
            break;
    }
    const bool small = unit >= u'a' && unit <= u'z';
    const bool capital = unit >= u'A' && unit <= u'Z';
    if (small || capital) return {small ? UINT{unit} - 'a' + 'A' : UINT{unit}, capital, unit};
    if (unit >= u'0' && unit <= u'9') return {unit, false, unit};
    return {VK_PACKET, false, unit};
}

}  // namespace platform
