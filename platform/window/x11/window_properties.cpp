#include "platform/window/x11/window_properties.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <xcb/xcb_icccm.h>

#include "platform/window/x11/client_leader.h"
#include "platform/window/x11/drag/xdnd.h"
#include "platform/window/x11/reply.h"

namespace platform::x11 {

namespace {

std::uint32_t Straight(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 0) return 0;
    const auto full = [&](int shift) {
        return std::min<std::uint32_t>(255, ((pixel >> shift & 0xFF) * 255 + alpha / 2) / alpha) << shift;
    };
    return alpha << 24 | full(16) | full(8) | full(0);
}

bool IsDialog(const WindowTraits& traits) {
    // A window manager gives a normal window that is kept out of its lists no focus; a dialog gets it.
    return traits.toolWindow || traits.owner;
}

}  // namespace

void WindowProperties::Replace(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                               std::initializer_list<std::uint32_t> values) {
    xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.begin());
}

void WindowProperties::ReplaceText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                   std::string_view text) {
    xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void WindowProperties::WriteAll(const NativeWindow& window, xcb_window_t owner) {
    WriteProgram(*connection_, window.id, leader_);
    Replace(window.id, connection_->Names().wmProtocols, XCB_ATOM_ATOM,
            {connection_->Names().wmDeleteWindow, connection_->Names().netWmPing});
    WriteTitle(window);
    WriteDecorations(window);
    WriteType(window);
    WriteSizeHints(window);
    WriteOwner(window, owner);
    WriteInputHint(window, false);
    WriteTakesFiles(window);
    WriteIcons(window);
}

void WindowProperties::WriteChanges(const NativeWindow& window, const WindowTraits& before,
                                    xcb_window_t owner) {
    const WindowTraits& now = window.traits;
    if (!(now.title == before.title)) WriteTitle(window);
    const auto frameOf = [](const WindowTraits& traits) {
        return std::tuple(traits.decorated, traits.minimizable, traits.maximizable, traits.resizable);
    };
    const auto sizesOf = [](const WindowTraits& traits) {
        return std::tuple(traits.resizable, traits.maximizable, traits.maximised, CSize(traits.least),
                          CSize(traits.most));
    };
    if (frameOf(now) != frameOf(before)) WriteDecorations(window);
    // They bound what the window manager makes of the states.
    if (sizesOf(now) != sizesOf(before)) WriteSizeHints(window);
    if (IsDialog(now) != IsDialog(before)) WriteType(window);
    if (!(now.owner == before.owner)) WriteOwner(window, owner);
    if (now.activates != before.activates) WriteInputHint(window, window.minimised);
    if (now.takesFiles != before.takesFiles) WriteTakesFiles(window);
    if (now.icons != before.icons) WriteIcons(window);
    if (window.mapRequested) ChangeStates(window, before);
}

void WindowProperties::WriteBeforeMap(const NativeWindow& window, const MapHints& hints) {
    WriteInputHint(window, hints.minimised);
    WriteStates(window);
    WriteSizeHints(window);
    if (hints.userTime) {
        WriteUserTime(window.id, *hints.userTime);
    } else {
        xcb_delete_property(connection_->Get(), window.id, connection_->Names().netWmUserTime);
    }
}

void WindowProperties::WriteTitle(const NativeWindow& window) {
    const Atoms& names = connection_->Names();
    const std::string title = ToUtf8(window.traits.title);
    ReplaceText(window.id, names.netWmName, names.utf8String, title);
    ReplaceText(window.id, XCB_ATOM_WM_NAME, names.utf8String, title);
}

void WindowProperties::WriteDecorations(const NativeWindow& window) {
    enum : std::uint32_t {
        kHasDecorations = 2,
        kBorder = 2,
        kTitle = 8,
        kMenu = 16,
        kMinimise = 32,
        kMaximise = 64,
        kResize = 4
    };
    std::uint32_t decorations = 0;
    if (window.traits.decorated) decorations = kBorder | kTitle | kMenu;
    if (window.traits.decorated && window.traits.minimizable) decorations |= kMinimise;
    if (window.traits.decorated && window.traits.maximizable) decorations |= kMaximise;
    if (window.traits.decorated && window.traits.resizable) decorations |= kResize;
    const xcb_atom_t hints = connection_->Names().motifHints;
    // Functions stay untouched: a window without decorations must still be able to be minimised by itself.
    Replace(window.id, hints, hints, {kHasDecorations, 0, decorations, 0, 0});
}

void WindowProperties::WriteType(const NativeWindow& window) {
    const Atoms& names = connection_->Names();
    const xcb_atom_t type =
        IsDialog(window.traits) ? names.netWmWindowTypeDialog : names.netWmWindowTypeNormal;
    Replace(window.id, names.netWmWindowType, XCB_ATOM_ATOM, {type});
}

void WindowProperties::WriteSizeHints(const NativeWindow& window) {
    const CRect& rect = window.placement.rect;
    const std::int32_t width = ToExtent(rect.Width());
    const std::int32_t height = ToExtent(rect.Height());
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_position(&hints, 1, rect.left, rect.top);
    xcb_icccm_size_hints_set_size(&hints, 1, width, height);
    hints.flags |= XCB_ICCCM_SIZE_HINT_P_POSITION | XCB_ICCCM_SIZE_HINT_P_SIZE;
    const WindowTraits& traits = window.traits;
    if (traits.resizable || traits.maximised || (traits.decorated && traits.maximizable)) {
        // What the program made of it by itself is allowed besides.
        const auto bounds = [](LONG least, LONG most, std::int32_t now) {
            return std::pair(std::clamp<std::int32_t>(least, 1, now), std::max<std::int32_t>(most, now));
        };
        const auto [narrow, wide] = bounds(traits.least.cx, traits.most.cx, width);
        const auto [low, high] = bounds(traits.least.cy, traits.most.cy, height);
        xcb_icccm_size_hints_set_min_size(&hints, narrow, low);
        xcb_icccm_size_hints_set_max_size(&hints, wide, high);
    } else {
        // A skin has one size; only the host changes it.
        xcb_icccm_size_hints_set_min_size(&hints, width, height);
        xcb_icccm_size_hints_set_max_size(&hints, width, height);
    }
    // The position is the window's own, whatever frame goes around it.
    xcb_icccm_size_hints_set_win_gravity(&hints, XCB_GRAVITY_STATIC);
    xcb_icccm_set_wm_normal_hints(connection_->Get(), window.id, &hints);
}

void WindowProperties::WriteOwner(const NativeWindow& window, xcb_window_t owner) {
    if (owner != 0) {
        Replace(window.id, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, {owner});
    } else {
        xcb_delete_property(connection_->Get(), window.id, XCB_ATOM_WM_TRANSIENT_FOR);
    }
}

void WindowProperties::WriteInputHint(const NativeWindow& window, bool minimised) {
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, window.traits.activates ? 1 : 0);
    xcb_icccm_wm_hints_set_window_group(&hints, leader_);
    if (minimised) {
        xcb_icccm_wm_hints_set_iconic(&hints);
    } else {
        xcb_icccm_wm_hints_set_normal(&hints);
    }
    xcb_icccm_set_wm_hints(connection_->Get(), window.id, &hints);
}

void WindowProperties::WriteTakesFiles(const NativeWindow& window) {
    const xcb_atom_t property = connection_->Names().xdndAware;
    if (window.traits.takesFiles)
        Replace(window.id, property, XCB_ATOM_ATOM, {kXdndVersion});
    else
        xcb_delete_property(connection_->Get(), window.id, property);
}

void WindowProperties::WriteIcons(const NativeWindow& window) {
    // Each with its size before its pixels, in rows and with straight alpha. What does not fit into a request
    // is left out.
    const std::size_t room = connection_->MaximumRequest() / 4 - 8;
    std::vector<std::uint32_t> all;
    for (const auto& icon : window.traits.icons) {
        if (!icon) continue;
        const auto width = static_cast<std::size_t>(icon->Width());
        const auto height = static_cast<std::size_t>(icon->Height());
        if (all.size() + 2 + width * height > room) continue;
        all.push_back(static_cast<std::uint32_t>(width));
        all.push_back(static_cast<std::uint32_t>(height));
        for (int y = 0; y < icon->Height(); ++y)
            std::transform(icon->Row(y), icon->Row(y) + width, std::back_inserter(all), Straight);
    }
    const xcb_atom_t property = connection_->Names().netWmIcon;
    if (all.empty()) {
        xcb_delete_property(connection_->Get(), window.id, property);
    } else {
        xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, window.id, property, XCB_ATOM_CARDINAL,
                            32, static_cast<std::uint32_t>(all.size()), all.data());
    }
}

void WindowProperties::WriteUserTime(xcb_window_t window, xcb_timestamp_t time) {
    Replace(window, connection_->Names().netWmUserTime, XCB_ATOM_CARDINAL, {time});
}

void WindowProperties::WriteStates(const NativeWindow& window) {
    const Atoms& names = connection_->Names();
    std::vector<xcb_atom_t> states;
    if (window.traits.topmost) states.push_back(names.netWmStateAbove);
    if (window.traits.toolWindow) {
        states.push_back(names.netWmStateSkipTaskbar);
        states.push_back(names.netWmStateSkipPager);
    }
    if (window.traits.maximised) {
        states.push_back(names.netWmStateMaximisedAcross);
        states.push_back(names.netWmStateMaximisedDown);
    }
    if (window.traits.modal && window.traits.owner) states.push_back(names.netWmStateModal);
    // In one go: a second write would lose the first.
    xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, window.id, names.netWmState, XCB_ATOM_ATOM,
                        32, static_cast<std::uint32_t>(states.size()), states.data());
}

void WindowProperties::ChangeStates(const NativeWindow& window, const WindowTraits& before) {
    const Atoms& names = connection_->Names();
    const auto send = [&](bool was, bool is, xcb_atom_t first, xcb_atom_t second) {
        constexpr std::uint32_t kFromApplication = 1;
        if (was != is)
            manager_.Send(window.id, names.netWmState,
                          {is ? std::uint32_t{1} : std::uint32_t{0}, first, second, kFromApplication, 0});
    };
    const WindowTraits& now = window.traits;
    send(before.topmost, now.topmost, names.netWmStateAbove, 0);
    send(before.toolWindow, now.toolWindow, names.netWmStateSkipTaskbar, names.netWmStateSkipPager);
    send(before.maximised, now.maximised, names.netWmStateMaximisedAcross, names.netWmStateMaximisedDown);
    send(before.modal && before.owner, now.modal && now.owner, names.netWmStateModal, 0);
}

}  // namespace platform::x11
