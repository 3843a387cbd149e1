// Events as they are taken from the connection, of motion only what is newest.
#pragma once

#include <memory>
#include <utility>

#include <xcb/xcb.h>

#include "platform/window/x11/connection.h"
#include "platform/window/x11/reply.h"

namespace platform::x11 {

class EventQueue {
  public:
    using Event = Reply<xcb_generic_event_t>;

    explicit EventQueue(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

    // Null when none has arrived.
    Event Take();
    // Whether one was read already: then the socket may be silent.
    bool IsFilled();

  private:
    std::shared_ptr<Connection> connection_;
    Event ahead_;  // read, and not taken yet
};

}  // namespace platform::x11
