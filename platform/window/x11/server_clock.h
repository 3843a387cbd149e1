// The window system's clock, and the server's event times on it.
#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace platform::x11 {

// Milliseconds that never run back.
std::uint64_t MonotonicMilliseconds();

// Server times are milliseconds in 32 bits since the server's own start: they wrap after 49 days. The offset
// between the clocks is the smallest ever seen, that of the event that came through fastest.
class ServerClock {
  public:
    // The time of an event that arrives at `now`, on our clock; never later than `now`.
    std::uint64_t ToLocal(xcb_timestamp_t time, std::uint64_t now);
    // The server's time of the latest event; 0 (which the protocol reads as "now") before the first.
    xcb_timestamp_t Latest() const { return started_ ? static_cast<xcb_timestamp_t>(latest_) : 0; }

  private:
    bool started_ = false;
    std::int64_t latest_ = 0;  // server time without its wrap
    std::int64_t offset_ = 0;  // ours minus the server's
};

}  // namespace platform::x11
