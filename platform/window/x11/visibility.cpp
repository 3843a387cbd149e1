// Showing, hiding, activating and stacking: by request to the window manager, or by ourselves
// where there is none.
#include <utility>

#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

namespace {

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
    if (window.withdrawing || window.joinBy) {
        // What is written now would be lost when the window manager lets go.
        window.mapWhenWithdrawn = WaitingMap{activate, minimised};
        return;
    }
    const bool focus = activate && window.traits.activates && !minimised;
    const bool wasThere = window.mapRequested && (window.mapped || window.minimised);
    if (!window.mapRequested) {
        MapHints hints;
        hints.minimised = minimised;
        if (!focus) {
            hints.userTime = 0;
        } else if (clock_.Latest() != 0) {
            hints.userTime = clock_.Latest();
        } else {
            hints.userTime = startup_.LaunchTime();
        }
        properties_.WriteBeforeMap(window, hints);
        startup_.Mark(window.id);
        window.mapRequested = true;
        // A window manager that let go of the window left it where its frame was.
        if (!window.IsManaged()) RequestPlace(window);
        window.placement.requested = false;
        window.mapActivates = activate;
        window.taken = false;
    }
    if (minimised && !HasManager(window)) {
        if (window.host != 0) xcb_unmap_window(connection_->Get(), window.id);
        window.unmapsItself = true;
        SetMinimised(window, true);
        return;
    }
    // A window manager focuses a new window by itself; one that was there must be asked for.
    window.focusWhenMapped = focus && !window.mapped;
    if (!HasManager(window) && focus) Raise(window);
    AwaitPlacement(window);
    window.minimising.reset();
    if (minimised) AwaitMinimised(window, true);
    xcb_map_window(connection_->Get(), window.id);
    if (focus && wasThere && (HasManager(window) || window.mapped)) Activate(window.handle);
}

void X11WindowSystem::Withdraw(NativeWindow& window) {
    window.mapWhenWithdrawn.reset();
    window.focusWhenMapped = false;
    if (!std::exchange(window.mapRequested, false)) return;
    window.withdrawing = window.IsManaged();
    window.minimised = window.unmapsItself = false;
    window.minimising.reset();
    xcb_connection_t* c = connection_->Get();
    xcb_unmap_window(c, window.id);
    if (window.host != 0) return;
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
    if (window.joinBy) Join(window);
    if (const auto waiting = std::exchange(window.mapWhenWithdrawn, std::nullopt)) {
        Map(window, waiting->activate, waiting->minimised);
    } else if (window.mapRequested && window.taken && !window.mapped && !window.minimised) {
        // Hidden and shown again before it was taken: the hiding reached the window manager last.
        window.mapRequested = false;
        Map(window, window.mapActivates, false);
    }
}

void X11WindowSystem::Activate(HWND handle) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0) return;
    if (window->mapWhenWithdrawn) window->mapWhenWithdrawn->activate = true;
    if (!window->mapRequested) return;
    // A window manager may keep a window of its own off the screen: on another workspace.
    if (!window->mapped && !window->minimised && !window->IsManaged()) {
        window->focusWhenMapped = window->traits.activates;
        return;
    }
    if (HasManager(*window)) {
        Raise(*window);
        if (window->traits.activates)
            manager_.Send(window->id, connection_->Names().netActiveWindow,
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
    if (manager_.IsPresent() || window.host != 0) return;
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
        if (window->traits.topmost) showDesktop_.PutOnTop(handle, Now());
        Raise(*window);
        return;
    }
    const xcb_window_t sibling = IdOf(reference);
    const bool relative = place == StackPlace::Above || place == StackPlace::Below;
    if (relative && sibling == 0) return;
    // One that is not on the screen has no place there.
    if (relative && window->IsManaged() && !Find(reference)->IsManaged()) {
        if (place == StackPlace::Above) Raise(*window);
        return;
    }
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
