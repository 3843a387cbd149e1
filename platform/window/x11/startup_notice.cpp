#include "platform/window/x11/startup_notice.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace platform::x11 {

namespace {

constexpr std::size_t kLongestId = 4096;

}  // namespace

StartupNotice::StartupNotice(std::shared_ptr<Connection> connection, xcb_window_t leader)
    : connection_(std::move(connection)), leader_(leader) {
    const char* const given = std::getenv("DESKTOP_STARTUP_ID");
    if (given == nullptr) return;
    id_ = given;
    unsetenv("DESKTOP_STARTUP_ID");
    if (id_.size() > kLongestId) id_.clear();
    if (!id_.empty()) Mark(leader_);
}

std::optional<xcb_timestamp_t> StartupNotice::LaunchTime() const {
    constexpr std::string_view kMark = "_TIME";
    const std::size_t at = id_.rfind(kMark);
    if (at == std::string::npos) return std::nullopt;
    const char* const first = id_.data() + at + kMark.size();
    const char* const end = id_.data() + id_.size();
    xcb_timestamp_t time = 0;
    const auto [last, error] = std::from_chars(first, end, time);
    if (error != std::errc() || last != end || time == 0) return std::nullopt;
    return time;
}

void StartupNotice::Mark(xcb_window_t window) {
    if (id_.empty()) return;
    xcb_change_property(connection_->Get(), XCB_PROP_MODE_REPLACE, window, connection_->Names().netStartupId,
                        connection_->Names().utf8String, 8, static_cast<std::uint32_t>(id_.size()),
                        id_.data());
}

void StartupNotice::Complete() {
    if (id_.empty()) return;
    std::string quoted;
    for (const char unit : id_) {
        if (unit == '"' || unit == '\\') quoted += '\\';
        quoted += unit;
    }
    Broadcast("remove: ID=\"" + quoted + "\"");
    id_.clear();
}

void StartupNotice::Broadcast(const std::string& message) {
    // In pieces of one event each, the terminator included.
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = leader_;
    event.type = connection_->Names().netStartupInfoBegin;
    for (std::size_t at = 0; at <= message.size(); at += sizeof event.data.data8) {
        const std::size_t count = std::min(sizeof event.data.data8, message.size() - at);
        std::fill(std::begin(event.data.data8), std::end(event.data.data8), std::uint8_t{0});
        std::copy_n(message.begin() + static_cast<std::ptrdiff_t>(at), count, event.data.data8);
        xcb_send_event(connection_->Get(), 0, connection_->Root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&event));
        event.type = connection_->Names().netStartupInfo;
    }
}

}  // namespace platform::x11
