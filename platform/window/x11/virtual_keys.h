// Key symbols of the X keyboard to virtual-key codes.
#pragma once

#include <platform/types.h>
#include <xkbcommon/xkbcommon.h>

namespace platform::x11 {

// The code of a key that is no letter, digit or other character of its own; or that of a character key in a
// Latin layout. Left and right modifiers are one key. 0 for a symbol without a code.
UINT VirtualKeyOf(xkb_keysym_t symbol);

// A key that only carries text: it has no code of its own.
constexpr UINT kTextOnlyKey = 0xE7;

}  // namespace platform::x11
