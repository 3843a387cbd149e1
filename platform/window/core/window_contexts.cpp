#include "platform/window/core/window_contexts.h"

#include <algorithm>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/graphics/device_context.h"
#include "platform/graphics/scale.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_surface.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

struct ContextOwner {
    HWND window;
    bool paint = false;
};

struct WindowContexts {
    std::unordered_map<std::uint64_t, ContextOwner> out;  // by the parameter form of the HDC
    std::shared_ptr<Surface> nullSurface = Surface::Create(1, 1);
};

WindowContexts& Contexts() {
    return Lasting<WindowContexts>();
}

// What a window may draw on, in window coordinates: itself inside its parents, and not on windows that it
// leaves alone by its style.
Region DrawableRegion(const Window& window) {
    Region region(window.Bounds());
    if (window.shape) region.Intersect(*window.shape);
    if (window.style & WS_CLIPCHILDREN) {
        std::vector<RECT> covered;
        for (HWND handle : window.children) {
            const Window* child = Peek(handle);
            if (child && child->IsShown() && !child->type->letsPointerThrough &&
                !(child->exStyle & WS_EX_TRANSPARENT))
                covered.push_back(child->rect);
        }
        region.Subtract(Region(covered));
    }
    CPoint offset;  // of the window in `at`
    for (const Window* at = &window; at->IsChild();) {
        const Window* parent = Peek(at->parent);
        if (!parent) break;
        if (at->style & WS_CLIPSIBLINGS) {
            auto own = std::find(parent->children.begin(), parent->children.end(), at->handle);
            while (own != parent->children.end() && ++own != parent->children.end()) {
                const Window* sibling = Peek(*own);
                if (!sibling || !sibling->IsShown() || sibling->type->letsPointerThrough) continue;
                CRect covered = sibling->rect;
                covered.OffsetRect(-at->rect.left - offset.x, -at->rect.top - offset.y);
                region.Subtract(Region(covered));
            }
        }
        offset.Offset(at->rect.left, at->rect.top);
        CRect around = parent->Bounds();
        around.OffsetRect(-offset.x, -offset.y);
        region.Intersect(around);
        at = parent;
    }
    return region;
}

// A context on a window, clipped to `region` (window coordinates).
HDC MakeContext(Window& window, Region region, bool paint) try {
    Window* top = TopLevelOf(window);
    std::shared_ptr<Surface> surface;
    if (top && IsPainted(*top)) surface = SurfaceForWriting(*top);
    CPoint origin;
    if (surface) {
        origin = ScaledPoint(SurfaceOrigin(window), surface->Scale());
        region = region.Scaled(surface->Scale());
        region.Offset(origin.x, origin.y);
    } else {
        surface = NullSurface();
        region = Region();
    }
    const HDC context = MakeDeviceContext(std::move(surface), origin, std::move(region));
    try {
        if (context) Contexts().out[context.ToParam()] = {window.handle, paint};
    } catch (...) {
        DeleteDeviceContext(context);
        throw;
    }
    return context;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return HDC();
}

// Ends a context that was given out on `window`, showing what was drawn.
bool EndContext(Window& window, HDC context, bool paint) {
    auto found = Contexts().out.find(context.ToParam());
    if (found == Contexts().out.end() || !(found->second.window == window.handle) ||
        found->second.paint != paint) {
        SetLastError(ERROR_INVALID_HANDLE);
        return false;
    }
    Contexts().out.erase(found);
    const std::shared_ptr<Surface> drawnOn = SurfaceOf(context);
    const Region drawn = DrawnRegion(context);
    DeleteDeviceContext(context);
    Window* top = TopLevelOf(window);
    // A surface that was replaced meanwhile is no longer shown.
    if (top && drawnOn && drawnOn == top->surface) Present(*top, drawn);
    return true;
}

// The context ends with an exception of the handler's.
bool SendErase(const std::shared_ptr<Window>& window, HDC context, bool paint) {
    window->eraseWanted = false;
    try {
        return CallProcedure(window, WM_ERASEBKGND, static_cast<WPARAM>(context.ToParam()), 0) != 0;
    } catch (...) {
        if (Peek(window->handle)) EndContext(*window, context, paint);
        throw;
    }
}

}  // namespace

void DropContexts(HWND window) {
    std::erase_if(Contexts().out, [&](const auto& item) {
        if (!(item.second.window == window)) return false;
        DeleteDeviceContext(HDC::FromParam(item.first));
        return true;
    });
}

void DropAllContexts() {
    for (const auto& [param, owner] : Contexts().out)
        DeleteDeviceContext(HDC::FromParam(param));
    Contexts().out.clear();
}

std::shared_ptr<Surface> NullSurface() {
    Contexts().nullSurface->SetScale(ScreenScale());
    return Contexts().nullSurface;
}

void ResetContexts() {
    Contexts().out = {};
    Contexts().nullSurface.reset();
}

}  // namespace platform

using namespace platform;

BOOL GetUpdateRect(HWND handle, RECT* rect, BOOL erase) {
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (rect) *rect = RECT{0, 0, 0, 0};
    if (!window || window->update.IsEmpty()) return FALSE;
    if (rect) *rect = window->update.Box();
    if (erase && window->eraseWanted) {
        Region region = DrawableRegion(*window);
        region.Intersect(window->update.Get());
        const HDC context = MakeContext(*window, std::move(region), false);
        SendErase(window, context, false);
        if (Peek(handle)) EndContext(*window, context, false);
    }
    return TRUE;
}

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    if (paint) *paint = PAINTSTRUCT{};
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (!window) return HDC();
    if (!paint) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HDC();
    }
    const Region update = window->update.Take();
    ++window->validation;
    Region region = DrawableRegion(*window);
    region.Intersect(update);
    paint->rcPaint = update.Box();
    paint->hdc = MakeContext(*window, std::move(region), true);
    if (!paint->hdc) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    if (window->eraseWanted) {
        paint->fErase = !SendErase(window, paint->hdc, true);
        if (!Peek(handle)) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return paint->hdc = HDC();
        }
    }
    return paint->hdc;
}

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint) {
    Window* window = Require(handle);
    if (!window) return FALSE;
    if (!paint) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return EndContext(*window, paint->hdc, true);
}

HDC GetDC(HWND handle) {
    if (!handle) {
        if (!ClaimThread()) return HDC();
        const HDC context = MakeDeviceContext(NullSurface(), POINT{0, 0}, Region());
        if (context) Contexts().out[context.ToParam()] = {HWND(), false};
        return context;
    }
    Window* window = Require(handle);
    if (!window) return HDC();
    return MakeContext(*window, DrawableRegion(*window), false);
}

HWND WindowFromDC(HDC context) {
    const auto found = Contexts().out.find(context.ToParam());
    return found != Contexts().out.end() ? found->second.window : HWND();
}

int ReleaseDC(HWND handle, HDC context) {
    if (!handle) {
        auto found = Contexts().out.find(context.ToParam());
        if (found == Contexts().out.end() || found->second.window) {
            SetLastError(ERROR_INVALID_HANDLE);
            return 0;
        }
        Contexts().out.erase(found);
        DeleteDeviceContext(context);
        return 1;
    }
    Window* window = Require(handle);
    return window && EndContext(*window, context, false) ? 1 : 0;
}
