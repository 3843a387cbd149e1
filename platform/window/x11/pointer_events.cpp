// The pointer: motion, buttons, entering and leaving, grabs.
#include <utility>

#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

constexpr int kWheelNotch = 120;
constexpr std::uint64_t kBorrowedTime = 80;  // milliseconds

std::uint16_t MaskOfButton(int button) {
    return static_cast<std::uint16_t>(XCB_BUTTON_MASK_1 << (button - 1));
}

template <class Event>
CPoint OriginOf(const Event& event) {
    return CPoint(event.root_x - event.event_x, event.root_y - event.event_y);
}

// Whether the pointer only changes between a window and one inside of it. A window of another library, which
// has the pointer to itself, does not count as inside.
bool StaysInside(const NativeWindow& window, std::uint8_t detail) {
    return detail == XCB_NOTIFY_DETAIL_INFERIOR && window.keyTarget == 0;
}

}  // namespace

InputState ToInputState(std::uint16_t state) {
    InputState result;
    result.shift = (state & XCB_MOD_MASK_SHIFT) != 0;
    result.control = (state & XCB_MOD_MASK_CONTROL) != 0;
    result.alt = (state & XCB_MOD_MASK_1) != 0;
    result.left = (state & XCB_BUTTON_MASK_1) != 0;
    result.middle = (state & XCB_BUTTON_MASK_2) != 0;
    result.right = (state & XCB_BUTTON_MASK_3) != 0;
    return result;
}

void X11WindowSystem::OnMotion(const xcb_motion_notify_event_t& event) {
    NativeWindow* window = FindById(event.event);
    if (!window && !drag_.IsInput(event.event)) return;
    if (window) BelieveOrigin(*window, OriginOf(event), false);
    const POINT screen{event.root_x, event.root_y};
    const HWND target = window ? window->handle : HWND();
    // While a button is held the server ties the pointer to the window of the press, also outside it.
    Report().Notify(event::Pointer{event::Pointer::Moved, target, screen, ToInputState(event.state),
                                   EventTime(event.time)});
}

void X11WindowSystem::OnButton(const xcb_button_press_event_t& event, bool down) {
    NativeWindow* window = FindById(event.event);
    if (!window && !drag_.IsInput(event.event)) return;
    if (window) BelieveOrigin(*window, OriginOf(event), down);
    const std::uint64_t time = EventTime(event.time);
    const POINT screen{event.root_x, event.root_y};
    const HWND target = window ? window->handle : HWND();
    const int button = event.detail;
    if (button == 4 || button == 5) {
        const int delta = button == 4 ? kWheelNotch : -kWheelNotch;
        if (down)
            Report().Notify(event::Pointer{event::Pointer::Wheel, target, screen, ToInputState(event.state),
                                           time, 0, false, delta});
        return;
    }
    if (button < 1 || button > 3) return;
    if (down && window) properties_.WriteUserTime(window->id, event.time);
    // The event carries the state before it.
    const std::uint16_t mask = MaskOfButton(button);
    const int state = down ? event.state | mask : event.state & ~mask;
    Report().Notify(event::Pointer{event::Pointer::Button, target, screen,
                                   ToInputState(static_cast<std::uint16_t>(state)), time, button, down});
}

void X11WindowSystem::OnEnter(const xcb_enter_notify_event_t& event) {
    NativeWindow* window = FindById(event.event);
    if (!window || StaysInside(*window, event.detail)) return;
    const POINT screen{event.root_x, event.root_y};
    // A grab enters its window wherever the pointer is.
    const CRect extent(CPoint(0, 0), window->placement.rect.Size());
    if (event.mode == XCB_NOTIFY_MODE_GRAB && !extent.PtInRect({event.event_x, event.event_y})) return;
    window->inside = true;
    if (leaving_.window == window->handle) leaving_.window = HWND();
    BelieveOrigin(*window, OriginOf(event), false);
    Report().Notify(event::Pointer{event::Pointer::Moved, window->handle, screen, ToInputState(event.state),
                                   EventTime(event.time)});
}

void X11WindowSystem::OnLeave(const xcb_leave_notify_event_t& event) {
    NativeWindow* window = FindById(event.event);
    if (!window || StaysInside(*window, event.detail)) return;
    // A window manager takes the pointer for every click on a window that is not active, and gives it back at
    // once: nothing has to go dark for that. A grab by another window of ours keeps it.
    if (event.mode == XCB_NOTIFY_MODE_GRAB && !grab_.IsHeld() && window->inside) {
        leaving_ = {window->handle, Now() + kBorrowedTime};
    } else if (event.mode != XCB_NOTIFY_MODE_GRAB || !grab_.IsHeldFor(window->handle)) {
        PointerGone(*window);
    }
}

void X11WindowSystem::PointerGone(NativeWindow& window) {
    if (leaving_.window == window.handle) leaving_.window = HWND();
    if (std::exchange(window.inside, false)) Report().Notify(event::PointerLeft{window.handle});
}

void X11WindowSystem::SettleLeaving() {
    if (!leaving_.window || Now() < leaving_.due) return;
    if (NativeWindow* window = Find(std::exchange(leaving_.window, HWND()))) PointerGone(*window);
}

bool X11WindowSystem::GrabPointer(HWND handle) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0 || !(window->mapRequested || window->mapWhenWithdrawn)) return false;
    if (window->mapped) return grab_.Take(handle, window->id);
    grab_.Await(handle);
    return true;
}

void X11WindowSystem::LoseGrab(HWND window) {
    if (grab_.Lose(window)) Report().Notify(event::GrabLost{window});
}

void X11WindowSystem::SetCursor(HWND handle, CursorShape shape) {
    NativeWindow* window = Find(handle);
    if (!window || window->cursor == shape) return;
    window->cursor = shape;
    if (window->id == 0) return;
    const std::uint32_t cursor = cursors_.Get(shape);
    xcb_change_window_attributes(connection_->Get(), window->id, XCB_CW_CURSOR, &cursor);
    connection_->Flush();
}

}  // namespace platform::x11
