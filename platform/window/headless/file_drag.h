// Files dragged over the screen in memory: onto the receivers that tests have put there.
#pragma once

#include <memory>
#include <optional>

#include <platform/headless.h>

#include "platform/window/file_drag.h"
#include "platform/window/window_system.h"

namespace platform {

class HeadlessSystem;

// A receiver may do anything when it is asked, end the window system or itself included: what a drag needs
// after that stands in a state of its own.
class HeadlessFileDrag final : public FileDragger {
  public:
    explicit HeadlessFileDrag(HeadlessSystem& system) : system_(system) {}
    ~HeadlessFileDrag() override { Cancel(); }

    bool IsButtonHeld() const override { return true; }  // the core knows
    bool Begin(const FileOffer& offer, const DragPoint& at) override;
    void Follow(const DragPoint& to) override;
    void Drop(const DragPoint& at) override;
    void Cancel() override;
    std::optional<DROPEFFECT> Outcome() const override;

    // From Begin to the drop.
    bool HoldsPointer() const { return state_ && !state_->dropped; }
    // What a drop would do now.
    CursorShape Cursor() const;

  private:
    struct State {
        FileOffer offer;
        Headless::DropTarget* over = nullptr;
        DROPEFFECT effect = DROPEFFECT_NONE;  // that the receiver would perform
        bool dropped = false;
        std::optional<DROPEFFECT> outcome;
    };
    Headless::DropTarget* TargetAt(POINT screen) const;

    HeadlessSystem& system_;
    std::shared_ptr<State> state_;  // null: no drag
};

}  // namespace platform
