// Minimising: by request to the window manager, which need not comply, or by ourselves where there is none.
#include <algorithm>
#include <utility>

#include "platform/window/x11/property_words.h"
#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

// For so long the window manager may take to minimise a window. What it does later is reported then.
constexpr std::uint64_t kAnswerTime = 500;  // milliseconds

constexpr std::uint32_t kWithdrawnState = 0;
constexpr std::uint32_t kNormalState = 1;
constexpr std::uint32_t kIconicState = 3;

}  // namespace

void X11WindowSystem::Minimise(NativeWindow& window) {
    if (!window.mapRequested) {
        Map(window, true, true);
    } else if (HasManager(window)) {
        manager_.Send(window.id, connection_->Names().wmChangeState, {kIconicState, 0, 0, 0, 0});
        AwaitMinimised(window, false);
    } else {
        window.unmapsItself = true;
        xcb_unmap_window(connection_->Get(), window.id);
    }
}

void X11WindowSystem::AwaitMinimised(NativeWindow& window, bool byHint) {
    window.minimising = Minimising{Now() + kAnswerTime, byHint};
    minimising_.push_back(window.handle);
}

void X11WindowSystem::SettleMinimising() {
    std::erase_if(minimising_, [this](HWND handle) {
        NativeWindow* window = Find(handle);
        if (!window || !window->minimising) return true;
        if (Now() < window->minimising->until) return false;
        window->minimising.reset();
        if (!window->minimised) minimisedNews_.push_back(handle);  // the core takes it for minimised
        return true;
    });
}

void X11WindowSystem::SetMinimised(NativeWindow& window, bool minimised) {
    if (minimised) window.minimising.reset();
    if (window.minimised == minimised) return;
    window.minimised = minimised;
    minimisedNews_.push_back(window.handle);
}

void X11WindowSystem::ReportMinimised() {
    SettleMinimising();
    std::vector<HWND> news;
    news.swap(minimisedNews_);
    for (const HWND handle : news)
        if (const NativeWindow* window = Find(handle))
            Report().Notify(event::MinimisedChanged{handle, window->minimised});
}

void X11WindowSystem::ReadManagerState(NativeWindow& window) {
    xcb_connection_t* c = connection_->Get();
    const Atoms& names = connection_->Names();
    const auto asked = AskWords(c, window.id, names.wmState);
    const auto marks = AskWords(c, window.id, names.netWmState);
    const std::vector<std::uint32_t> answer = ReadWords(c, asked);
    const std::vector<std::uint32_t> states = ReadWords(c, marks);
    const std::uint32_t state = answer.empty() ? kWithdrawnState : answer.front();
    window.hasState = state != kWithdrawnState;
    window.taken |= window.hasState;
    window.iconic = state == kIconicState;
    if (!window.hasState) {
        LetGo(window);
    } else if (!window.withdrawing) {
        // Some window managers make the windows of other workspaces iconic, too.
        const bool marked = std::ranges::count(states, names.netWmStateHidden) > 0;
        if (window.iconic || state == kNormalState)
            SetMinimised(window, window.iconic && (marked || !manager_.MarksMinimised()));
        // Some do not read the hint, but take the request.
        if (state == kNormalState && window.minimising && std::exchange(window.minimising->byHint, false))
            manager_.Send(window.id, names.wmChangeState, {kIconicState, 0, 0, 0, 0});
    }
}

void X11WindowSystem::LoseMinimiser(NativeWindow& window) {
    if (std::exchange(window.minimising, std::nullopt)) {
        Minimise(window);
    } else if (window.minimised && window.mapped) {
        SetMinimised(window, false);  // its frame went, and left it on the screen
    } else if (window.minimised) {
        window.unmapsItself = true;
    }
}

}  // namespace platform::x11
