// The timers of all windows. A timer that is due stands still until it is taken, so no window ever has more
// than one WM_TIMER of an id waiting.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <tuple>

#include <platform/window.h>

namespace platform {

struct Timer {
    HWND window;
    UINT_PTR id = 0;
    TIMERPROC procedure = nullptr;
    std::uint64_t interval = 0;  // milliseconds
    std::uint64_t due = 0;       // in the window system's time
};

class TimerTable {
  public:
    // Replaces a timer of the same window and id. For the empty window a fresh id is given out when `id`
    // names no timer. Returns the id. Throws std::bad_alloc and changes nothing.
    UINT_PTR Set(HWND window, UINT_PTR id, UINT interval, TIMERPROC procedure, std::uint64_t now);
    bool Kill(HWND window, UINT_PTR id);
    void KillAll(HWND window);
    void Clear();

    const Timer* Find(HWND window, UINT_PTR id) const;
    // The timer that fell due first and no later than `now`, among those that `takes` accepts.
    template <class Predicate>
    const Timer* FirstDue(std::uint64_t now, Predicate takes) const {
        for (const auto& place : order_) {
            if (std::get<0>(place) > now) break;
            const Timer* timer = Find(HWND::FromParam(std::get<2>(place)), std::get<3>(place));
            if (timer && takes(*timer)) return timer;
        }
        return nullptr;
    }
    std::optional<std::uint64_t> NextDue() const;
    // Arms the timer for its next turn after `now`, in step with the turns before.
    void Rearm(HWND window, UINT_PTR id, std::uint64_t now);

  private:
    using Key = std::pair<std::uint64_t, UINT_PTR>;
    // due, order of arming, window, id
    using Place = std::tuple<std::uint64_t, std::uint64_t, std::uint64_t, UINT_PTR>;
    struct Armed {
        Timer timer;
        Place place;
    };
    void Arm(const Key& key, const Timer& timer);

    std::map<Key, Armed> timers_;
    std::set<Place> order_;
    std::uint64_t armings_ = 0;
    UINT_PTR nextFreeId_ = 1;
};

TimerTable& Timers();

}  // namespace platform
