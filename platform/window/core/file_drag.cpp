// Files dragged out of the program: the core's own modal loop.
#include <optional>

#include "platform/window/core/capture.h"
#include "platform/window/core/control.h"
#include "platform/window/core/display.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/message_pump.h"
#include "platform/window/core/modal_input.h"
#include "platform/window/core/window_table.h"
#include "platform/window/file_drag.h"

namespace platform {

namespace {

struct FileDragging {
    bool running = false;
    bool decided = false;  // dropped or given up: only the answer is still to come
    DROPEFFECT allowed = DROPEFFECT_NONE;
};

FileDragging& Drag() {
    return Lasting<FileDragging>();
}

// Asked anew each time: what is delivered meanwhile may end the window system.
FileDragger* Dragger() {
    WindowSystem* system = System();
    return system ? system->FileDrags() : nullptr;
}

DragPoint PointOf(POINT screen, const InputState& state) {
    const DROPEFFECT wanted = EffectOfKeys(state.shift, state.control, Drag().allowed);
    return DragPoint{screen, wanted, state.shift, state.control, state.alt};
}

void GiveUp(FileDragger& dragger) {
    Drag().decided = true;
    dragger.Cancel();
}

void FeedButton(FileDragger& dragger, const event::Pointer& event) {
    if (event.button != 1) {
        if (event.down) GiveUp(dragger);
    } else if (!event.down) {
        Drag().decided = true;
        dragger.Drop(PointOf(event.screen, event.state));
    }
}

// A drag on the stack. However it is left, the window system has none any more.
class RunningDrag {
  public:
    explicit RunningDrag(DROPEFFECT allowed) : serial_(SystemSerial()) { Drag() = {true, false, allowed}; }
    ~RunningDrag() {
        if (Goes())
            if (FileDragger* dragger = Dragger()) dragger->Cancel();
        Drag() = FileDragging();
    }
    RunningDrag(const RunningDrag&) = delete;
    RunningDrag& operator=(const RunningDrag&) = delete;

    // Nothing, once the window system that it began on is gone.
    std::optional<DROPEFFECT> Outcome() const {
        const FileDragger* dragger = Goes() ? Dragger() : nullptr;
        return dragger ? dragger->Outcome() : std::optional<DROPEFFECT>(DROPEFFECT_NONE);
    }

  private:
    bool Goes() const { return SystemSerial() == serial_; }
    unsigned serial_;
};

// While a drag runs, no window gets any input.
class DragTaker final : public InputTaker {
  public:
    bool Take(const event::Pointer& event) override;
    bool Take(const event::Key& event) override;
};
DragTaker taker;

bool DragTaker::Take(const event::Pointer& event) {
    const FileDragging& drag = Drag();
    FileDragger* const dragger = drag.running && !drag.decided ? Dragger() : nullptr;
    if (!dragger) return drag.running;
    if (event.kind == event::Pointer::Button)
        FeedButton(*dragger, event);
    else if (event.kind == event::Pointer::Moved && event.state.left)
        dragger->Follow(PointOf(event.screen, event.state));
    else if (event.kind == event::Pointer::Moved)
        GiveUp(*dragger);  // the release was lost to somebody else
    return true;
}

bool DragTaker::Take(const event::Key& event) {
    const FileDragging& drag = Drag();
    FileDragger* const dragger = drag.running && !drag.decided ? Dragger() : nullptr;
    if (!dragger) return drag.running;
    if (event.virtualKey == VK_ESCAPE && event.down)
        GiveUp(*dragger);
    else
        dragger->Follow(PointOf(PointerPosition(), event.state));
    return true;
}

}  // namespace

DROPEFFECT DragFiles(const FileOffer& offer) {
    if (!IsOwningThread() || Drag().running || !IsKeyDown(VK_LBUTTON)) return DROPEFFECT_NONE;
    if (offer.paths.empty() || offer.allowed == DROPEFFECT_NONE) return DROPEFFECT_NONE;
    ReleasePointerCapture();
    BeginTaking(taker);
    const RunningDrag drag(offer.allowed);
    FileDragger* dragger = Dragger();
    if (!dragger || !System()->IsButtonHeld()) return DROPEFFECT_NONE;
    if (!dragger->Begin(offer, PointOf(PointerPosition(), HeldInput()))) return DROPEFFECT_NONE;
    PumpUntil([&drag] { return drag.Outcome().has_value(); });
    return drag.Outcome().value_or(DROPEFFECT_NONE);
}

}  // namespace platform
