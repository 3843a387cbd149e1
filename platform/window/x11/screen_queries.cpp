// Questions about the screen that only the server can answer.
#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

POINT X11WindowSystem::PointerPosition() {
    if (!connection_->IsAlive()) return {0, 0};
    xcb_connection_t* c = connection_->Get();
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, connection_->Root()), nullptr));
    return reply ? POINT{reply->root_x, reply->root_y} : POINT{0, 0};
}

HWND X11WindowSystem::WindowAt(POINT screen) {
    if (!connection_->IsAlive()) return {};
    xcb_connection_t* c = connection_->Get();
    const xcb_window_t root = connection_->Root();
    // Down from the root, as the server itself looks for the window under the pointer: it honours both
    // shapes. Between the root and ours there may be frames.
    constexpr int kDeepest = 16;
    xcb_window_t current = root;
    for (int depth = 0; depth < kDeepest; ++depth) {
        const auto cookie = xcb_translate_coordinates(c, root, current, ToX(screen.x), ToX(screen.y));
        const Reply<xcb_translate_coordinates_reply_t> reply(
            xcb_translate_coordinates_reply(c, cookie, nullptr));
        if (!reply || reply->child == XCB_WINDOW_NONE) return {};
        current = reply->child;
        if (const NativeWindow* window = FindById(current)) return window->handle;
    }
    return {};
}

}  // namespace platform::x11
