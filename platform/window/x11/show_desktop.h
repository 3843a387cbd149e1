// A window manager that shows the desktop hides all windows, topmost ones among them. One that was put on top
// just then, or while the desktop shows, is meant to be seen.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include <platform/types.h>

namespace platform::x11 {

class ShowDesktop {
  public:
    // A topmost window was put on top of all.
    void PutOnTop(HWND window, std::uint64_t now) {
        last_ = window;
        lastTime_ = now;
        if (showing_) due_ = now + kPause;
    }
    // What the window manager says that it does.
    void Changed(bool showing, std::uint64_t now) {
        if (std::exchange(showing_, showing) == showing) return;
        if (!showing)
            due_.reset();
        else if (last_ && now - lastTime_ <= kJustNow)
            due_ = now + kPause;
    }
    // When a window is to be brought back.
    std::optional<std::uint64_t> Due() const { return due_; }
    // The window, once that time has come; empty before.
    HWND Take(std::uint64_t now) {
        if (!due_ || now < *due_) return HWND();
        due_.reset();
        return last_;
    }

  private:
    // Milliseconds. Until the window manager has hidden them all; a request between would be lost.
    static constexpr std::uint64_t kPause = 60;
    // The key that shows the desktop, and what a host does when it sees that key, are that near to each
    // other.
    static constexpr std::uint64_t kJustNow = 400;

    HWND last_;
    std::uint64_t lastTime_ = 0;
    bool showing_ = false;
    std::optional<std::uint64_t> due_;
};

}  // namespace platform::x11
