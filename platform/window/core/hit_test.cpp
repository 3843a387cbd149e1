#include "platform/window/core/hit_test.h"

#include "platform/graphics/scale.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/display.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

HWND HitInside(HWND handle, POINT client, POINT screen, int* hit);

// The same for the children of a window, from the topmost down. Those elsewhere cost a look at their place.
HWND HitChildren(const Window& window, POINT client, POINT screen, int* hit) {
    for (std::size_t i = window.children.size(); i-- > 0;) {
        if (i >= window.children.size()) continue;  // asking one may destroy others
        const Window* child = Peek(window.children[i]);
        if (!child || !child->rect.PtInRect(client)) continue;
        const POINT inChild{client.x - child->rect.left, client.y - child->rect.top};
        if (const HWND found = HitInside(child->handle, inChild, screen, hit)) return found;
    }
    return HWND();
}

// Looks from a window down to its deepest child at the point, given in the window's coordinates and the
// screen's. Empty when all of them let it through.
HWND HitInside(HWND handle, POINT client, POINT screen, int* hit) {
    const std::shared_ptr<Window> window = PeekShared(handle);
    if (!window || !window->IsShown() || !window->Bounds().PtInRect(client)) return HWND();
    if (window->shape && !window->shape->Contains(client.x, client.y)) return HWND();
    if (const HWND found = HitChildren(*window, client, screen, hit)) return found;
    if (!Peek(handle) || window->type->letsPointerThrough) return HWND();
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
    return topLevel.layering.sent.CatchesPointer(topLevel.surface.get(), client.x, client.y);
}

HWND HitAt(HWND topLevel, POINT screen, int* hit) {
    const Window* window = Peek(topLevel);
    return window ? HitInside(topLevel, ToClient(*window, screen), screen, hit) : HWND();
}

}  // namespace

HWND HitTopLevel(HWND topLevel, POINT screen, int* hit) {
    HWND next = Stack().Below(topLevel);  // asking one may destroy it
    if (const HWND found = HitAt(topLevel, screen, hit)) return found;
    while (const HWND at = next) {
        next = Stack().Below(at);
        const Window* window = Peek(at);
        if (!window || !CatchesPointer(*window, screen)) continue;
        if (const HWND found = HitAt(at, screen, hit)) return found;
    }
    return HWND();
}

HWND FindPointerTarget(POINT screen, int* hit) {
    WindowSystem* system = System();
    *hit = HTNOWHERE;
    return system ? HitTopLevel(system->WindowAt(screen), screen, hit) : HWND();
}

}  // namespace platform

using namespace platform;

HWND WindowFromPoint(POINT point) {
    if (!IsOwningThread()) return HWND();
    int hit = HTNOWHERE;
    return FindPointerTarget(point, &hit);
}
