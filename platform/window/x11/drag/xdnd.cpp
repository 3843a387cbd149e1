#include "platform/window/x11/drag/xdnd.h"

#include <algorithm>
#include <string_view>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

struct Word {
    xcb_atom_t XdndAtoms::*member;
    std::string_view name;
};

constexpr auto kWords = std::to_array<Word>({
    {&XdndAtoms::aware, "XdndAware"},
    {&XdndAtoms::proxy, "XdndProxy"},
    {&XdndAtoms::selection, "XdndSelection"},
    {&XdndAtoms::typeList, "XdndTypeList"},
    {&XdndAtoms::actionList, "XdndActionList"},
    {&XdndAtoms::enter, "XdndEnter"},
    {&XdndAtoms::position, "XdndPosition"},
    {&XdndAtoms::status, "XdndStatus"},
    {&XdndAtoms::leave, "XdndLeave"},
    {&XdndAtoms::drop, "XdndDrop"},
    {&XdndAtoms::finished, "XdndFinished"},
    {&XdndAtoms::copy, "XdndActionCopy"},
    {&XdndAtoms::move, "XdndActionMove"},
    {&XdndAtoms::link, "XdndActionLink"},
    {&XdndAtoms::uriList, "text/uri-list"},
    {&XdndAtoms::plainText, "text/plain"},
    {&XdndAtoms::utf8Text, "UTF8_STRING"},
    {&XdndAtoms::targets, "TARGETS"},
    {&XdndAtoms::timestamp, "TIMESTAMP"},
    {&XdndAtoms::pieces, "INCR"},
    {&XdndAtoms::typeDnd, "_NET_WM_WINDOW_TYPE_DND"},
});

}  // namespace

XdndAtoms ResolveXdndAtoms(xcb_connection_t* connection) {
    std::array<xcb_intern_atom_cookie_t, kWords.size()> cookies;
    for (std::size_t i = 0; i < kWords.size(); ++i)
        cookies[i] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(kWords[i].name.size()),
                                     kWords[i].name.data());
    XdndAtoms atoms;
    for (std::size_t i = 0; i < kWords.size(); ++i) {
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookies[i], nullptr));
        if (reply) atoms.*kWords[i].member = reply->atom;
    }
    return atoms;
}

std::optional<DROPEFFECT> EffectOf(const XdndAtoms& atoms, xcb_atom_t action) {
    if (action == XCB_ATOM_NONE) return std::nullopt;
    if (action == atoms.copy) return DROPEFFECT_COPY;
    if (action == atoms.move) return DROPEFFECT_MOVE;
    if (action == atoms.link) return DROPEFFECT_LINK;
    return std::nullopt;
}

xcb_atom_t ActionOf(const XdndAtoms& atoms, DROPEFFECT effect) {
    if (effect & DROPEFFECT_COPY) return atoms.copy;
    if (effect & DROPEFFECT_MOVE) return atoms.move;
    return effect & DROPEFFECT_LINK ? atoms.link : xcb_atom_t{XCB_ATOM_NONE};
}

void SendXdnd(const Connection& connection, xcb_window_t receiver, xcb_window_t about, xcb_atom_t type,
              const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about;
    message.type = type;
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(connection.Get(), 0, receiver, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
}

}  // namespace platform::x11
