#include "platform/window/core/caption_move.h"

#include "platform/window/core/messages.h"
#include "platform/window/core/place.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

void MoveTo(HWND handle, const CRect& rect) {
    const std::shared_ptr<Window> window = Core::Get().PeekShared(handle);
    if (window) SendPlaceMessages(window, ChangeRect(*window, rect, Redraw::Yes));
}

void Follow(const CaptionMove& move, POINT pointer) {
    CRect rect = move.start;
    rect.OffsetRect(pointer.x - move.anchor.x, pointer.y - move.anchor.y);
    MoveTo(move.window, rect);
}

}  // namespace

void EndCaptionMove(HWND window) {
    Core& core = Core::Get();
    if (!window || !(core.captionMove.window == window)) return;
    core.captionMove.window = HWND();
    if (core.pointer.capture == window) ReleasePointerCapture();
    CallProcedure(window, WM_EXITSIZEMOVE, 0, 0);
}

bool FeedCaptionMove(const SystemEvent& event) {
    Core& core = Core::Get();
    const CaptionMove move = core.captionMove;
    if (!move.window) return false;
    switch (event.kind) {
        case SystemEvent::Kind::Move:
            if (!event.state.left) {
                // The release was lost to somebody else.
                EndCaptionMove(move.window);
                return false;
            }
            Follow(move, event.screen);
            return true;
        case SystemEvent::Kind::Button:
            if (event.button == 1 && !event.down) {
                Follow(move, event.screen);
                EndCaptionMove(move.window);
            }
            return true;
        case SystemEvent::Kind::Key:
            if (event.down && event.virtualKey == VK_ESCAPE) {
                MoveTo(move.window, move.start);
                EndCaptionMove(move.window);
            }
            return true;
        case SystemEvent::Kind::Wheel:
            return true;
        default:
            return false;
    }
}

void MoveByCaption(HWND handle) {
    Core& core = Core::Get();
    Window* window = core.Peek(handle);
    if (!window || window->IsChild() || window->IsMinimised() || core.captionMove.window) return;
    if (!core.keyboard.down[VK_LBUTTON] || !core.SystemOf(*window)) return;

    SetPointerCapture(handle);
    CaptionMove& move = core.captionMove;
    move.window = handle;
    move.anchor = core.pointer.screen;
    move.start = window->rect;
    const std::uint64_t serial = ++move.serial;
    CallProcedure(handle, WM_ENTERSIZEMOVE, 0, 0);
    const auto goesOn = [&] { return core.captionMove.serial == serial && core.captionMove.window; };
    while (goesOn()) {
        MSG message{};
        if (Retrieve(message, MessageFilter(), Take::Yes, WithQuit::No)) {
            DispatchOwn(message);
            continue;
        }
        WindowSystem* system = core.System();
        if (core.quit || !system) {
            EndCaptionMove(handle);
            return;
        }
        // A clock that jumps to the next timer must not run away while no input can come.
        const auto deadline = system->ClockIsVirtual() ? std::nullopt : core.timers.NextDue();
        if (system->Wait(deadline)) continue;
        if (core.IsLost() || !system->IsAlive()) EndCaptionMove(handle);
        return;
    }
}

}  // namespace platform
