#include "platform/window/core/message_queue.h"

#include <new>

namespace platform {

namespace {

// A host that posts without ever taking must not eat the memory.
constexpr std::size_t kLongestQueue = 100000;

bool SameButtons(const InputState& a, const InputState& b) {
    return a.shift == b.shift && a.control == b.control && a.alt == b.alt && a.left == b.left &&
           a.middle == b.middle && a.right == b.right;
}

bool IsEvent(const MessageQueue::Entry& entry, SystemEvent::Kind kind, HWND window) {
    return entry.isEvent && entry.event.kind == kind && entry.event.window == window;
}

}  // namespace

bool MessageQueue::Put(Order place, Entry entry) try {
    entries_.emplace(place, std::move(entry));
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool MessageQueue::Post(const MSG& message) {
    return entries_.size() < kLongestQueue && Put(Last(), Entry{false, message, {}});
}

bool MessageQueue::PostFirst(const MSG& message) {
    return PostBefore(entries_.empty() ? Last() : entries_.begin()->first, message);
}

bool MessageQueue::PostBefore(Order order, const MSG& message) {
    Order place = order - 1;
    while (entries_.count(place))
        --place;
    return Put(place, Entry{false, message, {}});
}

void MessageQueue::Report(SystemEvent event) {
    if (event.IsInput()) {
        auto last = entries_.find(lastInput_);
        const bool joins = event.kind == SystemEvent::Kind::Move && !placedSinceInput_;
        if (joins && last != entries_.end() && last->second.isEvent) {
            SystemEvent& waiting = last->second.event;
            if (waiting.kind == SystemEvent::Kind::Move && waiting.window == event.window &&
                SameButtons(waiting.state, event.state)) {
                waiting = std::move(event);
                return;
            }
        }
        lastInput_ = next_ + 64;
        placedSinceInput_ = false;
    } else if (event.kind == SystemEvent::Kind::Placed) {
        std::erase_if(entries_, [&](const auto& item) {
            return item.first > lastInput_ && IsEvent(item.second, event.kind, event.window);
        });
        placedSinceInput_ = true;
    }
    Put(Last(), Entry{true, {}, std::move(event)});
}

MessageQueue::Entry* MessageQueue::FirstAfter(Order order, Order* place) {
    auto found = entries_.upper_bound(order);
    if (found == entries_.end()) return nullptr;
    *place = found->first;
    return &found->second;
}

void MessageQueue::DropEvents(SystemEvent::Kind kind, HWND window) {
    std::erase_if(entries_, [&](const auto& item) { return IsEvent(item.second, kind, window); });
}

void MessageQueue::DropThreadMessages() {
    std::erase_if(entries_,
                  [](const auto& item) { return !item.second.isEvent && !item.second.message.hwnd; });
}

}  // namespace platform
