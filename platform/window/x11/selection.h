// The owner's side of a selection: to whom its data go, and what they are sent.
#pragma once

#include <algorithm>

#include <xcb/xcb.h>

namespace platform::x11 {

// Where the data are to be put. Clients of long ago name no property.
inline xcb_atom_t PropertyFor(const xcb_selection_request_event_t& request) {
    return request.property != XCB_ATOM_NONE ? request.property : request.target;
}

// The data are there, or are refused.
inline void NotifyRequestor(xcb_connection_t* connection, const xcb_selection_request_event_t& request,
                            bool given) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = given ? PropertyFor(request) : xcb_atom_t{XCB_ATOM_NONE};
    // Events have one size, of which this one uses a part.
    char bytes[32] = {};
    std::copy_n(reinterpret_cast<const char*>(&notice), sizeof notice, bytes);
    xcb_send_event(connection, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes);
}

}  // namespace platform::x11
