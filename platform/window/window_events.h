// What a window system reports.
#pragma once

#include <bitset>
#include <cstdint>
#include <variant>

#include <platform/geometry.h>
#include <platform/ole.h>
#include <platform/types.h>

#include "platform/graphics/region.h"
#include "platform/window/file_drop.h"

namespace platform {

using KeySet = std::bitset<256>;  // by virtual key

// Modifier and button state that accompanies pointer and key events.
struct InputState {
    bool shift = false, control = false, alt = false;
    bool left = false, middle = false, right = false;
    friend bool operator==(const InputState&, const InputState&) = default;
};

// `window` is the top-level concerned; its handle may be stale by then. Times are milliseconds of the window
// system's clock.
namespace event {

struct Pointer {
    enum Kind { Moved, Button, Wheel };
    Kind kind = Moved;
    HWND window;  // empty over none of ours (only while the pointer is captured or watched)
    POINT screen{0, 0};
    InputState state;
    std::uint64_t time = 0;
    int button = 0;     // 1 left, 2 middle, 3 right
    bool down = false;  // the button
    int delta = 0;      // of the wheel
};
struct PointerLeft {
    HWND window;
};
struct Key {
    HWND window;
    UINT virtualKey = 0;
    bool down = false;       // repeats come as further downs
    char16_t character = 0;  // the UTF-16 text of the key, or 0
    InputState state;
    std::uint64_t time = 0;
};
// All the keys that are down, after a time in which the keyboard was somebody else's; none when that begins.
struct KeysHeld {
    KeySet keys;
};
// While the keyboard is watched: any key, whoever has the keyboard.
struct KeySeen {
    UINT virtualKey = 0;
    UINT scanCode = 0;  // the window system's own number of the key
    bool down = false;
    KeySet held;  // after it
    std::uint64_t time = 0;
};
struct FocusChanged {
    HWND window;
    bool focused = false;
};
// Moved or sized by the outside.
struct BoundsChanged {
    HWND window;
    CRect screen;
};
// The display lost these pixels of the surface.
struct Exposed {
    HWND window;
    Region region;
};
struct MinimisedChanged {
    HWND window;
    bool minimised = false;
};
// A window manager has maximised the window, or no longer does. Its new bounds are reported besides.
struct MaximisedChanged {
    HWND window;
    bool maximised = false;
};
struct CloseRequested {
    HWND window;
};
struct GrabLost {
    HWND window;
};
// Somebody else destroyed the native window.
struct SystemDestroyed {
    HWND window;
};
// The window lies on the screen again: the other program's window that it was put into is gone.
struct PutOut {
    HWND window;
};
struct FilesDropped {
    HWND window;
    FileDrop drop;
};
// For good. No further call of the window system does anything.
struct ConnectionLost {};

}  // namespace event

using WindowEvent =
    std::variant<event::Pointer, event::PointerLeft, event::Key, event::KeysHeld, event::KeySeen,
                 event::FocusChanged, event::BoundsChanged, event::Exposed, event::MinimisedChanged,
                 event::MaximisedChanged, event::CloseRequested, event::GrabLost, event::SystemDestroyed,
                 event::PutOut, event::FilesDropped, event::ConnectionLost>;

// For std::visit: one function for each kind.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;  // clang 14 does not find it by itself

// Where a window system reports events: the core.
class WindowEvents {
  public:
    virtual ~WindowEvents() = default;
    virtual void Notify(WindowEvent happened) = 0;
    // Files are held over a window: what would be done with them there, of what is wanted. A question that is
    // answered at once, and that nobody hears of.
    virtual DROPEFFECT FilesOver(HWND /*window*/, POINT /*screen*/, DROPEFFECT /*wanted*/) {
        return DROPEFFECT_NONE;
    }
};

}  // namespace platform
