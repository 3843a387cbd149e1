// The selection that copying and pasting goes through.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "platform/window/text_clipboard.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/server_clock.h"

namespace platform::x11 {

// Owns the selection by a window of its own from Put on, until another program takes it: what was copied goes
// with this program.
class Clipboard final : public TextClipboard {
  public:
    Clipboard(std::shared_ptr<Connection> connection, const ServerClock& clock)
        : connection_(std::move(connection)), clock_(clock) {}
    ~Clipboard();
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    bool Put(std::optional<std::string> utf8) override;
    // Asked over a connection of its own, so that no other event has to wait for the answer.
    std::optional<std::string> Get() override;
    // True when the event was one about the selection.
    bool Handle(const xcb_generic_event_t& event);

  private:
    void Answer(const xcb_selection_request_event_t& request);
    // Puts what a target means into the property; false for a target that there is not.
    bool Write(const xcb_selection_request_event_t& request, xcb_atom_t property);

    std::shared_ptr<Connection> connection_;
    const ServerClock& clock_;
    xcb_window_t owner_ = 0;  // made with the first text
    bool owns_ = false;
    xcb_timestamp_t since_ = 0;
    std::optional<std::string> text_;
};

}  // namespace platform::x11
