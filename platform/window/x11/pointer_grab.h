// The pointer held for one of our windows, wherever it goes.
#pragma once

#include <memory>
#include <utility>

#include <platform/types.h>
#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"

namespace platform::x11 {

class PointerGrab {
  public:
    explicit PointerGrab(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

    // False when another client has it.
    bool Take(HWND window, xcb_window_t id);
    void Release();
    bool IsHeld() const { return static_cast<bool>(holder_); }
    bool IsHeldFor(HWND window) const { return holder_ == window; }
    // The server takes it from a window that goes off the screen, without a word. False when it was not for
    // that window.
    bool Lose(HWND window) { return Clear(holder_, window); }

    // The server grants it to a window on the screen only: it is taken once the window is there.
    void Await(HWND window) { awaiting_ = window; }
    // Whether it waited for that window; it no longer does.
    bool EndWait(HWND window) { return Clear(awaiting_, window); }

  private:
    static bool Clear(HWND& holder, HWND window) {
        if (!(holder == window)) return false;
        holder = HWND();
        return true;
    }

    std::shared_ptr<Connection> connection_;
    HWND holder_, awaiting_;
};

}  // namespace platform::x11
