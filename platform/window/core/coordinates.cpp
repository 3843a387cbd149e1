#include "platform/window/core/coordinates.h"

#include "platform/window/core/tree.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

constexpr int kMinimisedPlace = -32000;

}  // namespace

CPoint SurfaceOrigin(const Window& window) {
    CPoint origin;
    for (const Window* at = &window; at && at->IsChild(); at = Peek(at->parent))
        origin.Offset(at->rect.left, at->rect.top);
    return origin;
}

CPoint ScreenOrigin(const Window& window) {
    CPoint origin = SurfaceOrigin(window);
    if (const Window* top = TopLevelOf(window)) {
        if (top->IsMinimised())
            origin.Offset(kMinimisedPlace, kMinimisedPlace);
        else
            origin.Offset(top->rect.left, top->rect.top);
    }
    return origin;
}

CRect ScreenRect(const Window& window) {
    return CRect(ScreenOrigin(window), CSize(window.rect.Width(), window.rect.Height()));
}

POINT ToClient(const Window& window, POINT screen) {
    const CPoint origin = ScreenOrigin(window);
    return POINT{screen.x - origin.x, screen.y - origin.y};
}

namespace {

template <class Of>
BOOL StoreRect(HWND handle, RECT* rect, const Of& of) {
    if (rect) *rect = RECT{0, 0, 0, 0};
    const Window* window = Require(handle);
    if (!window) return FALSE;
    if (!rect) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *rect = of(*window);
    return TRUE;
}

}  // namespace

}  // namespace platform

using namespace platform;

BOOL GetWindowRect(HWND handle, RECT* rect) {
    return StoreRect(handle, rect, [](const Window& window) { return ScreenRect(window); });
}

BOOL GetClientRect(HWND handle, RECT* rect) {
    return StoreRect(handle, rect, [](const Window& window) { return window.Bounds(); });
}

BOOL ClientToScreen(HWND handle, POINT* point) {
    const Window* window = Require(handle);
    if (!window || !point) {
        if (window) SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    CPoint moved(*point);
    const CPoint origin = ScreenOrigin(*window);
    moved.Offset(origin.x, origin.y);
    *point = moved;
    return TRUE;
}

BOOL ScreenToClient(HWND handle, POINT* point) {
    const Window* window = Require(handle);
    if (!window || !point) {
        if (window) SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    CPoint moved(*point);
    const CPoint origin = ScreenOrigin(*window);
    moved.Offset(-origin.x, -origin.y);
    *point = moved;
    return TRUE;
}

BOOL AdjustWindowRectEx(RECT* rect, DWORD, BOOL, DWORD exStyle) {
    constexpr int kClientEdge = 2;
    if (!rect) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (exStyle & WS_EX_CLIENTEDGE) {
        rect->left -= kClientEdge;
        rect->top -= kClientEdge;
        rect->right += kClientEdge;
        rect->bottom += kClientEdge;
    }
    return TRUE;
}
