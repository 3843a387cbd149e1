#include "platform/window/core/message_queue.h"

namespace platform {

namespace {

// A host that posts without ever taking must not eat the memory.
constexpr std::size_t kLongestQueue = 100000;

bool SameButtons(const InputState& a, const InputState& b) {
    return a.shift == b.shift && a.control == b.control && a.alt == b.alt && a.left == b.left &&
           a.middle == b.middle && a.right == b.right;
}

}  // namespace

bool MessageQueue::Post(const MSG& message) {
    if (entries_.size() >= kLongestQueue) return false;
    entries_.emplace(Last(), Entry{false, message, {}});
    return true;
}

void MessageQueue::PostFirst(const MSG& message) {
    if (entries_.empty())
        entries_.emplace(Last(), Entry{false, message, {}});
    else
        PostBefore(entries_.begin()->first, message);
}

void MessageQueue::PostBefore(Order order, const MSG& message) {
    Order place = order - 1;
    while (entries_.count(place))
        --place;
    entries_.emplace(place, Entry{false, message, {}});
}

void MessageQueue::Report(SystemEvent event) {
    if (event.IsInput()) {
        auto last = entries_.find(lastInput_);
        if (event.kind == SystemEvent::Kind::Move && last != entries_.end() && last->second.isEvent) {
            SystemEvent& waiting = last->second.event;
            if (waiting.kind == SystemEvent::Kind::Move && waiting.window == event.window &&
                SameButtons(waiting.state, event.state)) {
                waiting = std::move(event);
                return;
            }
        }
        lastInput_ = next_ + 64;
    }
    entries_.emplace(Last(), Entry{true, {}, std::move(event)});
}

MessageQueue::Entry* MessageQueue::FirstAfter(Order order, Order* place) {
    auto found = entries_.upper_bound(order);
    if (found == entries_.end()) return nullptr;
    *place = found->first;
    return &found->second;
}

MessageQueue::Entry MessageQueue::Take(Order place) {
    auto node = entries_.extract(place);
    return node ? std::move(node.mapped()) : Entry{};
}

void MessageQueue::Return(Order place, Entry entry) {
    entries_.emplace(place, std::move(entry));
}

void MessageQueue::DropEvents(SystemEvent::Kind kind, HWND window) {
    std::erase_if(entries_, [&](const auto& item) {
        return item.second.isEvent && item.second.event.kind == kind && item.second.event.window == window;
    });
}

void MessageQueue::DropThreadMessages() {
    std::erase_if(entries_,
                  [](const auto& item) { return !item.second.isEvent && !item.second.message.hwnd; });
}

}  // namespace platform
