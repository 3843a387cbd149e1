// Our side of a drag of files to another client.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <xcb/xcb.h>

#include "platform/window/file_drag.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/cursors.h"
#include "platform/window/x11/drag/drag_icon.h"
#include "platform/window/x11/drag/target_search.h"
#include "platform/window/x11/drag/xdnd.h"
#include "platform/window/x11/server_clock.h"
#include "platform/window/x11/window_manager.h"

namespace platform::x11 {

// The drag has a window of its own, which holds pointer, keyboard and selection: what becomes of the dialog
// that it was begun over does not matter to it. Nothing here waits; what a receiver owes is awaited between
// events, and no longer than so long.
class DragSource final : public FileDragger {
  public:
    DragSource(std::shared_ptr<Connection> connection, Cursors& cursors, const ServerClock& clock,
               const WindowManager& manager)
        : connection_(connection),
          cursors_(cursors),
          clock_(clock),
          manager_(manager),
          icon_(std::move(connection)) {}
    ~DragSource() override { Cancel(); }

    bool Begin(const FileOffer& offer, const DragPoint& at) override;
    void Follow(const DragPoint& to) override;
    void Drop(const DragPoint& at) override;
    void Cancel() override;
    std::optional<DROPEFFECT> Outcome() const override;

    // ---- For the loop that reads events

    // Pointer and keyboard events of this window are the drag's.
    bool IsInput(xcb_window_t window) const { return window_ != 0 && window == window_; }
    // True when the event was for the drag alone.
    bool Handle(const xcb_generic_event_t& event);
    // Acts on what has been waited for long enough.
    void Settle(std::uint64_t now);
    std::optional<std::uint64_t> Due() const;
    // Whether the outcome became known since this was asked last.
    bool TakeNews() { return std::exchange(news_, false); }

  private:
    enum class Phase {
        None,
        Dragging,
        Dropping,   // released; the receiver has not taken them yet
        Finishing,  // taken; the receiver has not said yet what it did
        Over
    };

    bool Grab();
    void MakeWindow();
    void Ungrab();
    void OfferActions(DROPEFFECT wanted);
    void Retarget();
    void Enter(const DragTarget& target);
    void Leave();
    void Watch(const DragTarget& target);
    void Unwatch();
    void Ask();
    void HandOver();
    void Finish(DROPEFFECT outcome);
    void ShowCursor();
    void Send(xcb_atom_t type, std::uint32_t a = 0, std::uint32_t b = 0, std::uint32_t c = 0,
              std::uint32_t d = 0);

    void OnStatus(const xcb_client_message_event_t& event);
    void OnFinished(const xcb_client_message_event_t& event);
    void OnGone(xcb_window_t window);
    void OnRequest(const xcb_selection_request_event_t& event);
    bool Answer(const xcb_selection_request_event_t& event, xcb_atom_t property);
    void Write(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& bytes);

    std::shared_ptr<Connection> connection_;
    Cursors& cursors_;
    const ServerClock& clock_;
    const WindowManager& manager_;
    DragIcon icon_;
    XdndAtoms atoms_;  // resolved with the first drag

    Phase phase_ = Phase::None;
    xcb_window_t window_ = 0;
    xcb_timestamp_t began_ = 0;
    std::string list_;  // of URIs
    DROPEFFECT allowed_ = DROPEFFECT_NONE;
    DROPEFFECT offered_ = DROPEFFECT_NONE;  // by the property, as it is now
    DragPoint point_;
    DragTarget target_;
    std::uint32_t maskBefore_ = 0;  // what else we hear of the target's window
    // One question is under way at a time; the latest point is asked about next.
    bool asking_ = false;
    bool askAgain_ = false;
    DragPoint asked_;
    bool accepted_ = false;
    DROPEFFECT effect_ = DROPEFFECT_NONE;  // that the target announced
    CursorShape cursor_ = CursorShape::DropRefused;

    std::uint64_t released_ = 0;  // when
    std::uint64_t due_ = 0;       // when to act next, in the phases that wait
    std::optional<DROPEFFECT> outcome_;
    bool news_ = false;
};

}  // namespace platform::x11
