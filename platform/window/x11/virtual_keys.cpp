#include "platform/window/x11/virtual_keys.h"

#include <algorithm>
#include <array>

#include <platform/window.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace platform::x11 {

namespace {

struct NamedKey {
    xkb_keysym_t symbol;
    UINT code;
};

// Codes without a name in the public headers are those that hosts of this API know by number.
constexpr NamedKey kNamedKeys[] = {
    {XKB_KEY_BackSpace, VK_BACK},
    {XKB_KEY_Tab, VK_TAB},
    {XKB_KEY_ISO_Left_Tab, VK_TAB},
    {XKB_KEY_KP_Tab, VK_TAB},
    {XKB_KEY_Clear, 0x0C},
    {XKB_KEY_Return, VK_RETURN},
    {XKB_KEY_KP_Enter, VK_RETURN},
    {XKB_KEY_Shift_L, VK_SHIFT},
    {XKB_KEY_Shift_R, VK_SHIFT},
    {XKB_KEY_Control_L, VK_CONTROL},
    {XKB_KEY_Control_R, VK_CONTROL},
    {XKB_KEY_Alt_L, VK_MENU},
    {XKB_KEY_Alt_R, VK_MENU},
    {XKB_KEY_Meta_L, VK_MENU},
    {XKB_KEY_Meta_R, VK_MENU},
    {XKB_KEY_ISO_Level3_Shift, VK_MENU},
    {XKB_KEY_Pause, 0x13},
    {XKB_KEY_Break, 0x03},
    {XKB_KEY_Caps_Lock, VK_CAPITAL},
    {XKB_KEY_Escape, VK_ESCAPE},
    {XKB_KEY_space, VK_SPACE},
    {XKB_KEY_KP_Space, VK_SPACE},
    {XKB_KEY_Prior, VK_PRIOR},
    {XKB_KEY_KP_Prior, VK_PRIOR},
    {XKB_KEY_Next, VK_NEXT},
    {XKB_KEY_KP_Next, VK_NEXT},
    {XKB_KEY_End, VK_END},
    {XKB_KEY_KP_End, VK_END},
    {XKB_KEY_Home, VK_HOME},
    {XKB_KEY_KP_Home, VK_HOME},
    {XKB_KEY_Left, VK_LEFT},
    {XKB_KEY_KP_Left, VK_LEFT},
    {XKB_KEY_Up, VK_UP},
    {XKB_KEY_KP_Up, VK_UP},
    {XKB_KEY_Right, VK_RIGHT},
    {XKB_KEY_KP_Right, VK_RIGHT},
    {XKB_KEY_Down, VK_DOWN},
    {XKB_KEY_KP_Down, VK_DOWN},
    {XKB_KEY_KP_Begin, 0x0C},
    {XKB_KEY_Select, 0x29},
    {XKB_KEY_Execute, 0x2B},
    {XKB_KEY_Print, 0x2C},
    {XKB_KEY_Sys_Req, 0x2C},
    {XKB_KEY_Insert, VK_INSERT},
    {XKB_KEY_KP_Insert, VK_INSERT},
    {XKB_KEY_Delete, VK_DELETE},
    {XKB_KEY_KP_Delete, VK_DELETE},
    {XKB_KEY_Help, 0x2F},
    {XKB_KEY_Super_L, VK_LWIN},
    {XKB_KEY_Super_R, VK_RWIN},
    {XKB_KEY_Menu, 0x5D},
    {XKB_KEY_KP_Multiply, 0x6A},
    {XKB_KEY_KP_Add, 0x6B},
    {XKB_KEY_KP_Separator, 0x6C},
    {XKB_KEY_KP_Subtract, 0x6D},
    {XKB_KEY_KP_Decimal, 0x6E},
    {XKB_KEY_KP_Divide, 0x6F},
    {XKB_KEY_Num_Lock, 0x90},
    {XKB_KEY_Scroll_Lock, 0x91},
    {XKB_KEY_semicolon, 0xBA},
    {XKB_KEY_equal, 0xBB},
    {XKB_KEY_plus, 0xBB},
    {XKB_KEY_comma, 0xBC},
    {XKB_KEY_minus, 0xBD},
    {XKB_KEY_period, 0xBE},
    {XKB_KEY_slash, 0xBF},
    {XKB_KEY_grave, 0xC0},
    {XKB_KEY_bracketleft, 0xDB},
    {XKB_KEY_backslash, 0xDC},
    {XKB_KEY_bracketright, 0xDD},
    {XKB_KEY_apostrophe, 0xDE},
    {XKB_KEY_less, 0xE2},
};

struct KeyRange {
    xkb_keysym_t first, last;
    UINT code;
};
constexpr KeyRange kRanges[] = {
    {XKB_KEY_0, XKB_KEY_9, '0'},        {XKB_KEY_a, XKB_KEY_z, 'A'},      {XKB_KEY_A, XKB_KEY_Z, 'A'},
    {XKB_KEY_KP_0, XKB_KEY_KP_9, 0x60}, {XKB_KEY_F1, XKB_KEY_F24, VK_F1},
};

// Symbols without a fixed order, sorted once for a binary search.
const auto& SortedKeys() {
    static const auto sorted = [] {
        auto keys = std::to_array(kNamedKeys);
        std::sort(keys.begin(), keys.end(),
                  [](const NamedKey& a, const NamedKey& b) { return a.symbol < b.symbol; });
        return keys;
    }();
    return sorted;
}

}  // namespace

UINT VirtualKeyOf(xkb_keysym_t symbol) {
    for (const KeyRange& range : kRanges)
        if (symbol >= range.first && symbol <= range.last) return range.code + (symbol - range.first);
    const auto& keys = SortedKeys();
    const auto found = std::lower_bound(keys.begin(), keys.end(), symbol,
                                        [](const NamedKey& key, xkb_keysym_t s) { return key.symbol < s; });
    return found != keys.end() && found->symbol == symbol ? found->code : 0;
}

}  // namespace platform::x11
