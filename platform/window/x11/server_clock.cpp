#include "platform/window/x11/server_clock.h"

#include <algorithm>
#include <chrono>

namespace platform::x11 {

std::uint64_t MonotonicMilliseconds() {
    using namespace std::chrono;
    return static_cast<std::uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

std::uint64_t ServerClock::ToLocal(xcb_timestamp_t time, std::uint64_t now) {
    if (time == XCB_CURRENT_TIME) return now;
    const std::int64_t here = static_cast<std::int64_t>(now);
    if (!started_) {
        started_ = true;
        latest_ = time;
        offset_ = here - latest_;
    }
    // The step from the latest time is small either way, so its 32 bits tell which it is.
    const std::int32_t step = static_cast<std::int32_t>(time - static_cast<std::uint32_t>(latest_));
    const std::int64_t unwrapped = latest_ + step;
    latest_ = std::max(latest_, unwrapped);
    offset_ = std::min(offset_, here - unwrapped);
    return static_cast<std::uint64_t>(std::max<std::int64_t>(unwrapped + offset_, 0));
}

}  // namespace platform::x11
