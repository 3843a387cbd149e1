#include "platform/window/x11/pointer_grab.h"

#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

constexpr std::uint16_t kGrabEvents = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                      XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW |
                                      XCB_EVENT_MASK_LEAVE_WINDOW;

}  // namespace

bool PointerGrab::Take(HWND window, xcb_window_t id) {
    xcb_connection_t* c = connection_->Get();
    const auto cookie = xcb_grab_pointer(c, 0, id, kGrabEvents, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(c, cookie, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) return false;
    holder_ = window;
    return true;
}

void PointerGrab::Release() {
    awaiting_ = HWND();
    if (!std::exchange(holder_, HWND()) || !connection_->IsAlive()) return;
    xcb_ungrab_pointer(connection_->Get(), XCB_CURRENT_TIME);
    connection_->Flush();
}

}  // namespace platform::x11
