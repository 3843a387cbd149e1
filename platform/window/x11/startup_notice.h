// Startup notification: who launched the program shows that it is starting until its first window appears.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"

namespace platform::x11 {

class StartupNotice {
  public:
    // Takes the identifier that the launcher left in DESKTOP_STARTUP_ID out of the environment, so that
    // programs started from here do not take it for theirs. `leader` sends the notice.
    StartupNotice(std::shared_ptr<Connection> connection, xcb_window_t leader);

    // The server's time of the user's act that launched the program, until the first window has appeared.
    std::optional<xcb_timestamp_t> LaunchTime() const;
    // The first window to be shown bears the identifier.
    void Mark(xcb_window_t window);
    // A window has appeared: the launcher need not wait any more.
    void Complete();

  private:
    void Broadcast(const std::string& message);

    std::shared_ptr<Connection> connection_;
    xcb_window_t leader_;
    std::string id_;  // empty: nobody waits
};

}  // namespace platform::x11
