#include "platform/window/core/painting.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "platform/graphics/device_context.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

// What a window may draw on, in window coordinates: itself inside its parents, and not on windows that it
// leaves alone by its style.
Region DrawableRegion(const Window& window) {
    Core& core = Core::Get();
    Region region(window.Bounds());
    if (window.shape) region.Intersect(*window.shape);
    if (window.style & WS_CLIPCHILDREN) {
        std::vector<RECT> covered;
        for (HWND handle : window.children) {
            const Window* child = core.Peek(handle);
            if (child && child->IsShown() && !child->type->letsPointerThrough &&
                !(child->exStyle & WS_EX_TRANSPARENT))
                covered.push_back(child->rect);
        }
        region.Subtract(Region(covered));
    }
    CPoint offset;  // of the window in `at`
    for (const Window* at = &window; at->IsChild();) {
        const Window* parent = core.Peek(at->parent);
        if (!parent) break;
        if (at->style & WS_CLIPSIBLINGS) {
            auto own = std::find(parent->children.begin(), parent->children.end(), at->handle);
            while (own != parent->children.end() && ++own != parent->children.end()) {
                const Window* sibling = core.Peek(*own);
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

void CopyShared(const Surface& from, Surface& to) {
    const int width = std::min(from.Width(), to.Width());
    const int height = std::min(from.Height(), to.Height());
    for (int y = 0; y < height; ++y)
        std::memcpy(to.Row(y), from.Row(y), static_cast<std::size_t>(width) * sizeof(std::uint32_t));
    to.Touch();
}

// A context on a window, clipped to `region` (window coordinates).
HDC MakeContext(Window& window, Region region, bool paint) try {
    Core& core = Core::Get();
    Window* top = TopLevelOf(window);
    std::shared_ptr<Surface> surface;
    if (top && IsPainted(*top)) surface = SurfaceForWriting(*top);
    CPoint origin;
    if (surface) {
        origin = ScaledPoint(SurfaceOrigin(window), surface->Scale());
        region = region.Scaled(surface->Scale());
        region.Offset(origin.x, origin.y);
    } else {
        surface = core.nowhere;
        region = Region();
    }
    const HDC context = MakeDeviceContext(std::move(surface), origin, std::move(region));
    try {
        if (context) core.contexts[context.ToParam()] = {window.handle, paint};
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
    Core& core = Core::Get();
    auto found = core.contexts.find(context.ToParam());
    if (found == core.contexts.end() || !(found->second.window == window.handle) ||
        found->second.paint != paint) {
        SetLastError(ERROR_INVALID_HANDLE);
        return false;
    }
    core.contexts.erase(found);
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
        if (Core::Get().Peek(window->handle)) EndContext(*window, context, paint);
        throw;
    }
}

void StandInLine(Window& window) {
    if (window.listedDirty || window.update.IsEmpty()) return;
    Core& core = Core::Get();
    try {
        core.dirty.push_back(window.handle);
        window.listedDirty = true;
    } catch (const std::bad_alloc&) {
        core.dirtyIncomplete = true;
    }
}

void PaintNow(HWND handle) {
    Core& core = Core::Get();
    Window* window = core.Peek(handle);
    if (!window || window->update.IsEmpty() || !IsOnDisplay(*window)) return;
    const std::shared_ptr<Window> kept = core.PeekShared(handle);
    CallProcedure(kept, WM_PAINT, 0, 0);
    if (!core.Peek(handle)) return;
    const std::vector<HWND> children = kept->children;
    for (HWND child : children)
        PaintNow(child);
}

}  // namespace

void Invalidate(Window& window, const CRect& rect, bool erase) {
    CRect added;
    if (!added.IntersectRect(rect, window.Bounds())) return;
    window.update.Add(added);
    window.eraseWanted = window.eraseWanted || erase;
    Core& core = Core::Get();
    StandInLine(window);
    if (window.style & WS_CLIPCHILDREN) return;
    for (HWND handle : window.children) {
        Window* child = core.Peek(handle);
        if (!child || !child->IsShown() || child->type->letsPointerThrough) continue;
        CRect inChild = added;
        inChild.OffsetRect(-child->rect.left, -child->rect.top);
        Invalidate(*child, inChild, erase);
    }
}

void InvalidateAll(Window& window, bool erase) {
    Invalidate(window, window.Bounds(), erase);
}

void Validate(Window& window) {
    window.update.Clear();
    window.eraseWanted = false;
    ++window.validation;
}

void QueueForPaint(Window& window) {
    StandInLine(window);
    for (const HWND handle : window.children)
        if (Window* child = Core::Get().Peek(handle)) QueueForPaint(*child);
}

HWND NextToPaint(HWND within) {
    Core& core = Core::Get();
    if (std::exchange(core.dirtyIncomplete, false))
        core.ForEachWindow([](HWND, Window& window) { StandInLine(window); });
    for (std::size_t i = 0; i < core.dirty.size();) {
        const HWND handle = core.dirty[i];
        Window* window = core.Peek(handle);
        const bool waits = window && !window->update.IsEmpty() && IsOnDisplay(*window);
        if (!waits && i == 0) {
            if (window) window->listedDirty = false;
            core.dirty.pop_front();
            continue;
        }
        ++i;
        if (!waits || (within && !IsSameOrInside(handle, within))) continue;
        HWND first = handle;
        for (const Window* at = window; at && at->IsChild();) {
            at = core.Peek(at->parent);
            if (at && !at->update.IsEmpty() && (!within || IsSameOrInside(at->handle, within)))
                first = at->handle;
        }
        return first;
    }
    return HWND();
}

bool IsPainted(const Window& topLevel) {
    return !topLevel.IsLayered() || topLevel.layering.hasAttributes;
}

std::shared_ptr<Surface> SurfaceForWriting(Window& topLevel) {
    Core& core = Core::Get();
    const int width = ScaledLength(topLevel.rect.Width(), ScreenScale());
    const int height = ScaledLength(topLevel.rect.Height(), ScreenScale());
    if (width <= 0 || height <= 0) return nullptr;
    WindowSystem* system = core.SystemOf(topLevel);
    if (!topLevel.surface || topLevel.surface->Width() != width || topLevel.surface->Height() != height) {
        std::shared_ptr<Surface> fresh =
            system ? system->NewSurface(topLevel.handle, width, height) : Surface::Create(width, height);
        if (!fresh) {
            topLevel.lacksPixels = true;
            return nullptr;
        }
        fresh->SetScale(ScreenScale());
        if (topLevel.surface) CopyShared(*topLevel.surface, *fresh);
        topLevel.surface = std::move(fresh);
        topLevel.neverShown = true;
    }
    // What was painted into nothing is painted again.
    if (std::exchange(topLevel.lacksPixels, false)) InvalidateAll(topLevel, true);
    if (system) system->BeginWrite(topLevel.handle);
    return topLevel.surface;
}

void Present(Window& topLevel, const Region& drawn) {
    WindowSystem* system = Core::Get().SystemOf(topLevel);
    if (!system || !topLevel.surface) return;
    const Surface& surface = *topLevel.surface;
    Region shown = topLevel.neverShown ? Region(CRect(0, 0, surface.Width(), surface.Height())) : drawn;
    if (shown.IsEmpty()) return;
    topLevel.neverShown = false;
    system->Present(topLevel.handle, shown);
}

void UpdateCompositing(Window& topLevel) {
    Layering& layering = topLevel.layering;
    Compositing now;
    if (topLevel.IsLayered()) {
        now = layering.chosen;
        if (!layering.hasAttributes && !layering.fed) now.mode = Compositing::Mode::Nothing;
    }
    if (now == layering.told) return;
    layering.told = now;
    if (WindowSystem* system = Core::Get().SystemOf(topLevel)) system->SetCompositing(topLevel.handle, now);
}

void DropContexts(HWND window) {
    std::erase_if(Core::Get().contexts, [&](const auto& item) {
        if (!(item.second.window == window)) return false;
        DeleteDeviceContext(HDC::FromParam(item.first));
        return true;
    });
}

}  // namespace platform

using namespace platform;

BOOL InvalidateRect(HWND handle, const RECT* rect, BOOL erase) {
    Window* window = Core::Get().Find(handle);
    if (!window) return FALSE;
    Invalidate(*window, rect ? CRect(*rect) : window->Bounds(), erase != FALSE);
    return TRUE;
}

BOOL ValidateRect(HWND handle, const RECT* rect) {
    Window* window = Core::Get().Find(handle);
    if (!window) return FALSE;
    if (rect) {
        window->update.Subtract(*rect);
        ++window->validation;
    }
    if (!rect || window->update.IsEmpty()) Validate(*window);
    return TRUE;
}

BOOL GetUpdateRect(HWND handle, RECT* rect, BOOL erase) {
    const std::shared_ptr<Window> window = Core::Get().Share(handle);
    if (rect) *rect = RECT{0, 0, 0, 0};
    if (!window || window->update.IsEmpty()) return FALSE;
    if (rect) *rect = window->update.Box();
    if (erase && window->eraseWanted) {
        Region region = DrawableRegion(*window);
        region.Intersect(window->update.Get());
        const HDC context = MakeContext(*window, std::move(region), false);
        SendErase(window, context, false);
        if (Core::Get().Peek(handle)) EndContext(*window, context, false);
    }
    return TRUE;
}

BOOL UpdateWindow(HWND handle) {
    if (!Core::Get().Find(handle)) return FALSE;
    PaintNow(handle);
    return TRUE;
}

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    if (paint) *paint = PAINTSTRUCT{};
    const std::shared_ptr<Window> window = Core::Get().Share(handle);
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
        if (!Core::Get().Peek(handle)) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return paint->hdc = HDC();
        }
    }
    return paint->hdc;
}

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint) {
    Window* window = Core::Get().Find(handle);
    if (!window) return FALSE;
    if (!paint) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return EndContext(*window, paint->hdc, true);
}

HDC GetDC(HWND handle) {
    Core& core = Core::Get();
    if (!handle) {
        if (!core.Claim()) return HDC();
        const HDC context = MakeDeviceContext(core.nowhere, POINT{0, 0}, Region());
        if (context) core.contexts[context.ToParam()] = {HWND(), false};
        return context;
    }
    Window* window = core.Find(handle);
    if (!window) return HDC();
    return MakeContext(*window, DrawableRegion(*window), false);
}

HWND WindowFromDC(HDC context) {
    const Core& core = Core::Get();
    const auto found = core.contexts.find(context.ToParam());
    return found != core.contexts.end() ? found->second.window : HWND();
}

int ReleaseDC(HWND handle, HDC context) {
    Core& core = Core::Get();
    if (!handle) {
        auto found = core.contexts.find(context.ToParam());
        if (found == core.contexts.end() || found->second.window) {
            SetLastError(ERROR_INVALID_HANDLE);
            return 0;
        }
        core.contexts.erase(found);
        DeleteDeviceContext(context);
        return 1;
    }
    Window* window = core.Find(handle);
    return window && EndContext(*window, context, false) ? 1 : 0;
}
