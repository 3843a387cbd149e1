// The keyboard and the focus.
#include "platform/window/x11/virtual_keys.h"
#include "platform/window/x11/x11_window_system.h"

#include <platform/window.h>

namespace platform::x11 {

void X11WindowSystem::OnKey(const xcb_key_press_event_t& event, bool down) {
    const NativeWindow* window = FindById(event.event);
    if (!window) return;
    const HWND handle = window->handle;
    const std::uint64_t time = EventTime(event.time);
    const KeyStroke stroke = keyboard_.Translate(event.detail, event.state, down);
    if (stroke.virtualKey == 0) return;
    if (down) properties_.WriteUserTime(window->id, event.time);
    InputState state = ToInputState(event.state);
    // The event carries the state before it.
    if (stroke.virtualKey == VK_SHIFT) state.shift = down;
    if (stroke.virtualKey == VK_CONTROL) state.control = down;
    if (stroke.virtualKey == VK_MENU) state.alt = down;
    Report().Key(handle, stroke.virtualKey, down, stroke.text.empty() ? u'\0' : stroke.text[0], state, time);
    // What does not fit into one unit follows as text without a key.
    for (std::size_t i = 1; i < stroke.text.size(); ++i) {
        Report().Key(handle, kTextOnlyKey, true, stroke.text[i], state, time);
        Report().Key(handle, kTextOnlyKey, false, 0, state, time);
    }
}

void X11WindowSystem::OnFocus(const xcb_focus_in_event_t& event, bool focused) {
    NativeWindow* window = FindById(event.event);
    if (!window) return;
    // A grab of the keyboard by a window manager borrows the focus and gives it back. The pointer's details
    // tell where keys go while nobody has the focus.
    if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB) return;
    if (event.detail >= XCB_NOTIFY_DETAIL_POINTER || window->focused == focused) return;
    window->focused = focused;
    Report().FocusChanged(window->handle, focused);
}

}  // namespace platform::x11
