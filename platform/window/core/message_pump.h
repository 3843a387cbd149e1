// Taking messages: the order of what waits, and the waiting.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include <platform/window.h>

namespace platform {

struct MessageFilter {
    HWND window;  // it and its children; empty: all
    UINT first = 0;
    UINT last = 0;  // both 0: all

    bool TakesKind(UINT message) const {
        return (first == 0 && last == 0) || (message >= first && message <= last);
    }
    bool TakesRange(UINT from, UINT to) const {
        return (first == 0 && last == 0) || (first <= to && last >= from);
    }
    bool Takes(const MSG& message) const;
};

enum class Take { No, Yes };
enum class WithQuit { No, Yes };

// The next message that waits: posted and input, then paint, then timers, at last WM_QUIT. Runs what other
// threads sent and reads the window system's events, without blocking.
bool Retrieve(MSG& message, const MessageFilter& filter, Take take, WithQuit withQuit);
// With the time and the pointer's position.
MSG Stamped(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// When a wait must end at the latest, on the window system's clock: a timer falls due, or an answer of the
// window system is overdue.
std::optional<std::uint64_t> NextDeadline();

// The end of the program, which loops pass on.
void RequestQuit(int exitCode);
void ForgetQuit();
// The quit that a loop is about to return is the window system's, not a host's.
void NoteQuitMadeUp();

// A loop of the core's own. What ends it may be an event that comes to no message: `done` is asked after
// everything that was handled, and before each wait.
enum class Pumped {
    Done,
    Nothing,  // nothing happens any more by itself: input is injected, and none is left
    NoMore    // the program ends, or the window system is gone
};
Pumped PumpUntil(const std::function<bool()>& done);
// The same, with what waits already.
void PumpWaiting(const std::function<bool()>& done);
void ResetMessageFilter();

}  // namespace platform
