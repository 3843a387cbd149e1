#include "platform/window/x11/atoms.h"

#include <array>
#include <string>
#include <string_view>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

struct AtomName {
    xcb_atom_t Atoms::*member;
    std::string_view name;
};

constexpr auto kAtomNames = std::to_array<AtomName>({
    {&Atoms::utf8String, "UTF8_STRING"},
    {&Atoms::wmProtocols, "WM_PROTOCOLS"},
    {&Atoms::wmDeleteWindow, "WM_DELETE_WINDOW"},
    {&Atoms::wmState, "WM_STATE"},
    {&Atoms::wmChangeState, "WM_CHANGE_STATE"},
    {&Atoms::motifHints, "_MOTIF_WM_HINTS"},
    {&Atoms::netWmPing, "_NET_WM_PING"},
    {&Atoms::netWmName, "_NET_WM_NAME"},
    {&Atoms::netWmPid, "_NET_WM_PID"},
    {&Atoms::netWmState, "_NET_WM_STATE"},
    {&Atoms::netWmStateAbove, "_NET_WM_STATE_ABOVE"},
    {&Atoms::netWmStateHidden, "_NET_WM_STATE_HIDDEN"},
    {&Atoms::netWmStateMaximisedAcross, "_NET_WM_STATE_MAXIMIZED_HORZ"},
    {&Atoms::netWmStateMaximisedDown, "_NET_WM_STATE_MAXIMIZED_VERT"},
    {&Atoms::netWmStateModal, "_NET_WM_STATE_MODAL"},
    {&Atoms::netWmStateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
    {&Atoms::netWmStateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
    {&Atoms::netWmWindowType, "_NET_WM_WINDOW_TYPE"},
    {&Atoms::netWmWindowTypeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
    {&Atoms::netWmWindowTypeDialog, "_NET_WM_WINDOW_TYPE_DIALOG"},
    {&Atoms::netWmWindowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
    {&Atoms::netWmUserTime, "_NET_WM_USER_TIME"},
    {&Atoms::netActiveWindow, "_NET_ACTIVE_WINDOW"},
    {&Atoms::netSupportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
    {&Atoms::netSupported, "_NET_SUPPORTED"},
    {&Atoms::netWmIcon, "_NET_WM_ICON"},
    {&Atoms::wmClientLeader, "WM_CLIENT_LEADER"},
    {&Atoms::netStartupId, "_NET_STARTUP_ID"},
    {&Atoms::netStartupInfoBegin, "_NET_STARTUP_INFO_BEGIN"},
    {&Atoms::netStartupInfo, "_NET_STARTUP_INFO"},
    {&Atoms::netCurrentDesktop, "_NET_CURRENT_DESKTOP"},
    {&Atoms::netWorkarea, "_NET_WORKAREA"},
    {&Atoms::netClientList, "_NET_CLIENT_LIST"},
    {&Atoms::netShowingDesktop, "_NET_SHOWING_DESKTOP"},
    {&Atoms::rootPixmap, "_XROOTPMAP_ID"},
    {&Atoms::xembed, "_XEMBED"},
    {&Atoms::xdndAware, "XdndAware"},
    {&Atoms::clipboard, "CLIPBOARD"},
    {&Atoms::clipboardAnswer, "PLATFORM_CLIPBOARD"},
    {&Atoms::targets, "TARGETS"},
    {&Atoms::timestamp, "TIMESTAMP"},
    {&Atoms::plainText, "text/plain;charset=utf-8"},
    {&Atoms::incremental, "INCR"},
});

xcb_intern_atom_cookie_t Ask(xcb_connection_t* connection, std::string_view name) {
    return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t Answer(xcb_connection_t* connection, xcb_intern_atom_cookie_t cookie) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace

Atoms ResolveAtoms(xcb_connection_t* connection, int screenNumber) {
    // All questions go out before the first answer is read: one round trip.
    std::array<xcb_intern_atom_cookie_t, kAtomNames.size()> cookies;
    for (std::size_t i = 0; i < kAtomNames.size(); ++i)
        cookies[i] = Ask(connection, kAtomNames[i].name);
    const auto compositor = Ask(connection, "_NET_WM_CM_S" + std::to_string(screenNumber));
    Atoms atoms;
    for (std::size_t i = 0; i < kAtomNames.size(); ++i)
        atoms.*kAtomNames[i].member = Answer(connection, cookies[i]);
    atoms.compositorSelection = Answer(connection, compositor);
    return atoms;
}

}  // namespace platform::x11
