#include "platform/window/x11/desktop_windows.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "platform/window/x11/property_words.h"

namespace platform::x11 {

namespace {

constexpr ForeignId kRoles = 4;  // identifiers of one desktop

int AreaOf(const CRect& rect) {
    return std::max(0, rect.Width()) * std::max(0, rect.Height());
}

Reply<xcb_get_window_attributes_reply_t> AttributesOf(xcb_connection_t* c, xcb_window_t window) {
    return Reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr));
}

std::vector<xcb_window_t> ChildrenOf(xcb_connection_t* c, xcb_query_tree_cookie_t asked) {
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(c, asked, nullptr));
    if (!tree) return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

}  // namespace

bool DesktopWindows::IsOfProgram(xcb_window_t window, xcb_window_t other) const {
    const std::uint32_t program = ~xcb_get_setup(connection_->Get())->resource_id_mask;
    return (window & program) == (other & program);
}

// Managed ones stand in the window manager's list; hidden ones, and all without a window manager, lie on the
// root itself. One that is just being shown has left the root for its frame and stands in no list yet. Those
// that can be seen come first.
std::vector<xcb_window_t> DesktopWindows::FindAll() const {
    if (!connection_->IsAlive()) return {};
    xcb_connection_t* c = connection_->Get();
    const Atoms& names = connection_->Names();
    const auto asked = AskWords(c, connection_->Root(), names.netClientList);
    const std::vector<xcb_window_t> tops = ChildrenOf(c, xcb_query_tree(c, connection_->Root()));
    std::vector<xcb_query_tree_cookie_t> inside;
    inside.reserve(tops.size());
    for (const xcb_window_t top : tops)
        inside.push_back(xcb_query_tree(c, top));
    std::vector<xcb_window_t> all;
    std::unordered_set<xcb_window_t> met;
    const auto meet = [&](const std::vector<xcb_window_t>& windows) {
        std::ranges::copy_if(windows, std::back_inserter(all),
                             [&](xcb_window_t window) { return met.insert(window).second; });
    };
    meet(ReadWords(c, asked));
    meet(tops);
    for (const xcb_query_tree_cookie_t tree : inside)
        meet(ChildrenOf(c, tree));
    const xcb_window_t own = xcb_get_setup(c)->resource_id_base;
    std::erase_if(all, [&](xcb_window_t window) { return IsOfProgram(window, own); });
    std::vector<xcb_get_property_cookie_t> types;
    types.reserve(all.size());
    for (const xcb_window_t window : all)
        types.push_back(AskWords(c, window, names.netWmWindowType));
    std::vector<xcb_window_t> desktops;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::vector<std::uint32_t> type = ReadWords(c, types[i]);
        if (std::ranges::find(type, names.netWmWindowTypeDesktop) != type.end()) desktops.push_back(all[i]);
    }
    std::stable_partition(desktops.begin(), desktops.end(), [c](xcb_window_t window) {
        const auto attributes = AttributesOf(c, window);
        return attributes && attributes->map_state != XCB_MAP_STATE_UNMAPPED;
    });
    return desktops;
}

std::vector<xcb_window_t> DesktopWindows::Group(xcb_window_t window) const {
    std::vector<xcb_window_t> group = FindAll();
    std::erase_if(group, [&](xcb_window_t other) { return !IsOfProgram(window, other); });
    return group;
}

ForeignId DesktopWindows::IdOf(xcb_window_t desktop) {
    auto known = std::ranges::find(known_, desktop, &Known::window);
    if (known == known_.end()) {
        known = known_.insert(known_.end(), {desktop, ++lastSerial_});
        // That it goes, and where it goes, is to be reported.
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_->Get(), desktop, XCB_CW_EVENT_MASK, &events);
    }
    return known->serial * kRoles;
}

std::optional<xcb_window_t> DesktopWindows::WindowOf(ForeignId window) const {
    const auto known = std::ranges::find(known_, window / kRoles, &Known::serial);
    if (known == known_.end() || !connection_->IsAlive()) return std::nullopt;
    return known->window;
}

xcb_window_t DesktopWindows::IconsOf(xcb_window_t desktop) const {
    xcb_connection_t* c = connection_->Get();
    const std::optional<Host> outer = Look(desktop);
    if (!outer) return 0;
    for (const xcb_window_t child : ChildrenOf(c, xcb_query_tree(c, desktop))) {
        // Others may have put windows of theirs into it, as we do.
        if (!IsOfProgram(child, desktop)) continue;
        const auto attributes = AttributesOf(c, child);
        const std::optional<Host> inner = Look(child);
        if (attributes && inner && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT &&
            attributes->map_state != XCB_MAP_STATE_UNMAPPED && inner->rect == outer->rect)
            return child;
    }
    return 0;
}

void DesktopWindows::Forget(xcb_window_t window) {
    std::erase_if(known_, [&](const Known& known) { return known.window == window; });
}

std::vector<ForeignWindow> DesktopWindows::In(ForeignId parent) {
    if (parent == kScreen) {
        const std::vector<xcb_window_t> all = FindAll();
        if (all.empty()) return {};
        return {{IdOf(all.front()), u"Progman", u"Program Manager"}};
    }
    const std::optional<xcb_window_t> desktop = WindowOf(parent);
    if (!desktop) return {};
    const Role role = static_cast<Role>(parent % kRoles);
    if (role == Role::Desktop) return {{parent + 1, u"SHELLDLL_DefView", CString()}};
    if (role == Role::View && IconsOf(*desktop) != 0) return {{parent + 1, u"SysListView32", u"FolderView"}};
    return {};
}

bool DesktopWindows::Exists(ForeignId window) {
    const std::optional<xcb_window_t> desktop = WindowOf(window);
    if (!desktop) return false;
    if (static_cast<Role>(window % kRoles) == Role::Icons) return IconsOf(*desktop) != 0;
    return AttributesOf(connection_->Get(), *desktop) != nullptr;
}

bool DesktopWindows::IsShown(ForeignId window) {
    const std::optional<xcb_window_t> desktop = WindowOf(window);
    const auto attributes = desktop ? AttributesOf(connection_->Get(), *desktop) : nullptr;
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void DesktopWindows::SetShown(ForeignId window, bool shown) {
    const std::optional<xcb_window_t> desktop = WindowOf(window);
    if (!desktop) return;
    xcb_connection_t* c = connection_->Get();
    std::vector<xcb_window_t> all = Group(*desktop);
    if (static_cast<Role>(window % kRoles) == Role::Icons) all = {IconsOf(*desktop)};
    for (const xcb_window_t one : all) {
        if (shown) {
            xcb_map_window(c, one);
        } else {
            xcb_unmap_window(c, one);
        }
    }
    // The window manager hears of it before anything else is asked.
    xcb_flush(c);
}

std::optional<DesktopWindows::Host> DesktopWindows::Look(xcb_window_t window) const {
    xcb_connection_t* c = connection_->Get();
    const auto position = xcb_translate_coordinates(c, window, connection_->Root(), 0, 0);
    const auto size = xcb_get_geometry(c, window);
    const Reply<xcb_translate_coordinates_reply_t> at(xcb_translate_coordinates_reply(c, position, nullptr));
    const Reply<xcb_get_geometry_reply_t> extent(xcb_get_geometry_reply(c, size, nullptr));
    if (!at || !extent) return std::nullopt;
    return Host{window, CRect(CPoint(at->dst_x, at->dst_y), CSize(extent->width, extent->height))};
}

std::optional<DesktopWindows::Host> DesktopWindows::HostFor(ForeignId window, const CRect& rect) {
    const std::optional<xcb_window_t> desktop = WindowOf(window);
    if (!desktop) return std::nullopt;
    if (static_cast<Role>(window % kRoles) == Role::Icons) return Look(IconsOf(*desktop));
    std::optional<Host> best = Look(*desktop);
    const auto covered = [&](const Host& host) {
        CRect part;
        part.IntersectRect(host.rect, rect);
        return AreaOf(part);
    };
    for (const xcb_window_t other : Group(*desktop)) {
        const std::optional<Host> host = Look(other);
        if (host && (!best || covered(*host) > covered(*best))) best = host;
    }
    if (best) IdOf(best->id);  // so that its end is reported
    return best;
}

}  // namespace platform::x11
