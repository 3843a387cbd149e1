// The window that a file manager or shell puts behind all others, under the names that a search looks for.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <platform/geometry.h>
#include <xcb/xcb.h>

#include "platform/window/foreign_windows.h"
#include "platform/window/x11/connection.h"

namespace platform::x11 {

// A program may have a desktop window for each monitor; they are presented as one. Every call asks the
// server: windows of others come and go.
class DesktopWindows {
  public:
    explicit DesktopWindows(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

    // All there are, those that can be seen first.
    std::vector<xcb_window_t> FindAll() const;

    // As in ForeignWindows.
    std::vector<ForeignWindow> In(ForeignId parent);
    bool Exists(ForeignId window);
    bool IsShown(ForeignId window);
    void SetShown(ForeignId window, bool shown);

    struct Host {
        xcb_window_t id = 0;
        CRect rect;  // on the screen
    };
    // The native window that a rectangle of the screen lies in most.
    std::optional<Host> HostFor(ForeignId window, const CRect& rect);
    std::optional<Host> Look(xcb_window_t window) const;
    // Its destruction was reported: its id may come again for another.
    void Forget(xcb_window_t window);

  private:
    // The desktop of a program is known by the first of its windows that was found.
    struct Known {
        xcb_window_t window = 0;
        std::uint64_t serial = 0;
    };
    enum class Role { Desktop, View, Icons };

    // Those of one program.
    std::vector<xcb_window_t> Group(xcb_window_t window) const;
    std::optional<xcb_window_t> WindowOf(ForeignId window) const;
    // The window inside a desktop window that its icons lie in; 0 when it draws them itself.
    xcb_window_t IconsOf(xcb_window_t desktop) const;
    ForeignId IdOf(xcb_window_t desktop);
    bool IsOfProgram(xcb_window_t window, xcb_window_t other) const;

    std::shared_ptr<Connection> connection_;
    std::vector<Known> known_;
    std::uint64_t lastSerial_ = 0;
};

}  // namespace platform::x11
