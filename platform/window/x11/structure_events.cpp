// Events about windows themselves: mapped, placed, exposed, taken and let go by a window manager.
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/window/x11/property_words.h"
#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

constexpr std::uint8_t kSentByClient = 0x80;

}  // namespace

void X11WindowSystem::OnConfigure(const xcb_configure_notify_event_t& event) {
    if (event.window == connection_->Root()) {
        screenSize_ = CSize(event.width, event.height);
        return;
    }
    NativeWindow* window = FindById(event.window);
    if (!window) HostMoved(event.window);
    if (!window) return;
    const bool sent = (event.response_type & kSentByClient) != 0;
    if ((sent || !window->IsManaged()) && window->host == 0) {
        PositionReported(*window, CRect(event.x, event.y, event.x + event.width, event.y + event.height));
    } else {
        // Relative to the frame: where that is on the screen must be asked.
        window->placement.reported.reset();
        PositionChanged(*window);
    }
}

void X11WindowSystem::OnMap(const xcb_map_notify_event_t& event) {
    NativeWindow* window = FindById(event.window);
    if (!window || event.event != event.window) return;
    window->mapped = true;
    startup_.Complete();
    OutlineFrame(*window);
    PositionChanged(*window);
    if (std::exchange(window->unmapsItself, false)) SetMinimised(*window, false);
    const bool focus = std::exchange(window->focusWhenMapped, false);
    if (focus && !HasManager(*window)) Focus(*window);
    if (std::exchange(window->lowerWhenMapped, false)) Restack(window->handle, StackPlace::Bottom, HWND());
    const HWND handle = window->handle;
    if (grab_.EndWait(handle) && !grab_.Take(handle, window->id)) Report().Notify(event::GrabLost{handle});
}

void X11WindowSystem::OnUnmap(const xcb_unmap_notify_event_t& event) {
    NativeWindow* window = FindById(event.window);
    if (!window) HostHidden(event.window);
    if (!window || event.event != event.window || !std::exchange(window->mapped, false)) return;
    const HWND handle = window->handle;
    // Without a window manager there is no state to read. With one, that state tells whether this is
    // minimising.
    if (window->unmapsItself && window->mapRequested) SetMinimised(*window, true);
    const bool left = std::exchange(window->inside, false);
    if (leaving_.window == handle) leaving_.window = HWND();
    LoseGrab(handle);
    if (left) Report().Notify(event::PointerLeft{handle});
}

void X11WindowSystem::OnReparent(const xcb_reparent_notify_event_t& event) {
    NativeWindow* window = FindById(event.window);
    if (!window || event.event != event.window) return;
    if (window->host != 0 && event.parent == window->host) {
        OutlineFrame(*window);
        return;
    }
    window->framed = event.parent != connection_->Root();
    window->taken |= window->framed;
    if (!window->framed) LetGo(*window);
    if (window->mapRequested) AwaitPlacement(*window);  // one that took it on puts its frame in place next
    OutlineFrame(*window);
}

void X11WindowSystem::OnDestroy(const xcb_destroy_notify_event_t& event) {
    if (manager_.IsCheckWindow(event.window)) {
        ManagerChanged();
        return;
    }
    desktops_.Forget(event.window);
    NativeWindow* window = FindById(event.window);
    if (!window || event.event != event.window) return;
    if (SurviveHost(*window)) return;
    const HWND handle = window->handle;
    LoseEmbedded(*window);
    byId_.erase(window->id);
    xcb_free_gc(connection_->Get(), window->context);
    window->id = 0;
    window->mapped = window->mapRequested = window->inside = false;
    grab_.Lose(handle);
    Report().Notify(event::SystemDestroyed{handle});
}

void X11WindowSystem::OnProperty(const xcb_property_notify_event_t& event) {
    const Atoms& names = connection_->Names();
    if (event.window == connection_->Root()) {
        if (event.atom == names.netSupportingWmCheck) ManagerChanged();
        if (event.atom == names.netSupported) manager_.ReadSupported();
        if (event.atom == names.rootPixmap) BackdropChanged();
        if (event.atom == names.netShowingDesktop) {
            xcb_connection_t* c = connection_->Get();
            const auto showing = ReadWords(c, AskWords(c, connection_->Root(), names.netShowingDesktop));
            showDesktop_.Changed(!showing.empty() && showing.front() != 0, Now());
        }
    } else if (NativeWindow* window = FindById(event.window)) {
        // Of the other states only one matters, and only beside the iconic one.
        const bool marks = event.atom == names.netWmState && window->iconic;
        if (event.atom == names.netWmState) ReadMaximised(*window);
        if (marks || event.atom == names.wmState) ReadManagerState(*window);
    }
}

void X11WindowSystem::ReadMaximised(NativeWindow& window) {
    // What was taken off with the window itself says nothing.
    if (!window.traits.decorated || !window.mapRequested || window.withdrawing || !HasManager(window)) return;
    xcb_connection_t* c = connection_->Get();
    const Atoms& names = connection_->Names();
    const std::vector<std::uint32_t> states = ReadWords(c, AskWords(c, window.id, names.netWmState));
    const bool maximised = std::ranges::count(states, names.netWmStateMaximisedAcross) > 0 &&
                           std::ranges::count(states, names.netWmStateMaximisedDown) > 0;
    if (std::exchange(window.maximised, maximised) != maximised)
        Report().Notify(event::MaximisedChanged{window.handle, maximised});
}

void X11WindowSystem::ManagerChanged() {
    if (!manager_.Refresh() || manager_.IsPresent()) return;
    // It will not finish any more what it was asked for.
    for (auto& [key, window] : windows_) {
        if (window->id == 0) continue;
        window->hasState = window->iconic = false;
        LetGo(*window);
        LoseMinimiser(*window);
    }
}

void X11WindowSystem::OnClientMessage(const xcb_client_message_event_t& event) {
    const Atoms& names = connection_->Names();
    if (sockets_.Handle(event)) return;
    const NativeWindow* window = FindById(event.window);
    if (!window || event.format != 32) return;
    if (event.type != names.wmProtocols) {
        drop_.OnMessage(window->handle, event);
        return;
    }
    const xcb_atom_t protocol = event.data.data32[0];
    if (protocol == names.netWmPing) {
        // Sent back as it is, but for the window.
        xcb_client_message_event_t answer = event;
        answer.response_type = XCB_CLIENT_MESSAGE;
        answer.window = connection_->Root();
        xcb_send_event(connection_->Get(), 0, connection_->Root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&answer));
    } else if (protocol == names.wmDeleteWindow) {
        Report().Notify(event::CloseRequested{window->handle});
    }
}

void X11WindowSystem::OnExpose(const xcb_expose_event_t& event) {
    NativeWindow* window = FindById(event.window);
    if (!window) return;
    window->exposed.Add(CRect(event.x, event.y, event.x + event.width, event.y + event.height));
    if (event.count != 0) return;  // more of the series follows
    const Region exposed = std::exchange(window->exposed, Region());
    Report().Notify(event::Exposed{window->handle, exposed});
}

void X11WindowSystem::OnSelection(const xcb_xfixes_selection_notify_event_t& event) {
    if (event.selection != connection_->Names().compositorSelection) return;
    manager_.CompositorOwner(event.owner);
    for (auto& [key, window] : windows_)
        if (window->id != 0) Replan(*window);
}

}  // namespace platform::x11
