#include "platform/window/x11/main_context_waiter.h"

#include <glib.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>
#include <vector>

namespace platform::x11 {

namespace {

// The main context for the duration of a round. Another thread may hold it: then its sources are that
// thread's business.
class ContextRound {
  public:
    ContextRound() : context_(g_main_context_default()), owned_(g_main_context_acquire(context_) != FALSE) {}
    ~ContextRound() {
        if (owned_) g_main_context_release(context_);
    }
    ContextRound(const ContextRound&) = delete;
    ContextRound& operator=(const ContextRound&) = delete;

    // Fills in what the sources wait for, and shortens the time to theirs.
    void Prepare(std::vector<GPollFD>& polls, int& timeout) {
        if (!owned_) return;
        g_main_context_prepare(context_, &priority_);
        gint own = -1;
        polls.resize(8);
        for (;;) {
            count_ = g_main_context_query(context_, priority_, &own, polls.data(),
                                          static_cast<gint>(polls.size()));
            const auto needed = static_cast<std::size_t>(count_);
            const bool fits = needed <= polls.size();
            polls.resize(needed);
            if (fits) break;
        }
        if (own >= 0 && (timeout < 0 || own < timeout)) timeout = own;
    }
    bool Dispatch(std::vector<GPollFD>& polls) {
        if (!owned_ || g_main_context_check(context_, priority_, polls.data(), count_) == FALSE) return false;
        g_main_context_dispatch(context_);
        return true;
    }

  private:
    GMainContext* context_;
    bool owned_;
    gint priority_ = 0;
    gint count_ = 0;
};

}  // namespace

MainContextWaiter::MainContextWaiter() : wakeDescriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

MainContextWaiter::~MainContextWaiter() {
    if (wakeDescriptor_ >= 0) close(wakeDescriptor_);
}

void MainContextWaiter::Wake() {
    woken_.store(true);
    const std::uint64_t one = 1;
    // Cannot fail but for a full counter, which wakes just as well.
    [[maybe_unused]] const ssize_t written = write(wakeDescriptor_, &one, sizeof one);
}

MainContextWaiter::Outcome MainContextWaiter::Run(int descriptor, int timeout,
                                                  const std::function<bool()>& queued) {
    ContextRound round;
    std::vector<GPollFD> polls;
    round.Prepare(polls, timeout);
    const std::size_t ours = polls.size();
    polls.push_back({descriptor, G_IO_IN, 0});
    polls.push_back({wakeDescriptor_, G_IO_IN, 0});
    // Preparing may have run code that asked the server something and so read events off the socket.
    if (queued() || woken_.load()) timeout = 0;
    // GLib declares its record to have the layout of the system's. An interrupted poll reports nothing.
    if (poll(reinterpret_cast<pollfd*>(polls.data()), polls.size(), timeout) < 0)
        for (GPollFD& entry : polls)
            entry.revents = 0;
    if (polls[ours + 1].revents != 0) {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t got = read(wakeDescriptor_, &count, sizeof count);
    }
    Outcome outcome;
    outcome.woken = woken_.exchange(false);
    polls.resize(ours);
    outcome.sourceRan = round.Dispatch(polls);
    return outcome;
}

}  // namespace platform::x11
