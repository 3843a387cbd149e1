// What waits to be handled on the thread that owns the windows: posted messages and the window system's
// events, in the order of their arrival.
#pragma once

#include <cstdint>
#include <map>
#include <variant>

#include <platform/window.h>

#include "platform/window/window_events.h"

namespace platform {

// The core's own: where the focus is, as last reported, is to be followed.
struct FocusCheck {};
// Is the pointer still over the window that asked for its leaving?
struct PointerCheck {};

class MessageQueue {
  public:
    // An event turns into a message, or into state and sent messages, only when its turn comes: what an
    // earlier message did (a capture, a disabled window) counts then.
    using Entry = std::variant<MSG, WindowEvent, FocusCheck, PointerCheck>;
    using Order = std::uint64_t;

    // False when the queue is full, and where there is no memory.
    [[nodiscard]] bool Post(const MSG& message);
    // Ahead of everything that waits. False without memory.
    [[nodiscard]] bool PostFirst(const MSG& message);
    // Ahead of the place `order`, and of whatever was put ahead of it before. False without memory.
    [[nodiscard]] bool PostBefore(Order order, const MSG& message);
    // A move joins the move that is the last input waiting, when nothing but the position differs. Bounds
    // replace those that wait, but neither passes the other: input lands where the window was then. An event
    // for which there is no memory is lost.
    void Report(WindowEvent happened);
    // A check for the focus takes the place of one that waits.
    void RequestCheck(FocusCheck check);
    void RequestCheck(PointerCheck check);

    // The first entry behind `order`; null at the end.
    Entry* FirstAfter(Order order, Order* place);
    using Taken = std::map<Order, Entry>::node_type;
    Taken Take(Order place) { return entries_.extract(place); }
    // Puts an entry that was taken back to its place.
    void Return(Taken entry) { entries_.insert(std::move(entry)); }
    void Erase(Order place) { entries_.erase(place); }
    // The program gave the window bounds of its own: what was reported before is older.
    void DropBounds(HWND window) { DropBoundsAfter(0, window); }
    void DropThreadMessages();
    void Clear() { entries_.clear(); }

  private:
    bool Put(Order place, Entry entry);
    bool Joins(const event::Pointer& move);
    void DropBoundsAfter(Order place, HWND window);
    Order Last() { return next_ += 64; }  // room between entries, for what goes ahead of one
    std::map<Order, Entry> entries_;
    Order next_ = Order{1} << 32;
    Order lastInput_ = 0;
    bool boundsSinceInput_ = false;
};

MessageQueue& Queue();

// Input becomes a message; all other events are handled when met.
inline bool IsInput(const WindowEvent& happened) {
    return std::holds_alternative<event::Pointer>(happened) || std::holds_alternative<event::Key>(happened);
}

}  // namespace platform
