#include "platform/window/core/file_drag.h"

#include "platform/window/core/control.h"
#include "platform/window/core/messages.h"
#include "platform/window/core/pointer.h"

namespace platform {

namespace {

// Asked anew each time: what is delivered meanwhile may end the window system.
FileDragger* Dragger() {
    WindowSystem* system = Core::Get().System();
    return system ? system->FileDrags() : nullptr;
}

DragPoint PointOf(POINT screen, const InputState& state) {
    const DROPEFFECT wanted = EffectOfKeys(state.shift, state.control, Core::Get().fileDrag.allowed);
    return DragPoint{screen, wanted, state.shift, state.control, state.alt};
}

// As of the message being handled.
InputState StateNow() {
    const bool(&down)[256] = Core::Get().keyboard.down;
    InputState state;
    state.shift = down[VK_SHIFT];
    state.control = down[VK_CONTROL];
    state.alt = down[VK_MENU];
    state.left = down[VK_LBUTTON];
    return state;
}

void GiveUp(FileDragger& dragger) {
    Core::Get().fileDrag.decided = true;
    dragger.Cancel();
}

void FeedButton(FileDragger& dragger, const event::Pointer& event) {
    if (event.button != 1) {
        if (event.down) GiveUp(dragger);
    } else if (!event.down) {
        Core::Get().fileDrag.decided = true;
        dragger.Drop(PointOf(event.screen, event.state));
    }
}

// A drag on the stack. However it is left, the window system has none any more.
class RunningDrag {
  public:
    explicit RunningDrag(DROPEFFECT allowed) : serial_(Core::Get().SystemSerial()) {
        Core::Get().fileDrag = {true, false, allowed};
    }
    ~RunningDrag() {
        if (Goes())
            if (FileDragger* dragger = Dragger()) dragger->Cancel();
        Core::Get().fileDrag = FileDragging();
    }
    RunningDrag(const RunningDrag&) = delete;
    RunningDrag& operator=(const RunningDrag&) = delete;

    // Nothing, once the window system that it began on is gone.
    std::optional<DROPEFFECT> Outcome() const {
        const FileDragger* dragger = Goes() ? Dragger() : nullptr;
        return dragger ? dragger->Outcome() : std::optional<DROPEFFECT>(DROPEFFECT_NONE);
    }

  private:
    bool Goes() const { return Core::Get().SystemSerial() == serial_; }
    unsigned serial_;
};

}  // namespace

bool FeedFileDrag(const event::Pointer& event) {
    const FileDragging& drag = Core::Get().fileDrag;
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

bool FeedFileDrag(const event::Key& event) {
    const FileDragging& drag = Core::Get().fileDrag;
    FileDragger* const dragger = drag.running && !drag.decided ? Dragger() : nullptr;
    if (!dragger) return drag.running;
    if (event.virtualKey == VK_ESCAPE && event.down)
        GiveUp(*dragger);
    else
        dragger->Follow(PointOf(Core::Get().pointer.screen, event.state));
    return true;
}

DROPEFFECT DragFiles(const FileOffer& offer) {
    Core& core = Core::Get();
    if (!core.IsOwningThread() || core.fileDrag.running || !core.keyboard.down[VK_LBUTTON])
        return DROPEFFECT_NONE;
    if (offer.paths.empty() || offer.allowed == DROPEFFECT_NONE) return DROPEFFECT_NONE;
    ReleasePointerCapture();
    const RunningDrag drag(offer.allowed);
    FileDragger* dragger = Dragger();
    if (!dragger || !core.System()->IsButtonHeld()) return DROPEFFECT_NONE;
    if (!dragger->Begin(offer, PointOf(core.pointer.screen, StateNow()))) return DROPEFFECT_NONE;
    PumpUntil([&drag] { return drag.Outcome().has_value(); });
    return drag.Outcome().value_or(DROPEFFECT_NONE);
}

}  // namespace platform
