// Questions about the screen that only the server can answer.
#include <algorithm>
#include <charconv>
#include <string_view>

#include <xcb/randr.h>

#include "platform/window/x11/x11_window_system.h"

#include <platform/window.h>

namespace platform::x11 {

namespace {

// Numbers from a property of the root.
std::vector<std::uint32_t> NumbersOf(const Connection& connection, xcb_atom_t property,
                                     std::uint32_t longest) {
    xcb_connection_t* c = connection.Get();
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        c, xcb_get_property(c, 0, connection.Root(), property, XCB_ATOM_CARDINAL, 0, longest), nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

// Without what panels take of the present workspace: one rectangle for all monitors.
CRect WorkAreaOf(const Connection& connection, const CRect& screen) {
    constexpr std::uint32_t kMostDesktops = 256;
    const std::vector<std::uint32_t> current = NumbersOf(connection, connection.Names().netCurrentDesktop, 1);
    const std::vector<std::uint32_t> areas =
        NumbersOf(connection, connection.Names().netWorkarea, 4 * kMostDesktops);
    const std::size_t at = current.empty() ? 0 : std::size_t{4} * current[0];
    if (at + 4 > areas.size()) return screen;
    CRect area;
    const CRect named(CPoint(static_cast<int>(areas[at]), static_cast<int>(areas[at + 1])),
                      CSize(static_cast<int>(areas[at + 2]), static_cast<int>(areas[at + 3])));
    return area.IntersectRect(named, screen) ? area : screen;
}

}  // namespace

// As desktops tell their programs: a resource of the root, a line "Xft.dpi:" with a number.
int X11WindowSystem::Dpi() {
    constexpr int kUsual = 96;
    constexpr std::uint32_t kLongest = 16384;  // in words
    constexpr std::string_view kName = "Xft.dpi:";
    if (!connection_->IsAlive()) return kUsual;
    xcb_connection_t* c = connection_->Get();
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        c,
        xcb_get_property(c, 0, connection_->Root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, kLongest),
        nullptr));
    if (!reply || reply->format != 8) return kUsual;
    std::string_view rest(static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len);
    for (std::string_view line; !rest.empty(); rest.remove_prefix(std::min(rest.size(), line.size() + 1))) {
        line = rest.substr(0, rest.find('\n'));
        if (!line.starts_with(kName)) continue;
        std::string_view value = line.substr(kName.size());
        value.remove_prefix(std::min(value.size(), value.find_first_not_of(" \t")));
        int dpi = 0;
        const auto read = std::from_chars(value.data(), value.data() + value.size(), dpi);
        if (read.ec == std::errc() && dpi > 0) return dpi;
    }
    return kUsual;
}

std::vector<Monitor> X11WindowSystem::Monitors() {
    const CRect screen(CPoint(0, 0), screenSize_);
    std::vector<Monitor> all;
    if (connection_->IsAlive() && connection_->Has().monitors) {
        xcb_connection_t* c = connection_->Get();
        const Reply<xcb_randr_get_monitors_reply_t> reply(
            xcb_randr_get_monitors_reply(c, xcb_randr_get_monitors(c, connection_->Root(), 1), nullptr));
        if (reply)
            for (auto i = xcb_randr_get_monitors_monitors_iterator(reply.get()); i.rem > 0;
                 xcb_randr_monitor_info_next(&i)) {
                const CRect whole(CPoint(i.data->x, i.data->y), CSize(i.data->width, i.data->height));
                if (whole.IsRectEmpty()) continue;
                all.insert(i.data->primary ? all.begin() : all.end(), Monitor{whole, whole});
            }
    }
    if (all.empty()) all.push_back({screen, screen});
    // What a window manager left behind when it died tells of panels no more.
    if (!connection_->IsAlive() || !manager_.IsPresent()) return all;
    const CRect area = WorkAreaOf(*connection_, screen);
    for (Monitor& monitor : all)
        if (!monitor.work.IntersectRect(monitor.whole, area)) monitor.work = monitor.whole;
    return all;
}

POINT X11WindowSystem::PointerPosition() {
    if (!connection_->IsAlive()) return {0, 0};
    xcb_connection_t* c = connection_->Get();
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, connection_->Root()), nullptr));
    return reply ? POINT{reply->root_x, reply->root_y} : POINT{0, 0};
}

bool X11WindowSystem::IsButtonHeld() {
    if (!connection_->IsAlive()) return false;
    xcb_connection_t* c = connection_->Get();
    const Reply<xcb_query_pointer_reply_t> now(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, connection_->Root()), nullptr));
    return now && (now->mask & XCB_BUTTON_MASK_1) != 0;
}

KeySet X11WindowSystem::KeysDown() {
    if (!connection_->IsAlive()) return {};
    xcb_connection_t* c = connection_->Get();
    const auto pointer = xcb_query_pointer(c, connection_->Root());
    KeySet keys = keyboard_.KeysDown();
    const Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(c, pointer, nullptr));
    const InputState buttons = ToInputState(reply ? reply->mask : std::uint16_t{0});
    keys[VK_LBUTTON] = buttons.left;
    keys[VK_MBUTTON] = buttons.middle;
    keys[VK_RBUTTON] = buttons.right;
    return keys;
}

HWND X11WindowSystem::WindowAt(POINT screen) {
    if (!connection_->IsAlive()) return {};
    xcb_connection_t* c = connection_->Get();
    const xcb_window_t root = connection_->Root();
    // Down from the root, as the server itself looks for the window under the pointer: it honours both
    // shapes. Between the root and ours there may be frames.
    constexpr int kDeepest = 16;
    xcb_window_t current = root;
    for (int depth = 0; depth < kDeepest; ++depth) {
        const auto cookie = xcb_translate_coordinates(c, root, current, ToX(screen.x), ToX(screen.y));
        const Reply<xcb_translate_coordinates_reply_t> reply(
            xcb_translate_coordinates_reply(c, cookie, nullptr));
        if (!reply || reply->child == XCB_WINDOW_NONE) return {};
        current = reply->child;
        if (const NativeWindow* window = FindById(current)) return window->handle;
    }
    return {};
}

}  // namespace platform::x11
