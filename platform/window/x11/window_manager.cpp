#include "platform/window/x11/window_manager.h"

#include <algorithm>

#include <xcb/xfixes.h>

#include "platform/window/x11/property_words.h"

namespace platform::x11 {

WindowManager::WindowManager(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {
    xcb_connection_t* c = connection_->Get();
    const xcb_atom_t selection = connection_->Names().compositorSelection;
    if (connection_->Has().selections)
        xcb_xfixes_select_selection_input(c, connection_->Root(), selection,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(c, connection_->Root(), XCB_CW_EVENT_MASK, &events);
    // Asked after the watch is set, so that no change falls between the two.
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr));
    if (owner) CompositorOwner(owner->owner);
    Refresh();
}

bool WindowManager::Refresh() {
    const bool before = IsPresent();
    // A window manager that died leaves the property of the root behind; the window that it names, however,
    // is gone, or some other window by now that does not name itself.
    const xcb_window_t named = CheckOf(connection_->Root());
    check_ = named != 0 && CheckOf(named) == named ? named : 0;
    if (check_ != 0) {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_->Get(), check_, XCB_CW_EVENT_MASK, &events);
    }
    ReadSupported();
    return before != IsPresent();
}

void WindowManager::ReadSupported() {
    xcb_connection_t* c = connection_->Get();
    const Atoms& names = connection_->Names();
    const auto supported = ReadWords(c, AskWords(c, connection_->Root(), names.netSupported));
    marksMinimised_ = IsPresent() && std::ranges::count(supported, names.netWmStateHidden) > 0;
}

xcb_window_t WindowManager::CheckOf(xcb_window_t window) const {
    xcb_connection_t* c = connection_->Get();
    const auto words = ReadWords(c, AskWords(c, window, connection_->Names().netSupportingWmCheck));
    return words.size() == 1 ? words.front() : 0;
}

void WindowManager::Send(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(connection_->Get(), 0, connection_->Root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

}  // namespace platform::x11
