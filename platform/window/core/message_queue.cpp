#include "platform/window/core/message_queue.h"

#include <new>

#include "platform/window/core/lasting.h"

namespace platform {

namespace {

// A host that posts without ever taking must not eat the memory.
constexpr std::size_t kLongestQueue = 100000;

}  // namespace

bool MessageQueue::Put(Order place, Entry entry) try {
    entries_.emplace(place, std::move(entry));
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool MessageQueue::Post(const MSG& message) {
    return entries_.size() < kLongestQueue && Put(Last(), message);
}

bool MessageQueue::PostFirst(const MSG& message) {
    return PostBefore(entries_.empty() ? Last() : entries_.begin()->first, message);
}

bool MessageQueue::PostBefore(Order order, const MSG& message) {
    Order place = order - 1;
    while (entries_.count(place))
        --place;
    return Put(place, message);
}

bool MessageQueue::Joins(const event::Pointer& move) {
    const auto last = entries_.find(lastInput_);
    if (move.kind != event::Pointer::Moved || boundsSinceInput_ || last == entries_.end()) return false;
    auto* const waiting = std::get_if<WindowEvent>(&last->second);
    auto* const before = waiting ? std::get_if<event::Pointer>(waiting) : nullptr;
    if (!before || before->kind != event::Pointer::Moved || !(before->window == move.window) ||
        before->state != move.state)
        return false;
    *before = move;
    return true;
}

void MessageQueue::Report(WindowEvent happened) {
    if (const auto* const pointer = std::get_if<event::Pointer>(&happened); pointer && Joins(*pointer))
        return;
    if (IsInput(happened)) {
        lastInput_ = next_ + 64;
        boundsSinceInput_ = false;
    } else if (const auto* const bounds = std::get_if<event::BoundsChanged>(&happened)) {
        DropBoundsAfter(lastInput_, bounds->window);
        boundsSinceInput_ = true;
    }
    Put(Last(), std::move(happened));
}

void MessageQueue::RequestCheck(FocusCheck check) {
    std::erase_if(entries_, [](const auto& item) { return std::holds_alternative<FocusCheck>(item.second); });
    Put(Last(), check);
}

void MessageQueue::RequestCheck(PointerCheck check) {
    Put(Last(), check);
}

MessageQueue::Entry* MessageQueue::FirstAfter(Order order, Order* place) {
    auto found = entries_.upper_bound(order);
    if (found == entries_.end()) return nullptr;
    *place = found->first;
    return &found->second;
}

void MessageQueue::DropBoundsAfter(Order place, HWND window) {
    std::erase_if(entries_, [&](const auto& item) {
        const auto* const happened = std::get_if<WindowEvent>(&item.second);
        const auto* const bounds = happened ? std::get_if<event::BoundsChanged>(happened) : nullptr;
        return item.first > place && bounds && bounds->window == window;
    });
}

void MessageQueue::DropThreadMessages() {
    std::erase_if(entries_, [](const auto& item) {
        const auto* const message = std::get_if<MSG>(&item.second);
        return message && !message->hwnd;
    });
}

MessageQueue& Queue() {
    return Lasting<MessageQueue>();
}

}  // namespace platform
