// Showing, hiding, minimising, activating and stacking: by request to the window manager, or by ourselves
// where there is none.
#include <utility>

#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

// How long the window manager has to settle a window that it was just given.
constexpr std::uint64_t kSettleTime = 250;
constexpr std::uint32_t kWithdrawnState = 0;
constexpr std::uint32_t kNormalState = 1;
constexpr std::uint32_t kIconicState = 3;
constexpr std::uint32_t kFromUser = 2;

}  // namespace

void X11WindowSystem::Show(HWND handle, Visibility visibility) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0) return;
    switch (visibility) {
        case Visibility::Hidden:
            Withdraw(*window);
            break;
        case Visibility::Shown:
            Map(*window, true, false);
            break;
        case Visibility::ShownInactive:
            Map(*window, false, false);
            break;
        case Visibility::Minimised:
            Minimise(*window);
            break;
        case Visibility::Restored:
            Map(*window, true, false);
            break;
    }
    connection_->Flush();
}

void X11WindowSystem::Map(NativeWindow& window, bool activate, bool minimised) {
    if (window.withdrawing) {
        // What is written now would be lost when the window manager lets go.
        window.mapWhenWithdrawn = WaitingMap{activate, minimised};
        return;
    }
    const bool focus = activate && window.traits.activates;
    const bool wasThere = window.mapRequested && (window.mapped || window.minimised);
    if (!window.mapRequested) {
        MapHints hints;
        hints.minimised = minimised;
        if (!focus) {
            hints.userTime = 0;
        } else if (clock_.Latest() != 0) {
            hints.userTime = clock_.Latest();
        }
        properties_.WriteBeforeMap(window, hints);
        window.mapRequested = true;
    }
    if (minimised && !manager_.IsPresent()) {
        window.unmapsItself = true;
        SetMinimised(window, true);
        return;
    }
    // A window manager focuses a new window by itself; one that was there must be asked for.
    window.focusWhenMapped = focus && !window.mapped;
    if (!manager_.IsPresent() && focus) Raise(window);
    window.placement.quietUntil = Now() + kSettleTime;
    xcb_map_window(connection_->Get(), window.id);
    if (focus && wasThere && (manager_.IsPresent() || window.mapped)) Activate(window.handle);
}

void X11WindowSystem::Withdraw(NativeWindow& window) {
    window.mapWhenWithdrawn.reset();
    window.focusWhenMapped = false;
    if (!std::exchange(window.mapRequested, false)) return;
    window.withdrawing = window.IsManaged();
    window.minimised = window.unmapsItself = false;
    xcb_connection_t* c = connection_->Get();
    xcb_unmap_window(c, window.id);
    // A minimised window is unmapped already: only this message tells that it is to be let go.
    xcb_unmap_notify_event_t notice{};
    notice.response_type = XCB_UNMAP_NOTIFY;
    notice.event = connection_->Root();
    notice.window = window.id;
    xcb_send_event(c, 0, connection_->Root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&notice));
}

void X11WindowSystem::LetGo(NativeWindow& window) {
    // Frame and state go one after the other; then the window is ours again.
    if (window.IsManaged()) return;
    window.withdrawing = false;
    if (const auto waiting = std::exchange(window.mapWhenWithdrawn, std::nullopt))
        Map(window, waiting->activate, waiting->minimised);
}

void X11WindowSystem::Minimise(NativeWindow& window) {
    if (!window.mapRequested) {
        Map(window, true, true);
    } else if (manager_.IsPresent()) {
        manager_.Tell(window.id, connection_->Names().wmChangeState, {kIconicState, 0, 0, 0, 0});
    } else {
        window.unmapsItself = true;
        xcb_unmap_window(connection_->Get(), window.id);
    }
}

void X11WindowSystem::SetMinimised(NativeWindow& window, bool minimised) {
    if (window.minimised == minimised) return;
    window.minimised = minimised;
    minimisedNews_.push_back(window.handle);
}

void X11WindowSystem::ReportMinimised() {
    std::vector<HWND> news;
    news.swap(minimisedNews_);
    for (const HWND handle : news)
        if (const NativeWindow* window = Find(handle)) Report().MinimisedChanged(handle, window->minimised);
}

void X11WindowSystem::ReadManagerState(NativeWindow& window) {
    xcb_connection_t* c = connection_->Get();
    const xcb_atom_t property = connection_->Names().wmState;
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(c, xcb_get_property(c, 0, window.id, property, property, 0, 1), nullptr));
    std::uint32_t state = kWithdrawnState;
    if (reply && reply->format == 32 && reply->value_len >= 1)
        state = *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    window.hasState = state != kWithdrawnState;
    if (!window.hasState) {
        LetGo(window);
    } else if (!window.withdrawing && (state == kIconicState || state == kNormalState)) {
        SetMinimised(window, state == kIconicState);
    }
}

void X11WindowSystem::Activate(HWND handle) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0) return;
    if (window->mapWhenWithdrawn) window->mapWhenWithdrawn->activate = true;
    if (!window->mapRequested) return;
    if (!window->mapped && !window->minimised) {
        window->focusWhenMapped = window->traits.activates;
        return;
    }
    if (manager_.IsPresent()) {
        Raise(*window);
        if (window->traits.activates)
            manager_.Tell(window->id, connection_->Names().netActiveWindow,
                          {kFromUser, clock_.Latest(), 0, 0, 0});
    } else if (window->mapped) {
        Raise(*window);
        Focus(*window);
    } else {
        Map(*window, true, false);
    }
    connection_->Flush();
}

void X11WindowSystem::Focus(NativeWindow& window) {
    if (!window.traits.activates) return;
    xcb_set_input_focus(connection_->Get(), XCB_INPUT_FOCUS_POINTER_ROOT, window.id, XCB_CURRENT_TIME);
}

void X11WindowSystem::Raise(NativeWindow& window) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_->Get(), window.id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    if (manager_.IsPresent()) return;
    // Nobody else keeps the topmost above the others, nor the owned above their owners.
    for (auto& [key, other] : windows_) {
        const bool stays = other->traits.topmost && !window.traits.topmost;
        if (other->id != 0 && other->mapped && (stays || other->traits.owner == window.handle))
            xcb_configure_window(connection_->Get(), other->id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    }
}

void X11WindowSystem::Restack(HWND handle, StackPlace place, HWND reference) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0) return;
    if (place == StackPlace::Top) {
        Raise(*window);
        return;
    }
    const xcb_window_t sibling = IdOf(reference);
    const bool relative = place == StackPlace::Above || place == StackPlace::Below;
    if (relative && sibling == 0) return;
    const std::uint8_t mode = place == StackPlace::Above ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW;
    if (window->IsManaged() && relative) {
        RequestRestack(*window, sibling, mode);
        return;
    }
    const std::uint32_t values[] = {sibling, mode};
    if (relative) {
        xcb_configure_window(connection_->Get(), window->id,
                             XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values);
    } else {
        xcb_configure_window(connection_->Get(), window->id, XCB_CONFIG_WINDOW_STACK_MODE, &values[1]);
    }
}

void X11WindowSystem::RequestRestack(const NativeWindow& window, xcb_window_t sibling, std::uint8_t mode) {
    // Inside their frames the two are no siblings, and the server would refuse the request before the window
    // manager sees it. So it is sent to the window manager itself.
    xcb_configure_request_event_t request{};
    request.response_type = XCB_CONFIGURE_REQUEST;
    request.stack_mode = mode;
    request.parent = connection_->Root();
    request.window = window.id;
    request.sibling = sibling;
    request.value_mask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    xcb_send_event(connection_->Get(), 0, connection_->Root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&request));
}

}  // namespace platform::x11
