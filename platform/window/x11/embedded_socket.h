// A window of ours, inside a top-level, that holds a window of another library: the socket of XEmbed. The X
// focus stays with the top-level; whether the embedded window has the keyboard is sent to it in messages, and
// its keys are handed on.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

#include "platform/window/embedding.h"
#include "platform/window/x11/connection.h"

namespace platform::x11 {

class EmbeddedSocket final : public EmbeddingSite {
  public:
    // `forget` is called when it ends.
    EmbeddedSocket(std::shared_ptr<Connection> connection, HWND topLevel, xcb_window_t parent,
                   EmbeddedEvents& events, std::function<void(EmbeddedSocket&)> forget);
    ~EmbeddedSocket() override;
    EmbeddedSocket(const EmbeddedSocket&) = delete;
    EmbeddedSocket& operator=(const EmbeddedSocket&) = delete;

    // ---- EmbeddingSite
    std::uint64_t Socket() const override { return id_; }
    void Adopt(std::uint64_t window) override;
    void SetBounds(const CRect& whole, const CRect& seen) override;
    void SetFocus(bool focused) override;
    bool PassKey(UINT virtualKey, bool down) override;

    // ---- for the window system
    HWND TopLevel() const { return topLevel_; }
    xcb_window_t Id() const { return id_; }
    bool HasFocus() const { return focused_; }
    // The top-level has become another native window.
    void MoveTo(xcb_window_t parent);
    // The native top-level is gone, and this with it.
    void LoseParent() { id_ = plug_ = 0; }
    // The window system ends.
    void LoseSystem() {
        LoseParent();
        forget_ = nullptr;
    }
    void KeepKey(const xcb_key_press_event_t& event, UINT virtualKey, bool down);
    void SendKey(xcb_key_press_event_t event);
    void OnMessage(const xcb_client_message_event_t& event);

  private:
    struct Key {
        xcb_key_press_event_t event;
        UINT virtualKey;
        bool down;
    };
    bool CanSend() const { return id_ != 0 && connection_->IsAlive(); }
    void Send(std::uint32_t message, std::uint32_t detail = 0);
    void Configure(xcb_window_t window, const CRect& rect);

    std::shared_ptr<Connection> connection_;
    HWND topLevel_;
    EmbeddedEvents& events_;
    std::function<void(EmbeddedSocket&)> forget_;
    xcb_window_t id_ = 0;
    xcb_window_t plug_ = 0;
    CRect whole_, seen_;
    bool shown_ = false;
    bool focused_ = false;
    std::deque<Key> keys_;  // reported, and not handed on yet
};

// Those of a window system, which live as long as the core wants them.
class EmbeddedSockets {
  public:
    EmbeddedSockets() = default;
    ~EmbeddedSockets();
    EmbeddedSockets(const EmbeddedSockets&) = delete;
    EmbeddedSockets& operator=(const EmbeddedSockets&) = delete;

    std::unique_ptr<EmbeddingSite> Make(const std::shared_ptr<Connection>& connection, HWND topLevel,
                                        xcb_window_t parent, EmbeddedEvents& events);
    // False for a message to another window.
    bool Handle(const xcb_client_message_event_t& event);
    EmbeddedSocket* FocusedIn(HWND topLevel) const;  // null without one
    void Move(HWND topLevel, xcb_window_t parent);
    void LoseParent(HWND topLevel);

  private:
    std::vector<EmbeddedSocket*> sockets_;
};

}  // namespace platform::x11
