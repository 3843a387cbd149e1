// What waits to be handled on the thread that owns the windows: posted messages and the window system's
// events, in the order of their arrival.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include <platform/window.h>

#include "platform/graphics/region.h"
#include "platform/window/file_drop.h"
#include "platform/window/window_system.h"

namespace platform {

// An event as the window system reported it. It turns into a message, or into state and sent messages, only
// when its turn comes: what an earlier message did (a capture, a disabled window) counts then.
struct SystemEvent {
    enum class Kind {
        // Input: becomes a message.
        Move,
        Button,
        Wheel,
        Key,
        // The rest is handled when met.
        Left,
        Focus,
        KeysHeld,
        Placed,
        Exposed,
        Minimised,
        Maximised,
        Close,
        GrabLost,
        Destroyed,
        PutOut,
        KeySeen,
        Drop,
        PointerCheck  // the core's own: is the pointer still over the window that asked for its leaving?
    };
    Kind kind = Kind::Move;
    HWND window;
    POINT screen{0, 0};
    InputState state;
    std::uint64_t time = 0;
    int button = 0;     // KeySeen: the number of the key
    bool down = false;  // button, key; Minimised, Maximised: whether it is
    int delta = 0;
    UINT virtualKey = 0;
    char16_t character = 0;
    KeySet keys;
    CRect rect;
    std::optional<Region> region;
    std::shared_ptr<const FileDrop> drop;

    bool IsInput() const { return kind <= Kind::Key; }
};

class MessageQueue {
  public:
    struct Entry {
        bool isEvent = false;
        MSG message{};
        SystemEvent event;
    };
    using Order = std::uint64_t;

    // False when the queue is full, and where there is no memory.
    [[nodiscard]] bool Post(const MSG& message);
    // Ahead of everything that waits. False without memory.
    [[nodiscard]] bool PostFirst(const MSG& message);
    // Ahead of the place `order`, and of whatever was put ahead of it before. False without memory.
    [[nodiscard]] bool PostBefore(Order order, const MSG& message);
    // A move joins the move that is the last input waiting, when nothing but the position differs. A place
    // replaces the one that waits, but neither passes the other: input lands where the window was then. An
    // event for which there is no memory is lost.
    void Report(SystemEvent event);

    // The first entry behind `order`; null at the end.
    Entry* FirstAfter(Order order, Order* place);
    using Taken = std::map<Order, Entry>::node_type;
    Taken Take(Order place) { return entries_.extract(place); }
    // Puts an entry that was taken back to its place.
    void Return(Taken entry) { entries_.insert(std::move(entry)); }
    void Erase(Order place) { entries_.erase(place); }
    // Drops events of one kind about one window, because a newer one replaces them.
    void DropEvents(SystemEvent::Kind kind, HWND window);
    void DropThreadMessages();
    void Clear() { entries_.clear(); }

  private:
    bool Put(Order place, Entry entry);
    Order Last() { return next_ += 64; }  // room between entries, for what goes ahead of one
    std::map<Order, Entry> entries_;
    Order next_ = Order{1} << 32;
    Order lastInput_ = 0;
    bool placedSinceInput_ = false;
};

}  // namespace platform
