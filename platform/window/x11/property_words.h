// Properties of 32-bit words. Asking and reading are apart, so that several can share one round trip.
#pragma once

#include <vector>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

inline xcb_get_property_cookie_t AskWords(xcb_connection_t* connection, xcb_window_t window,
                                          xcb_atom_t property) {
    constexpr std::uint32_t kMost = 1024;  // words
    return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMost);
}

// Empty when the window has no such property, or is gone.
inline std::vector<std::uint32_t> ReadWords(xcb_connection_t* connection, xcb_get_property_cookie_t asked) {
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, asked, nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* words = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {words, words + reply->value_len};
}

}  // namespace platform::x11
