// One round of GLib's default main context together with the display's socket, so that sources of other
// libraries run in whatever loop waits for messages.
#pragma once

#include <atomic>
#include <functional>

namespace platform::x11 {

class MainContextWaiter {
  public:
    MainContextWaiter();
    ~MainContextWaiter();
    MainContextWaiter(const MainContextWaiter&) = delete;
    MainContextWaiter& operator=(const MainContextWaiter&) = delete;

    // From any thread: ends the round under way, or the next one.
    void Wake();

    struct Outcome {
        bool sourceRan = false;
        bool woken = false;
    };
    // Blocks until `descriptor` is readable, a source is ready (which is then run), Wake is called, or the
    // time in milliseconds (-1: none, 0: no blocking) is over. `queued` is asked once right before blocking;
    // when it answers true, the round does not block.
    Outcome Run(int descriptor, int timeout, const std::function<bool()>& queued);

  private:
    int wakeDescriptor_;
    std::atomic<bool> woken_{false};
};

}  // namespace platform::x11
