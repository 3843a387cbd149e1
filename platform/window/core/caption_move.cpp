#include "platform/window/core/caption_move.h"

#include <utility>

#include "platform/window/core/maximising.h"
#include "platform/window/core/messages.h"
#include "platform/window/core/place.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/sizing.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

void MoveTo(HWND handle, const CRect& rect) {
    const std::shared_ptr<Window> window = Core::Get().PeekShared(handle);
    if (window) SendPlaceMessages(window, ChangeRect(*window, rect, Redraw::Yes));
}

bool GoesOn(std::uint64_t serial) {
    const CaptionMove& move = Core::Get().captionMove;
    return move.serial == serial && move.window;
}

// Only where the pointer went: what the window system refused is not asked for again by the release.
void Follow(CaptionMove& state, POINT pointer) {
    if (std::exchange(state.followed, pointer) == pointer) return;
    const CaptionMove move = state;
    const CSize by = CPoint(pointer) - move.anchor;
    const Window* window = Core::Get().Peek(move.window);
    if (!IsSizingHit(move.hit))
        MoveTo(move.window, CRect(move.start.TopLeft() + by, move.start.Size()));
    else if (window)
        MoveTo(move.window, Sized(move.start, move.hit, by, window->leastSize, window->mostSize));
}

}  // namespace

void EndCaptionMove(HWND window) {
    Core& core = Core::Get();
    if (!window || !(core.captionMove.window == window)) return;
    core.captionMove.window = HWND();
    if (core.pointer.capture == window) ReleasePointerCapture();
    CallProcedure(window, WM_EXITSIZEMOVE, 0, 0);
}

bool FeedCaptionMove(const event::Pointer& event) {
    Core& core = Core::Get();
    const HWND window = core.captionMove.window;
    if (!window || event.kind == event::Pointer::Wheel) return static_cast<bool>(window);
    if (event.kind == event::Pointer::Moved && !event.state.left) {
        // The release was lost to somebody else.
        EndCaptionMove(window);
        return false;
    }
    const bool released = event.kind == event::Pointer::Button && event.button == 1 && !event.down;
    if (event.kind == event::Pointer::Moved || released) Follow(core.captionMove, event.screen);
    if (released) EndCaptionMove(window);
    return true;
}

bool FeedCaptionMove(const event::Key& event) {
    const CaptionMove move = Core::Get().captionMove;
    if (!move.window) return false;
    if (event.down && event.virtualKey == VK_ESCAPE) {
        MoveTo(move.window, move.start);
        EndCaptionMove(move.window);
    }
    return true;
}

void MoveByFrame(HWND handle, int hit) {
    Core& core = Core::Get();
    const std::shared_ptr<Window> window = core.PeekShared(handle);
    if (!window || window->IsChild() || window->IsMinimised() || window->IsMaximised()) return;
    if (core.captionMove.window || !core.keyboard.down[VK_LBUTTON] || !core.SystemOf(*window)) return;
    if (IsSizingHit(hit)) {
        AskSizes(window);
        if (!core.Peek(handle)) return;
    }

    if (!SetPointerCapture(handle)) return;
    // Let go before the pointer was ours: the release has come, or went to somebody else and never will.
    WindowSystem* const system = core.System();
    const bool held = system && system->IsButtonHeld();
    CaptionMove& move = core.captionMove;
    move.window = handle;
    move.hit = hit;
    move.anchor = move.followed = core.pointer.screen;
    move.start = window->rect;
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
