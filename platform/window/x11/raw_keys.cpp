#include "platform/window/x11/raw_keys.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <xcb/xinput.h>

#include "platform/window/x11/reply.h"

namespace platform::x11 {

bool RawKeys::Start() {
    if (extension_ != 0) return true;
    xcb_connection_t* c = connection_->Get();
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(c, &xcb_input_id);
    if (data == nullptr || data->present == 0) return false;
    // From 2.2 on raw events come during the grabs of others, too.
    const Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(c, xcb_input_xi_query_version(c, 2, 2), nullptr));
    if (!version || std::pair(version->major_version, version->minor_version) <
                        std::pair<std::uint16_t, std::uint16_t>(2, 2))
        return false;
    extension_ = data->major_opcode;
    return true;
}

void RawKeys::Select(std::uint32_t events) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t events;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, events};
    xcb_input_xi_select_events(connection_->Get(), connection_->Root(), 1, &mask.head);
}

bool RawKeys::Watch(bool on) {
    if (!connection_->IsAlive()) return false;
    if (on == watching_) return true;
    if (on && !Start()) return false;
    watching_ = on;
    Select(on ? XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE : 0);
    // The keys that are down already; from here on the events say all.
    held_ = keyboard_.KeysDown();
    return true;
}

std::optional<RawKeys::Stroke> RawKeys::Read(const xcb_ge_generic_event_t& event) {
    const bool down = event.event_type == XCB_INPUT_RAW_KEY_PRESS;
    const bool up = event.event_type == XCB_INPUT_RAW_KEY_RELEASE;
    if (!watching_ || event.extension != extension_ || !(down || up)) return std::nullopt;
    const auto& key = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    // The end of a grab tells of a release twice.
    if (key.time == last_.time && key.detail == last_.keyCode && down == last_.down) return std::nullopt;
    last_ = {keyboard_.CodeOf(static_cast<xcb_keycode_t>(key.detail)), key.detail, down, key.time};
    if (last_.virtualKey < held_.size()) held_.set(last_.virtualKey, down);
    return last_.virtualKey == 0 ? std::nullopt : std::optional(last_);
}

}  // namespace platform::x11
