// Every key of the keyboard, whoever has it: XInput's raw events, which no grab keeps away.
#pragma once

#include <memory>
#include <optional>

#include <xcb/xcb.h>

#include "platform/window/key_watch.h"
#include "platform/window/window_events.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/keyboard.h"

namespace platform::x11 {

class RawKeys final : public KeyWatch {
  public:
    RawKeys(std::shared_ptr<Connection> connection, Keyboard& keyboard)
        : connection_(std::move(connection)), keyboard_(keyboard) {}

    // False on a server without raw keys that come during grabs.
    bool Watch(bool on) override;

    struct Stroke {
        UINT virtualKey = 0;
        UINT keyCode = 0;
        bool down = false;
        xcb_timestamp_t time = 0;
    };
    // What an event says; empty for an event about anything else, or one that came before.
    std::optional<Stroke> Read(const xcb_ge_generic_event_t& event);
    // Down after the stroke read last.
    const KeySet& Held() const { return held_; }

  private:
    bool Start();
    void Select(std::uint32_t events);

    std::shared_ptr<Connection> connection_;
    Keyboard& keyboard_;
    std::uint8_t extension_ = 0;  // 0: not asked for yet
    bool watching_ = false;
    KeySet held_;
    Stroke last_;
};

}  // namespace platform::x11
