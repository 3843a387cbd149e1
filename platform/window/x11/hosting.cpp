// Windows that lie in the desktop's window: on their way there, in it, and out of it again.
#include <utility>

#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

// A window manager that has not let go of a window by then never had it. Milliseconds.
constexpr std::uint64_t kLetGoTime = 400;

}  // namespace

bool X11WindowSystem::PutInto(HWND handle, ForeignId parent) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0) return false;
    if (parent == kScreen) {
        LeaveHost(*window);
    } else {
        const std::optional<DesktopWindows::Host> host = desktops_.HostFor(parent, window->placement.rect);
        if (!host) return false;
        EnterHost(*window, *host);
    }
    connection_->Flush();
    return true;
}

void X11WindowSystem::EnterHost(NativeWindow& window, const DesktopWindows::Host& host) {
    if (window.host != 0) LeaveHost(window);
    const bool shown = window.mapRequested;
    const bool minimised = window.minimised;
    std::optional<WaitingMap> waiting = window.mapWhenWithdrawn;
    if (shown) waiting = WaitingMap{false, minimised};
    const bool isTheirs = window.withdrawing || (shown && manager_.IsPresent());
    Withdraw(window);
    window.host = host.id;
    window.hostOrigin = host.rect.TopLeft();
    window.mapWhenWithdrawn = waiting;
    if (isTheirs) {
        // A window manager that still has it would take it out again.
        window.joinBy = Now() + kLetGoTime;
        joining_.push_back(window.handle);
    } else {
        FinishJoining(window);
    }
}

void X11WindowSystem::FinishJoining(NativeWindow& window) {
    Join(window);
    if (const auto waiting = std::exchange(window.mapWhenWithdrawn, std::nullopt))
        Map(window, waiting->activate, waiting->minimised);
}

void X11WindowSystem::Join(NativeWindow& window) {
    xcb_connection_t* c = connection_->Get();
    window.joinBy.reset();
    window.framed = window.hasState = window.iconic = window.withdrawing = false;
    window.frame = 0;
    CPoint place = window.placement.rect.TopLeft();
    place.Offset(-window.hostOrigin.x, -window.hostOrigin.y);
    const auto cookie = xcb_reparent_window_checked(c, window.id, window.host, ToX(place.x), ToX(place.y));
    const Reply<xcb_generic_error_t> error(xcb_request_check(c, cookie));
    if (error) LoseHost(window);
    window.outline.Forget();
    Replan(window);
    SendOutline(window);
}

void X11WindowSystem::SettleJoining() {
    std::vector<HWND> waiting;
    waiting.swap(joining_);
    for (const HWND handle : waiting) {
        NativeWindow* window = Find(handle);
        if (!window || window->id == 0 || !window->joinBy) continue;
        if (Now() >= *window->joinBy)
            FinishJoining(*window);
        else
            joining_.push_back(handle);
    }
}

void X11WindowSystem::LeaveHost(NativeWindow& window) {
    const bool joined = !window.joinBy;
    window.joinBy.reset();
    if (window.host == 0) return;
    window.host = 0;
    if (joined) {
        const bool shown = std::exchange(window.mapRequested, false);
        xcb_unmap_window(connection_->Get(), window.id);
        xcb_reparent_window(connection_->Get(), window.id, connection_->Root(),
                            ToX(window.placement.rect.left), ToX(window.placement.rect.top));
        if (shown) window.mapWhenWithdrawn = WaitingMap{false, window.minimised};
        window.outline.Forget();
        Replan(window);
        SendOutline(window);
    }
    if (window.withdrawing) return;
    if (const auto waiting = std::exchange(window.mapWhenWithdrawn, std::nullopt))
        Map(window, waiting->activate, waiting->minimised);
}

void X11WindowSystem::LoseHost(NativeWindow& window) {
    window.host = 0;
    window.joinBy.reset();
    window.lowerWhenMapped = true;
    putOut_.push_back(window.handle);
}

// The server destroys what lies in a window together with it. The window is made anew, on the screen.
bool X11WindowSystem::SurviveHost(NativeWindow& window) {
    if (window.host == 0 || desktops_.Look(window.host)) return false;
    const HWND handle = window.handle;
    if (std::exchange(window.inside, false)) Report().Notify(event::PointerLeft{handle});
    LoseGrab(handle);
    if (std::exchange(window.focused, false)) {
        if (focused_ == handle) focused_ = HWND();
        Report().Notify(event::FocusChanged{handle, false});
    }
    LoseHost(window);
    Recreate(window, window.alphaChannel);
    Replan(window);
    return true;
}

void X11WindowSystem::ReportPutOut() {
    std::vector<HWND> news;
    news.swap(putOut_);
    for (const HWND handle : news)
        if (Find(handle)) Report().Notify(event::PutOut{handle});
}

void X11WindowSystem::HostMoved(xcb_window_t host) {
    for (auto& [key, window] : windows_) {
        if (window->host != host || window->joinBy) continue;
        if (const std::optional<DesktopWindows::Host> now = desktops_.Look(host))
            window->hostOrigin = now->rect.TopLeft();
        PositionChanged(*window);
    }
}

void X11WindowSystem::HostHidden(xcb_window_t host) {
    // The server takes pointer and grab from what can no longer be seen, and tells nobody.
    for (auto& [key, window] : windows_) {
        if (window->host != host) continue;
        PointerGone(*window);
        LoseGrab(window->handle);
    }
}

void X11WindowSystem::BackdropChanged() {
    backdrop_.Forget();
    for (auto& [key, window] : windows_) {
        if (window->host == 0 || window->id == 0) continue;
        Replan(*window);
        if (window->plan.overBackdrop && window->pixels.presented) PutAll(*window);
    }
    connection_->Flush();
}

void X11WindowSystem::KeepShown() {
    const NativeWindow* window = Find(showDesktop_.Take(Now()));
    if (!window || window->id == 0 || !window->mapRequested || !window->traits.topmost) return;
    constexpr std::uint32_t kFromUser = 2;
    manager_.Send(window->id, connection_->Names().netActiveWindow, {kFromUser, clock_.Latest(), 0, 0, 0});
    connection_->Flush();
}

}  // namespace platform::x11
