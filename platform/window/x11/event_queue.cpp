#include "platform/window/x11/event_queue.h"

#include "platform/window/x11/event_type.h"

namespace platform::x11 {

namespace {

// Whether `later` says all that `earlier` said.
bool Replaces(const xcb_generic_event_t& later, const xcb_generic_event_t& earlier) {
    if (TypeOf(later) != XCB_MOTION_NOTIFY) return false;
    const auto& a = As<xcb_motion_notify_event_t>(later);
    const auto& b = As<xcb_motion_notify_event_t>(earlier);
    return a.event == b.event && a.state == b.state;
}

}  // namespace

EventQueue::Event EventQueue::Take() {
    xcb_connection_t* c = connection_->Get();
    Event event = ahead_ ? std::move(ahead_) : Event(xcb_poll_for_event(c));
    while (event && TypeOf(*event) == XCB_MOTION_NOTIFY) {
        ahead_ = Event(xcb_poll_for_event(c));
        if (!ahead_ || !Replaces(*ahead_, *event)) break;
        event = std::move(ahead_);
    }
    return event;
}

bool EventQueue::IsFilled() {
    if (!ahead_) ahead_ = Event(xcb_poll_for_queued_event(connection_->Get()));
    return ahead_ != nullptr;
}

}  // namespace platform::x11
