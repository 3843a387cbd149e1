#include "platform/window/core/pointer.h"

#include "platform/window/core/activation.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/clicks.h"
#include "platform/window/core/control.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/cursor.h"
#include "platform/window/core/display.h"
#include "platform/window/core/hit_test.h"
#include "platform/window/core/hover.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/modal_input.h"
#include "platform/window/core/sizing.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

WPARAM KeyFlags(const InputState& state) {
    WPARAM flags = 0;
    if (state.left) flags |= MK_LBUTTON;
    if (state.right) flags |= MK_RBUTTON;
    if (state.middle) flags |= MK_MBUTTON;
    if (state.shift) flags |= MK_SHIFT;
    if (state.control) flags |= MK_CONTROL;
    return flags;
}

// The state after the event: a window system may report the one before.
InputState StateAfter(const event::Pointer& event) {
    InputState state = event.state;
    if (event.kind != event::Pointer::Button) return state;
    (event.button == 1 ? state.left : event.button == 2 ? state.middle : state.right) = event.down;
    return state;
}

UINT ButtonMessage(const event::Pointer& event, HWND target) {
    const UINT base = event.button == 1   ? UINT{WM_LBUTTONDOWN}
                      : event.button == 2 ? UINT{WM_MBUTTONDOWN}
                                          : UINT{WM_RBUTTONDOWN};
    // Down, up and double click are neighbours for each button.
    if (!event.down) return base + 1;
    return IsDoubleClick(event, target) ? base + 2 : base;
}

// The window that a pointer event is for.
HWND TargetOf(const event::Pointer& event, int* hit) {
    *hit = HTCLIENT;
    if (IsPointerCaptured()) return CaptureWindow();
    HWND topLevel = event.window;
    const Window* window = Peek(topLevel);
    // While a button is held the window system may go on reporting for the window it was pressed on.
    if (!window || !ScreenRect(*window).PtInRect(event.screen)) {
        WindowSystem* system = System();
        topLevel = system ? system->WindowAt(event.screen) : HWND();
    }
    return HitTopLevel(topLevel, event.screen, hit);
}

void ClickActivates(HWND target) {
    const HWND top = TopLevelOf(target);
    const Window* window = Peek(top);
    if (!window || (window->exStyle & WS_EX_NOACTIVATE)) return;
    if (ActiveWindow() == top && Stack().Top() == top) return;
    ActivateWindow(top, WA_CLICKACTIVE);
}

}  // namespace

Routed RoutePointer(const event::Pointer& event, MessageQueue::Order place) {
    Routed routed;
    NotePointerPosition(event.screen);
    if (TakenByLoop(event)) return routed;
    const HWND target = TargetOf(event, &routed.hit);
    // The border is outside of what is tracked.
    if (!IsPointerCaptured() && LeaveTracked(IsSizingHit(routed.hit) ? HWND() : target, place)) {
        routed.outcome = Routed::Outcome::Later;
        return routed;
    }
    SetHoveredWindow(target);
    const Window* window = Peek(target);
    if (!window) return routed;
    // A disabled window that took the pointer has it until it lets go, or nobody would get it any more.
    if (!(target == CaptureWindow()) && !IsEnabledInTree(*window)) {
        if (event.kind == event::Pointer::Button && event.down) ActivateModalOf(TopLevelOf(target));
        return routed;
    }
    MSG& message = routed.message;
    message.hwnd = target;
    message.time = static_cast<DWORD>(event.time);
    message.pt = event.screen;
    message.wParam = KeyFlags(StateAfter(event));
    const POINT client = ToClient(*window, event.screen);
    message.lParam = MAKELPARAM(client.x, client.y);
    if (routed.hit != HTCLIENT) {
        const bool pressed = event.kind == event::Pointer::Button && event.button == 1 && event.down;
        // Over the border the cursor is chosen anew with each move.
        const bool moved = event.kind == event::Pointer::Moved && IsSizingHit(routed.hit);
        if (!pressed && !moved) return routed;
        message.message = moved                          ? UINT{WM_NCMOUSEMOVE}
                          : IsDoubleClick(event, target) ? UINT{WM_NCLBUTTONDBLCLK}
                                                         : UINT{WM_NCLBUTTONDOWN};
        message.wParam = static_cast<WPARAM>(routed.hit);
        message.lParam = MAKELPARAM(event.screen.x, event.screen.y);
    } else if (event.kind == event::Pointer::Moved) {
        message.message = WM_MOUSEMOVE;
    } else if (event.kind == event::Pointer::Wheel) {
        message.message = WM_MOUSEWHEEL;
        message.wParam |= static_cast<WPARAM>(static_cast<WORD>(event.delta)) << 16;
        message.lParam = MAKELPARAM(event.screen.x, event.screen.y);
    } else {
        message.message = ButtonMessage(event, target);
    }
    routed.outcome = Routed::Outcome::Message;
    return routed;
}

bool TakePointer(const event::Pointer& event, const Routed& routed) {
    const MSG& message = routed.message;
    if (event.kind == event::Pointer::Button && event.down) {
        const bool isFirst = routed.hit == HTCLIENT ? message.message == ButtonMessage(event, HWND())
                                                    : message.message == WM_NCLBUTTONDOWN;
        if (isFirst)
            NotePress(event, message.hwnd);
        else
            ForgetLastClick();  // a double click is complete; the next press starts anew
        ClickActivates(message.hwnd);
        if (!Peek(message.hwnd)) return false;
    }
    if (IsPointerCaptured() || event.kind == event::Pointer::Wheel) return true;
    SetCursorWindow(TopLevelOf(message.hwnd));
    CallProcedure(message.hwnd, WM_SETCURSOR, ToWParam(message.hwnd),
                  MAKELPARAM(routed.hit, message.message));
    return Peek(message.hwnd) != nullptr;
}

void PointerLeftTopLevel(HWND topLevel) {
    if (IsPointerCaptured()) return;
    if (TopLevelOf(HoveredWindow()) == topLevel) SetHoveredWindow(HWND());
    if (TopLevelOf(TrackedWindow()) == topLevel) LeaveTracked(HWND(), 0);
}

void CheckPointer() {
    NotePointerCheck();
    if (!TrackedWindow() || IsPointerCaptured()) return;
    WindowSystem* system = System();
    if (!system) return;
    int hit = HTNOWHERE;
    const HWND now = FindPointerTarget(system->PointerPosition(), &hit);
    SetHoveredWindow(now);
    LeaveTracked(now, 0);
}

}  // namespace platform
