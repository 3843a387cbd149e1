// Who takes what is dropped at a point of the screen.
#pragma once

#include <cstdint>

#include <platform/types.h>
#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"
#include "platform/window/x11/drag/xdnd.h"

namespace platform::x11 {

struct DragTarget {
    xcb_window_t window = 0;    // 0: nobody
    xcb_window_t receiver = 0;  // of the messages: the window itself, or another that speaks for it
    std::uint32_t version = 0;  // of the protocol, that both know
    explicit operator bool() const { return window != 0; }
    friend bool operator==(const DragTarget&, const DragTarget&) = default;
};

DragTarget FindDragTarget(const Connection& connection, const XdndAtoms& atoms, POINT screen);

}  // namespace platform::x11
