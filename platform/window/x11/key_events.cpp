// The keyboard and the focus.
#include <utility>

#include "platform/window/x11/virtual_keys.h"
#include "platform/window/x11/x11_window_system.h"

#include <platform/window.h>

namespace platform::x11 {

void X11WindowSystem::OnKey(const xcb_key_press_event_t& event, bool down) {
    const NativeWindow* window = FindById(event.event);
    if (!window && !drag_.IsInput(event.event)) return;
    const HWND handle = window ? window->handle : HWND();
    const std::uint64_t time = EventTime(event.time);
    const KeyStroke stroke = keyboard_.Translate(event.detail, event.state, down);
    EmbeddedSocket* const embedded = window ? sockets_.FocusedIn(handle) : nullptr;
    if (stroke.virtualKey == 0) {
        if (embedded) embedded->SendKey(event);
        return;
    }
    if (embedded) embedded->KeepKey(event, stroke.virtualKey, down);
    if (down && window) properties_.WriteUserTime(window->id, event.time);
    InputState state = ToInputState(event.state);
    // The event carries the state before it.
    if (stroke.virtualKey == VK_SHIFT) state.shift = down;
    if (stroke.virtualKey == VK_CONTROL) state.control = down;
    if (stroke.virtualKey == VK_MENU) state.alt = down;
    Report().Notify(event::Key{handle, stroke.virtualKey, down, stroke.text.empty() ? u'\0' : stroke.text[0],
                               state, time});
    // What does not fit into one unit follows as text without a key.
    for (std::size_t i = 1; i < stroke.text.size(); ++i) {
        Report().Notify(event::Key{handle, kTextOnlyKey, true, stroke.text[i], state, time});
        Report().Notify(event::Key{handle, kTextOnlyKey, false, 0, state, time});
    }
}

void X11WindowSystem::OnRawKey(const xcb_ge_generic_event_t& event) {
    const std::optional<RawKeys::Stroke> stroke = rawKeys_.Read(event);
    if (!stroke) return;
    Report().Notify(event::KeySeen{stroke->virtualKey, stroke->keyCode, stroke->down, rawKeys_.Held(),
                                   EventTime(stroke->time)});
}

void X11WindowSystem::OnFocus(const xcb_focus_in_event_t& event, bool focused) {
    NativeWindow* window = FindById(event.event);
    if (!window || event.event != window->id) return;
    if (window->keyTarget != 0) {
        // It keeps the focus when it gives it to its key target.
        if (!focused && event.detail == XCB_NOTIFY_DETAIL_INFERIOR) return;
        if (focused && event.detail <= XCB_NOTIFY_DETAIL_NONLINEAR)
            xcb_set_input_focus(connection_->Get(), XCB_INPUT_FOCUS_PARENT, window->keyTarget,
                                XCB_CURRENT_TIME);
    }
    keysFollow_ = focused;
    // A grab of the keyboard by a window manager borrows the focus and gives it back. The pointer's details
    // tell where keys go while nobody has the focus.
    if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB) return;
    if (event.detail >= XCB_NOTIFY_DETAIL_POINTER || window->focused == focused) return;
    window->focused = focused;
    if (focused) focused_ = window->handle;
    if (!focused && focused_ == window->handle) focused_ = HWND();
    if (!focused) keyboard_.ForgetPendingText();
    Report().Notify(event::FocusChanged{window->handle, focused});
}

void X11WindowSystem::OnKeymap(const xcb_keymap_notify_event_t& event) {
    // Comes behind every FocusIn, and behind the entering of the pointer, which tells nothing about keys.
    if (!std::exchange(keysFollow_, false)) return;
    keysMayBeDown_ = true;
    Report().Notify(event::KeysHeld{keyboard_.VirtualKeysOf(event)});
}

void X11WindowSystem::SettleFocus() {
    if (awaited_.window && Now() >= awaited_.due) {
        const NativeWindow* window = Find(std::exchange(awaited_.window, HWND()));
        if (window && !window->focused) {
            if (focused_ == window->handle) focused_ = HWND();
            Report().Notify(event::FocusChanged{window->handle, false});
        }
    }
    // With the focus the news of what goes up goes elsewhere.
    if (!focused_ && std::exchange(keysMayBeDown_, false)) Report().Notify(event::KeysHeld{KeySet()});
}

}  // namespace platform::x11
