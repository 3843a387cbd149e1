#include "platform/window/core/cursor.h"

#include "platform/window/core/display.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/sizing.h"
#include "platform/window/core/system_cursors.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

struct DecidedCursor {
    HCURSOR cursor;
    HWND topLevel;  // that it is shown over
};

DecidedCursor& State() {
    return Lasting<DecidedCursor>();
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

}  // namespace

void SetCursorWindow(HWND topLevel) {
    State().topLevel = topLevel;
}

void ShowCursorDecided() {
    Window* window = Peek(State().topLevel);
    if (!window) return;
    const CursorShape shape = State().cursor ? ShapeOf(State().cursor) : CursorShape::None;
    if (shape == window->cursorSent) return;
    window->cursorSent = shape;
    if (WindowSystem* system = SystemOf(*window)) system->SetCursor(window->handle, shape);
}

LRESULT DefaultSetCursor(Window& window, WPARAM wParam, LPARAM lParam) {
    if (window.IsChild()) {
        const HWND handle = window.handle;
        if (CallProcedure(window.parent, WM_SETCURSOR, wParam, lParam)) return TRUE;
        if (!Peek(handle)) return FALSE;
    }
    if (const int hit = LOWORD(static_cast<std::uint64_t>(lParam)); IsSizingHit(hit)) {
        State().cursor = CursorOf(SizingCursor(hit));
        return TRUE;
    }
    if (!window.type->cursor) return FALSE;
    State().cursor = window.type->cursor;
    return TRUE;
}

void ResetCursor() {
    ResetLasting<DecidedCursor>();
}

}  // namespace platform

using namespace platform;

HCURSOR LoadCursorW(HINSTANCE, LPCWSTR name) {
    const std::uintptr_t id = reinterpret_cast<std::uintptr_t>(name);
    const HCURSOR cursor(static_cast<std::uint32_t>(id), 1);
    return id <= 0xFFFF && IsCursor(cursor) ? cursor : HCURSOR();
}

HCURSOR SetCursor(HCURSOR cursor) {
    const HCURSOR before = Lasting<DecidedCursor>().cursor;
    if (!IsOwningThread()) return HCURSOR();
    if (!cursor || IsCursor(cursor)) Lasting<DecidedCursor>().cursor = cursor;
    return before;
}

HCURSOR GetCursor() {
    return IsOwningThread() ? Lasting<DecidedCursor>().cursor : HCURSOR();
}

BOOL GetCursorPos(POINT* point) {
    if (!point) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *point = POINT{0, 0};
    WindowSystem* system = EnsureSystem();
    if (!system) return FALSE;
    *point = system->PointerPosition();
    return TRUE;
}
