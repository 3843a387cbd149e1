#include "platform/window/x11/drag/target_search.h"

#include <algorithm>

#include "platform/window/x11/property_words.h"

namespace platform::x11 {

namespace {

std::uint32_t First(const std::vector<std::uint32_t>& words) {
    return words.empty() ? 0 : words.front();
}

// Whoever a window names must name itself, or it is left behind by a program that died.
xcb_window_t ProxyOf(xcb_connection_t* c, const XdndAtoms& atoms, xcb_window_t named) {
    return named != 0 && First(ReadWords(c, AskWords(c, named, atoms.proxy))) == named ? named : 0;
}

DragTarget AsTarget(xcb_connection_t* c, const XdndAtoms& atoms, xcb_window_t window) {
    const auto askedVersion = AskWords(c, window, atoms.aware);
    const auto askedProxy = AskWords(c, window, atoms.proxy);
    std::uint32_t version = First(ReadWords(c, askedVersion));
    const xcb_window_t proxy = ProxyOf(c, atoms, First(ReadWords(c, askedProxy)));
    if (proxy != 0) version = First(ReadWords(c, AskWords(c, proxy, atoms.aware)));
    if (version < kOldestXdndVersion) return {};
    return {window, proxy != 0 ? proxy : window, std::min(version, kXdndVersion)};
}

}  // namespace

DragTarget FindDragTarget(const Connection& connection, const XdndAtoms& atoms, POINT screen) {
    if (!connection.IsAlive()) return {};
    xcb_connection_t* c = connection.Get();
    const xcb_window_t root = connection.Root();
    // The outermost window that takes drops, as its own toolkit knows what lies inside.
    constexpr int kDeepest = 32;
    xcb_window_t current = root;
    for (int depth = 0; depth < kDeepest; ++depth) {
        const auto asked = xcb_translate_coordinates(c, root, current, ToX(screen.x), ToX(screen.y));
        const Reply<xcb_translate_coordinates_reply_t> reply(
            xcb_translate_coordinates_reply(c, asked, nullptr));
        if (!reply || reply->child == XCB_WINDOW_NONE) break;
        current = reply->child;
        if (const DragTarget target = AsTarget(c, atoms, current)) return target;
    }
    // A desktop may speak for the root; but not beneath a window of somebody who takes nothing.
    return current == root ? AsTarget(c, atoms, root) : DragTarget();
}

}  // namespace platform::x11
