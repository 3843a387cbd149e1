// Events as the server sends them: a record whose first byte tells which other record it is.
#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace platform::x11 {

// The type, whoever sent the event: another client's are marked by the top bit.
inline std::uint8_t TypeOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

template <class Event>
const Event& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

}  // namespace platform::x11
