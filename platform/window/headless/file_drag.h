// Files dragged over the screen in memory: onto the program's own windows, and onto the receivers that tests
// have put behind them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include <platform/headless.h>

#include "platform/window/file_drag.h"
#include "platform/window/file_drop.h"
#include "platform/window/window_system.h"

namespace platform {

class HeadlessSystem;

// Drops on windows whose end is open.
class HeadlessFileDrops final : public FileReceiver {
  public:
    using Outcome = std::shared_ptr<std::optional<DROPEFFECT>>;
    std::uint64_t Open(Outcome outcome) {
        open_[++last_] = std::move(outcome);
        return last_;
    }
    void Finish(std::uint64_t drop, DROPEFFECT performed) override {
        if (const auto found = open_.extract(drop)) *found.mapped() = performed;
    }

  private:
    std::uint64_t last_ = 0;
    std::map<std::uint64_t, Outcome> open_;
};

// A receiver may do anything when it is asked, end the window system or itself included: what a drag needs
// after that stands in a state of its own.
class HeadlessFileDrag final : public FileDragger {
  public:
    explicit HeadlessFileDrag(HeadlessSystem& system) : system_(system) {}
    ~HeadlessFileDrag() override { Cancel(); }

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
        HWND window;                          // instead: one of ours
        DROPEFFECT effect = DROPEFFECT_NONE;  // that the receiver would perform
        bool dropped = false;
        HeadlessFileDrops::Outcome outcome = std::make_shared<std::optional<DROPEFFECT>>();
    };
    static DROPEFFECT DropOn(Headless::DropTarget* target, const State& state, const DragPoint& at);
    Headless::DropTarget* TargetAt(POINT screen) const;

    HeadlessSystem& system_;
    std::shared_ptr<State> state_;  // null: no drag
};

}  // namespace platform
