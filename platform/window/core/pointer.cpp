#include "platform/window/core/pointer.h"

#include <cstdlib>

#include "platform/window/core/activation.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/file_drag.h"
#include "platform/window/core/keyboard.h"
#include "platform/window/core/sizing.h"
#include "platform/window/core/system_cursors.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

constexpr UINT kDoubleClickTime = 500;  // milliseconds
constexpr int kDoubleClickBox = 4;      // pixels, around the first press

POINT ToClient(const Window& window, POINT screen) {
    const CPoint origin = ScreenOrigin(window);
    return POINT{screen.x - origin.x, screen.y - origin.y};
}

HWND HitInside(HWND handle, POINT client, POINT screen, int* hit);

// The same for the children of a window, from the topmost down. Those elsewhere cost a look at their place.
HWND HitChildren(const Window& window, POINT client, POINT screen, int* hit) {
    for (std::size_t i = window.children.size(); i-- > 0;) {
        if (i >= window.children.size()) continue;  // asking one may destroy others
        const Window* child = Core::Get().Peek(window.children[i]);
        if (!child || !child->rect.PtInRect(client)) continue;
        const POINT inChild{client.x - child->rect.left, client.y - child->rect.top};
        if (const HWND found = HitInside(child->handle, inChild, screen, hit)) return found;
    }
    return HWND();
}

// Looks from a window down to its deepest child at the point, given in the window's coordinates and the
// screen's. Empty when all of them let it through.
HWND HitInside(HWND handle, POINT client, POINT screen, int* hit) {
    Core& core = Core::Get();
    const std::shared_ptr<Window> window = core.PeekShared(handle);
    if (!window || !window->IsShown() || !window->Bounds().PtInRect(client)) return HWND();
    if (window->shape && !window->shape->Contains(client.x, client.y)) return HWND();
    if (const HWND found = HitChildren(*window, client, screen, hit)) return found;
    if (!core.Peek(handle) || window->type->letsPointerThrough) return HWND();
    // A disabled window is asked nothing; it stops the pointer.
    *hit = HTCLIENT;
    if (window->IsDisabled()) return handle;
    if (!window->IsChild() && (window->exStyle & WS_EX_TRANSPARENT) && window->IsLayered()) return HWND();
    *hit = static_cast<int>(CallProcedure(window, WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y)));
    return *hit == HTTRANSPARENT ? HWND() : handle;
}

// Whether a top-level would catch the pointer there, judged by its own pixels: needed only for what lies
// under a window that passed the pointer on.
bool CatchesPointer(const Window& topLevel, POINT screen) {
    if (!topLevel.rect.PtInRect(screen) || !IsOnDisplay(topLevel)) return false;
    const POINT client = ScaledPoint(ToClient(topLevel, screen), ScreenScale());
    return topLevel.layering.told.CatchesPointer(topLevel.surface.get(), client.x, client.y);
}

HWND HitAt(HWND topLevel, POINT screen, int* hit) {
    const Window* window = Core::Get().Peek(topLevel);
    return window ? HitInside(topLevel, ToClient(*window, screen), screen, hit) : HWND();
}

HWND HitTopLevel(HWND topLevel, POINT screen, int* hit) {
    Core& core = Core::Get();
    HWND next = core.stack.Below(topLevel);  // asking one may destroy it
    if (const HWND found = HitAt(topLevel, screen, hit)) return found;
    while (const HWND at = next) {
        next = core.stack.Below(at);
        const Window* window = core.Peek(at);
        if (!window || !CatchesPointer(*window, screen)) continue;
        if (const HWND found = HitAt(at, screen, hit)) return found;
    }
    return HWND();
}

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

bool IsDoubleClick(const event::Pointer& event, HWND target) {
    const auto& press = Core::Get().pointer.press;
    return press.button == event.button && press.window == target && event.time >= press.time &&
           event.time - press.time <= kDoubleClickTime &&
           std::abs(event.screen.x - press.screen.x) * 2 <= kDoubleClickBox &&
           std::abs(event.screen.y - press.screen.y) * 2 <= kDoubleClickBox;
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
    Core& core = Core::Get();
    *hit = HTCLIENT;
    if (core.Peek(core.pointer.capture)) return core.pointer.capture;
    HWND topLevel = event.window;
    const Window* window = core.Peek(topLevel);
    // While a button is held the window system may go on reporting for the window it was pressed on.
    if (!window || !ScreenRect(*window).PtInRect(event.screen)) {
        WindowSystem* system = core.System();
        topLevel = system ? system->WindowAt(event.screen) : HWND();
    }
    return HitTopLevel(topLevel, event.screen, hit);
}

// Says goodbye to the window that asked for it, ahead of the entry at `place`.
bool LeaveTracked(HWND now, MessageQueue::Order place) {
    Core& core = Core::Get();
    const HWND tracked = core.pointer.tracked;
    if (!tracked || tracked == now || core.Peek(core.pointer.capture)) return false;
    if (!core.Peek(tracked)) {
        core.pointer.tracked = HWND();
        return false;
    }
    MSG message{};
    message.hwnd = tracked;
    message.message = WM_MOUSELEAVE;
    message.time = static_cast<DWORD>(core.Now());
    message.pt = core.pointer.screen;
    // Without memory the window is told with a later move.
    const bool posted = place ? core.queue.PostBefore(place, message) : core.queue.PostFirst(message);
    if (posted) core.pointer.tracked = HWND();
    return posted;
}

void RequestCheck() {
    Core& core = Core::Get();
    if (!core.pointer.tracked || core.pointer.checkPending) return;
    core.pointer.checkPending = true;
    core.queue.RequestCheck(PointerCheck());
}

CursorShape ShapeOf(HCURSOR cursor) {
    const SystemCursor* const known = FindCursor(cursor.Index());
    return known ? known->shape : CursorShape::Arrow;
}

bool IsCursor(HCURSOR cursor) {
    return cursor.Generation() == 1 && FindCursor(cursor.Index());
}

HCURSOR CursorOf(CursorShape shape) {
    return HCURSOR(IdOfCursor(shape), 1);
}

void ClickActivates(HWND target) {
    Core& core = Core::Get();
    const HWND top = TopLevelOf(target);
    const Window* window = core.Peek(top);
    if (!window || (window->exStyle & WS_EX_NOACTIVATE)) return;
    if (core.activation.active == top && core.stack.Top() == top) return;
    ActivateWindow(top, WA_CLICKACTIVE);
}

}  // namespace

HWND FindPointerTarget(POINT screen, int* hit) {
    WindowSystem* system = Core::Get().System();
    *hit = HTNOWHERE;
    return system ? HitTopLevel(system->WindowAt(screen), screen, hit) : HWND();
}

Routed RoutePointer(const event::Pointer& event, MessageQueue::Order place) {
    Core& core = Core::Get();
    Routed routed;
    core.pointer.screen = event.screen;
    if (FeedFileDrag(event) || FeedCaptionMove(event)) return routed;
    const HWND target = TargetOf(event, &routed.hit);
    // The border is outside of what is tracked.
    if (LeaveTracked(IsSizingHit(routed.hit) ? HWND() : target, place)) {
        routed.outcome = Routed::Outcome::Later;
        return routed;
    }
    core.pointer.hover = target;
    const Window* window = core.Peek(target);
    if (!window) return routed;
    // A disabled window that took the pointer has it until it lets go, or nobody would get it any more.
    if (!(target == core.pointer.capture) && !IsEnabledInTree(*window)) {
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
    Core& core = Core::Get();
    const MSG& message = routed.message;
    if (event.kind == event::Pointer::Button && event.down) {
        auto& press = core.pointer.press;
        const bool isFirst = routed.hit == HTCLIENT ? message.message == ButtonMessage(event, HWND())
                                                    : message.message == WM_NCLBUTTONDOWN;
        if (isFirst)
            press = {message.hwnd, event.button, event.screen, event.time};
        else
            press = {};  // a double click is complete; the next press starts anew
        ClickActivates(message.hwnd);
        if (!core.Peek(message.hwnd)) return false;
    }
    if (core.Peek(core.pointer.capture) || event.kind == event::Pointer::Wheel) return true;
    core.pointer.cursorWindow = TopLevelOf(message.hwnd);
    CallProcedure(message.hwnd, WM_SETCURSOR, ToWParam(message.hwnd),
                  MAKELPARAM(routed.hit, message.message));
    return core.Peek(message.hwnd) != nullptr;
}

void PointerLeftTopLevel(HWND topLevel) {
    Core& core = Core::Get();
    if (core.Peek(core.pointer.capture)) return;
    if (TopLevelOf(core.pointer.hover) == topLevel) core.pointer.hover = HWND();
    if (TopLevelOf(core.pointer.tracked) == topLevel) LeaveTracked(HWND(), 0);
}

void ForgetLastClick() {
    Core::Get().pointer.press = {};
}

void CheckPointer() {
    Core& core = Core::Get();
    core.pointer.checkPending = false;
    if (!core.pointer.tracked || core.Peek(core.pointer.capture)) return;
    WindowSystem* system = core.System();
    if (!system) return;
    int hit = HTNOWHERE;
    const HWND now = FindPointerTarget(system->PointerPosition(), &hit);
    core.pointer.hover = now;
    LeaveTracked(now, 0);
}

bool SetPointerCapture(HWND window) {
    Core& core = Core::Get();
    const HWND before = core.pointer.capture;
    if (before == window) return true;
    core.pointer.capture = window;
    // A move by the caption ends when somebody else takes the pointer.
    if (!(core.captionMove.window == window)) EndCaptionMove(core.captionMove.window);
    const Window* record = core.Peek(window);
    const Window* top = record ? TopLevelOf(*record) : nullptr;
    WindowSystem* system = top ? core.SystemOf(*top) : nullptr;
    if (!system || system->GrabPointer(top->handle)) return true;
    ReleasePointerCapture();
    return false;
}

void ReleasePointerCapture() {
    Core& core = Core::Get();
    if (!core.pointer.capture) return;
    const HWND before = core.pointer.capture;
    core.pointer.capture = HWND();
    if (WindowSystem* system = core.System()) system->ReleasePointer();
    RequestCheck();
    if (core.captionMove.window == before) EndCaptionMove(before);
}

void WithdrawPointer(const Window& window) {
    Core& core = Core::Get();
    if (IsSameOrInside(core.pointer.capture, window.handle)) ReleasePointerCapture();
    if (IsSameOrInside(core.pointer.hover, window.handle)) core.pointer.hover = HWND();
    if (IsSameOrInside(core.pointer.tracked, window.handle)) RequestCheck();
    EndCaptionMove(window.handle);
}

void ShowCursorDecided() {
    Core& core = Core::Get();
    Window* window = core.Peek(core.pointer.cursorWindow);
    if (!window) return;
    const CursorShape shape = core.pointer.cursor ? ShapeOf(core.pointer.cursor) : CursorShape::None;
    if (shape == window->cursorTold) return;
    window->cursorTold = shape;
    if (WindowSystem* system = core.SystemOf(*window)) system->SetCursor(window->handle, shape);
}

LRESULT DefaultSetCursor(Window& window, WPARAM wParam, LPARAM lParam) {
    if (window.IsChild()) {
        const HWND handle = window.handle;
        if (CallProcedure(window.parent, WM_SETCURSOR, wParam, lParam)) return TRUE;
        if (!Core::Get().Peek(handle)) return FALSE;
    }
    if (const int hit = LOWORD(static_cast<std::uint64_t>(lParam)); IsSizingHit(hit)) {
        Core::Get().pointer.cursor = CursorOf(SizingCursor(hit));
        return TRUE;
    }
    if (!window.type->cursor) return FALSE;
    Core::Get().pointer.cursor = window.type->cursor;
    return TRUE;
}

}  // namespace platform

using namespace platform;

HWND WindowFromPoint(POINT point) {
    Core& core = Core::Get();
    if (!core.IsOwningThread()) return HWND();
    int hit = HTNOWHERE;
    return FindPointerTarget(point, &hit);
}

HWND SetCapture(HWND window) {
    Core& core = Core::Get();
    const HWND before = GetCapture();
    if (!core.Find(window)) return HWND();
    if (SetPointerCapture(window)) return before;
    SetLastError(ERROR_ACCESS_DENIED);
    return HWND();
}

BOOL ReleaseCapture() {
    if (!Core::Get().IsOwningThread()) return FALSE;
    ReleasePointerCapture();
    return TRUE;
}

HWND GetCapture() {
    Core& core = Core::Get();
    if (!core.IsOwningThread()) return HWND();
    return core.Peek(core.pointer.capture) ? core.pointer.capture : HWND();
}

BOOL TrackMouseEvent(TRACKMOUSEEVENT* request) {
    Core& core = Core::Get();
    if (!request || request->cbSize != sizeof(TRACKMOUSEEVENT) ||
        (request->dwFlags & ~DWORD{TME_CANCEL}) != TME_LEAVE) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const HWND window = request->hwndTrack;
    if (!core.Find(window)) return FALSE;
    if (request->dwFlags & TME_CANCEL) {
        if (core.pointer.tracked == window) core.pointer.tracked = HWND();
        return TRUE;
    }
    core.pointer.tracked = window;
    if (!(core.pointer.hover == window)) RequestCheck();
    return TRUE;
}

BOOL GetCursorPos(POINT* point) {
    if (!point) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *point = POINT{0, 0};
    WindowSystem* system = Core::Get().EnsureSystem();
    if (!system) return FALSE;
    *point = system->PointerPosition();
    return TRUE;
}

UINT GetDoubleClickTime() {
    return kDoubleClickTime;
}

HCURSOR LoadCursorW(HINSTANCE, LPCWSTR name) {
    const std::uintptr_t id = reinterpret_cast<std::uintptr_t>(name);
    const HCURSOR cursor(static_cast<std::uint32_t>(id), 1);
    return id <= 0xFFFF && IsCursor(cursor) ? cursor : HCURSOR();
}

HCURSOR SetCursor(HCURSOR cursor) {
    Core& core = Core::Get();
    const HCURSOR before = core.pointer.cursor;
    if (!core.IsOwningThread()) return HCURSOR();
    if (!cursor || IsCursor(cursor)) core.pointer.cursor = cursor;
    return before;
}

HCURSOR GetCursor() {
    Core& core = Core::Get();
    return core.IsOwningThread() ? core.pointer.cursor : HCURSOR();
}

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSIZEFRAME:
        case SM_CYSIZEFRAME:
            return kSizingBorder;
        case SM_CXDOUBLECLK:
        case SM_CYDOUBLECLK:
            return kDoubleClickBox;
        case SM_CXSCREEN:
        case SM_CYSCREEN: {
            WindowSystem* system = Core::Get().EnsureSystem();
            if (!system) return 0;
            const CSize size = system->ScreenSize();
            return index == SM_CXSCREEN ? size.cx : size.cy;
        }
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
    }
}
