// Getting events and handing them to the function of their type.
#include <algorithm>
#include <climits>

#include "platform/window/x11/event_type.h"
#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

bool X11WindowSystem::DispatchArrived() {
    reported_ = false;
    // Windows may be made and destroyed, and loops be run, from inside any report: nothing is kept across.
    while (const EventQueue::Event event = queue_.Take())
        Dispatch(*event);
    ReportMinimised();
    SettleJoining();
    ReportPutOut();
    KeepShown();
    SettlePlacements();
    SettleLeaving();
    SettleFocus();
    drag_.Settle(Now());
    reported_ |= drag_.TakeNews();
    drop_.Settle(Now());
    while (std::optional<DropReceiver::Arrival> files = drop_.TakeArrival())
        Report().Notify(event::FilesDropped{files->window, std::move(files->drop)});
    ReportIfLost();
    return reported_;
}

bool X11WindowSystem::ReportIfLost() {
    if (connection_->IsAlive()) return false;
    if (!lostReported_) {
        lostReported_ = true;
        Report().Notify(event::ConnectionLost{});
    }
    return true;
}

bool X11WindowSystem::Poll() {
    if (!connection_->IsAlive()) return ReportIfLost() && false;
    connection_->Flush();
    const bool before = DispatchArrived();
    const auto outcome = waiter_.Run(xcb_get_file_descriptor(connection_->Get()), 0, [] { return true; });
    const bool after = DispatchArrived();
    return before || after || outcome.sourceRan;
}

bool X11WindowSystem::Wait(std::optional<std::uint64_t> deadline) {
    for (;;) {
        if (DispatchArrived()) return true;
        if (!connection_->IsAlive()) return false;
        connection_->Flush();
        const auto queued = [this] { return queue_.IsFilled() || !connection_->IsAlive(); };
        const auto outcome =
            waiter_.Run(xcb_get_file_descriptor(connection_->Get()), TimeoutUntil(deadline), queued);
        const bool reported = DispatchArrived();
        if (reported || outcome.sourceRan || outcome.woken) return true;
        if (!connection_->IsAlive()) return false;
        if (deadline && Now() >= *deadline) return true;
    }
}

int X11WindowSystem::TimeoutUntil(std::optional<std::uint64_t> deadline) {
    std::optional<std::uint64_t> until = deadline;
    const auto atLatest = [&until](std::uint64_t time) { until = until ? std::min(*until, time) : time; };
    for (const HWND handle : moved_)
        if (const NativeWindow* window = Find(handle)) atLatest(window->placement.quietUntil);
    for (const HWND handle : minimising_)
        if (const NativeWindow* window = Find(handle); window && window->minimising)
            atLatest(window->minimising->until);
    for (const HWND handle : joining_)
        if (const NativeWindow* window = Find(handle); window && window->joinBy) atLatest(*window->joinBy);
    if (showDesktop_.Due()) atLatest(*showDesktop_.Due());
    for (const Expectation& one : {leaving_, awaited_})
        if (one.window) atLatest(one.due);
    for (const std::optional<std::uint64_t>& due : {drag_.Due(), drop_.Due()})
        if (due) atLatest(*due);
    if (!until) return -1;
    const std::uint64_t now = Now();
    return *until <= now ? 0 : static_cast<int>(std::min<std::uint64_t>(*until - now, INT_MAX));
}

void X11WindowSystem::Dispatch(const xcb_generic_event_t& event) {
    const std::uint8_t type = TypeOf(event);
    // Errors: requests about windows that were gone by then, ours or other clients'. The protocol tells of
    // them late, and nothing can be done about them.
    if (type == 0 || drag_.Handle(event) || drop_.Handle(event) || clipboard_.Handle(event)) return;
    const Extensions& has = connection_->Has();
    if (has.selections && type == has.fixesFirstEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        OnSelection(As<xcb_xfixes_selection_notify_event_t>(event));
    } else if (has.shape && type == has.shapeFirstEvent + XCB_SHAPE_NOTIFY) {
        OnShape(As<xcb_shape_notify_event_t>(event));
    } else if (type == XCB_GE_GENERIC) {
        OnRawKey(As<xcb_ge_generic_event_t>(event));
    } else if (!keyboard_.Handle(event) && !DispatchInput(event)) {
        DispatchStructure(event);
    }
}

bool X11WindowSystem::DispatchInput(const xcb_generic_event_t& event) {
    switch (TypeOf(event)) {
        case XCB_MOTION_NOTIFY:
            OnMotion(As<xcb_motion_notify_event_t>(event));
            return true;
        case XCB_BUTTON_PRESS:
            OnButton(As<xcb_button_press_event_t>(event), true);
            return true;
        case XCB_BUTTON_RELEASE:
            OnButton(As<xcb_button_press_event_t>(event), false);
            return true;
        case XCB_ENTER_NOTIFY:
            OnEnter(As<xcb_enter_notify_event_t>(event));
            return true;
        case XCB_LEAVE_NOTIFY:
            OnLeave(As<xcb_leave_notify_event_t>(event));
            return true;
        case XCB_KEY_PRESS:
            OnKey(As<xcb_key_press_event_t>(event), true);
            return true;
        case XCB_KEY_RELEASE:
            OnKey(As<xcb_key_press_event_t>(event), false);
            return true;
        case XCB_FOCUS_IN:
            OnFocus(As<xcb_focus_in_event_t>(event), true);
            return true;
        case XCB_FOCUS_OUT:
            OnFocus(As<xcb_focus_in_event_t>(event), false);
            return true;
        case XCB_KEYMAP_NOTIFY:
            OnKeymap(As<xcb_keymap_notify_event_t>(event));
            return true;
        default:
            return false;
    }
}

void X11WindowSystem::DispatchStructure(const xcb_generic_event_t& event) {
    switch (TypeOf(event)) {
        case XCB_EXPOSE:
            OnExpose(As<xcb_expose_event_t>(event));
            break;
        case XCB_CONFIGURE_NOTIFY:
            OnConfigure(As<xcb_configure_notify_event_t>(event));
            break;
        case XCB_MAP_NOTIFY:
            OnMap(As<xcb_map_notify_event_t>(event));
            break;
        case XCB_UNMAP_NOTIFY:
            OnUnmap(As<xcb_unmap_notify_event_t>(event));
            break;
        case XCB_REPARENT_NOTIFY:
            OnReparent(As<xcb_reparent_notify_event_t>(event));
            break;
        case XCB_DESTROY_NOTIFY:
            OnDestroy(As<xcb_destroy_notify_event_t>(event));
            break;
        case XCB_PROPERTY_NOTIFY:
            OnProperty(As<xcb_property_notify_event_t>(event));
            break;
        case XCB_CLIENT_MESSAGE:
            OnClientMessage(As<xcb_client_message_event_t>(event));
            break;
        default:
            break;
    }
}

}  // namespace platform::x11
