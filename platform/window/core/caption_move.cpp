#include "platform/window/core/caption_move.h"

#include <utility>

#include "platform/window/core/bounds.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/display.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/message_pump.h"
#include "platform/window/core/modal_input.h"
#include "platform/window/core/size_limits.h"
#include "platform/window/core/sizing.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

// A window being moved by its caption, or sized by its border.
struct CaptionMove {
    HWND window;           // empty: no move
    int hit = HTCAPTION;   // or the sizing code of what is dragged
    POINT anchor{0, 0};    // the pointer at the start
    POINT followed{0, 0};  // and as of the last move
    CRect start;
    std::uint64_t serial = 0;  // counts moves
};

CaptionMove& Move() {
    return Lasting<CaptionMove>();
}

// A move ends when somebody else takes the pointer.
void LoseCapture() {
    EndCaptionMove(Move().window);
}

void MoveTo(HWND handle, const CRect& rect) {
    const std::shared_ptr<Window> window = PeekShared(handle);
    if (window) SendBoundsMessages(window, ChangeBounds(*window, rect, Redraw::Yes));
}

bool GoesOn(std::uint64_t serial) {
    const CaptionMove& move = Move();
    return move.serial == serial && move.window;
}

// Only where the pointer went: what the window system refused is not asked for again by the release.
void Follow(CaptionMove& state, POINT pointer) {
    if (std::exchange(state.followed, pointer) == pointer) return;
    const CaptionMove move = state;
    const CSize by = CPoint(pointer) - move.anchor;
    const Window* window = Peek(move.window);
    if (!IsSizingHit(move.hit))
        MoveTo(move.window, CRect(move.start.TopLeft() + by, move.start.Size()));
    else if (window)
        MoveTo(move.window, Sized(move.start, move.hit, by, window->leastSize, window->mostSize));
}

class MoveTaker final : public InputTaker {
  public:
    bool Take(const event::Pointer& event) override;
    bool Take(const event::Key& event) override;
};
MoveTaker taker;

bool MoveTaker::Take(const event::Pointer& event) {
    const HWND window = Move().window;
    if (!window || event.kind == event::Pointer::Wheel) return static_cast<bool>(window);
    if (event.kind == event::Pointer::Moved && !event.state.left) {
        // The release was lost to somebody else.
        EndCaptionMove(window);
        return false;
    }
    const bool released = event.kind == event::Pointer::Button && event.button == 1 && !event.down;
    if (event.kind == event::Pointer::Moved || released) Follow(Move(), event.screen);
    if (released) EndCaptionMove(window);
    return true;
}

bool MoveTaker::Take(const event::Key& event) {
    const CaptionMove move = Move();
    if (!move.window) return false;
    if (event.down && event.virtualKey == VK_ESCAPE) {
        MoveTo(move.window, move.start);
        EndCaptionMove(move.window);
    }
    return true;
}

}  // namespace

void EndCaptionMove(HWND window) {
    if (!window || !(Move().window == window)) return;
    Move().window = HWND();
    if (CaptureWindow() == window) ReleasePointerCapture();
    CallProcedure(window, WM_EXITSIZEMOVE, 0, 0);
}

void ForgetCaptionMove(HWND window) {
    if (!window || Move().window == window) Move().window = HWND();
}

void MoveByFrame(HWND handle, int hit) {
    const std::shared_ptr<Window> window = PeekShared(handle);
    if (!window || window->IsChild() || window->IsMinimised() || window->IsMaximised()) return;
    if (Move().window || !IsKeyDown(VK_LBUTTON) || !SystemOf(*window)) return;
    if (IsSizingHit(hit)) {
        AskSizes(window);
        if (!Peek(handle)) return;
    }

    if (!SetPointerCapture(handle, &LoseCapture)) return;
    // Let go before the pointer was ours: the release has come, or went to somebody else and never will.
    WindowSystem* const system = System();
    const bool held = system && system->IsButtonHeld();
    CaptionMove& move = Move();
    move.window = handle;
    move.hit = hit;
    move.anchor = move.followed = PointerPosition();
    move.start = window->rect;
    BeginTaking(taker);
    const std::uint64_t serial = ++move.serial;
    try {
        CallProcedure(handle, WM_ENTERSIZEMOVE, 0, 0);
        const auto over = [serial] { return !GoesOn(serial); };
        if (!held) PumpWaiting(over);
        if (!held || PumpUntil(over) == Pumped::NoMore)
            if (!over()) EndCaptionMove(handle);
    } catch (...) {
        // What a handler throws ends the move; the handler of its last message throws in vain.
        try {
            if (GoesOn(serial)) EndCaptionMove(handle);
        } catch (...) {
        }
        throw;
    }
}

}  // namespace platform
