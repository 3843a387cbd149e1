// The window manager and the compositor of the screen: whether they are there, and messages to the former.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"

namespace platform::x11 {

class WindowManager {
  public:
    explicit WindowManager(std::shared_ptr<Connection> connection);

    // Whether a window manager that speaks EWMH runs. Without one nobody places, focuses or minimises
    // windows but we ourselves.
    bool IsPresent() const { return check_ != 0; }
    // Whether it marks minimised windows (_NET_WM_STATE_HIDDEN), which tells them from those on another
    // workspace.
    bool MarksMinimised() const { return marksMinimised_; }
    bool IsCompositing() const { return compositing_; }

    // Looks again. True when the answer has changed.
    bool Refresh();
    void ReadSupported();
    void CompositorOwner(xcb_window_t owner) { compositing_ = owner != XCB_WINDOW_NONE; }
    // Whether the window is the one by which the window manager shows that it lives.
    bool IsCheckWindow(xcb_window_t window) const { return window != 0 && window == check_; }

    // Sends a client message about `window` to whoever manages the root.
    void Send(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data);

  private:
    xcb_window_t CheckOf(xcb_window_t window) const;

    std::shared_ptr<Connection> connection_;
    xcb_window_t check_ = 0;
    bool marksMinimised_ = false;
    bool compositing_ = false;
};

}  // namespace platform::x11
