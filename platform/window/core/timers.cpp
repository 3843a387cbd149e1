#include "platform/window/core/timers.h"

#include <algorithm>
#include <new>

#include "platform/window/core/control.h"
#include "platform/window/core/display.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {
constexpr UINT kShortestInterval = 10;
constexpr UINT kLongestInterval = 0x7FFFFFFF;
}  // namespace

// Needs memory only for a timer that is new, and leaves the table as it was when there is none.
void TimerTable::Arm(const Key& key, const Timer& timer) {
    const Place place(timer.due, ++armings_, key.first, key.second);
    const auto found = timers_.find(key);
    if (found != timers_.end()) {
        auto node = order_.extract(found->second.place);
        node.value() = place;
        order_.insert(std::move(node));
        found->second = Armed{timer, place};
        return;
    }
    const auto ordered = order_.insert(place).first;
    try {
        timers_.emplace(key, Armed{timer, place});
    } catch (...) {
        order_.erase(ordered);
        throw;
    }
}

UINT_PTR TimerTable::Set(HWND window, UINT_PTR id, UINT interval, TIMERPROC procedure, std::uint64_t now) {
    if (!window && !timers_.count({0, id})) {
        while (timers_.count({0, nextFreeId_}))
            ++nextFreeId_;
        id = nextFreeId_++;
    }
    const std::uint64_t period = std::clamp(interval, kShortestInterval, kLongestInterval);
    Arm({window.ToParam(), id}, Timer{window, id, procedure, period, now + period});
    return id;
}

bool TimerTable::Kill(HWND window, UINT_PTR id) {
    auto found = timers_.find({window.ToParam(), id});
    if (found == timers_.end()) return false;
    order_.erase(found->second.place);
    timers_.erase(found);
    return true;
}

void TimerTable::KillAll(HWND window) {
    auto at = timers_.lower_bound({window.ToParam(), 0});
    while (at != timers_.end() && at->first.first == window.ToParam()) {
        order_.erase(at->second.place);
        at = timers_.erase(at);
    }
}

void TimerTable::Clear() {
    timers_.clear();
    order_.clear();
}

const Timer* TimerTable::Find(HWND window, UINT_PTR id) const {
    auto found = timers_.find({window.ToParam(), id});
    return found == timers_.end() ? nullptr : &found->second.timer;
}

std::optional<std::uint64_t> TimerTable::NextDue() const {
    if (order_.empty()) return std::nullopt;
    return std::get<0>(*order_.begin());
}

void TimerTable::Rearm(HWND window, UINT_PTR id, std::uint64_t now) {
    const Timer* found = Find(window, id);
    if (!found) return;
    Timer timer = *found;
    // Turns that were missed are dropped, not made up for.
    const std::uint64_t missed = now > timer.due ? (now - timer.due) / timer.interval : 0;
    timer.due += (missed + 1) * timer.interval;
    Arm({window.ToParam(), id}, timer);
}

TimerTable& Timers() {
    return Lasting<TimerTable>();
}

std::optional<std::uint64_t> NextTimerDue() {
    return Timers().NextDue();
}

}  // namespace platform

using namespace platform;

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT interval, TIMERPROC procedure) {
    if (window ? !Require(window) : !ClaimThread()) return 0;
    try {
        const UINT_PTR given = Timers().Set(window, id, interval, procedure, CurrentTime());
        // An id of 0 is a timer like any other, but 0 as a result means failure.
        return given ? given : 1;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
}

BOOL KillTimer(HWND window, UINT_PTR id) {
    if (window && !Require(window)) return FALSE;
    if (IsOwningThread() && Timers().Kill(window, id)) return TRUE;
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

DWORD GetTickCount() {
    return static_cast<DWORD>(CurrentTime());
}
