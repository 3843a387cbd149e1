#include "platform/window/core/invalidation.h"

#include <deque>
#include <new>
#include <utility>

#include "platform/window/core/lasting.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

// Windows that may have something to paint, longest waiting first.
struct PaintLine {
    std::deque<HWND> windows;
    bool incomplete = false;  // there was no memory to list one
};

PaintLine& Waiting() {
    return Lasting<PaintLine>();
}

void StandInLine(Window& window) {
    if (window.listedDirty || window.update.IsEmpty()) return;
    try {
        Waiting().windows.push_back(window.handle);
        window.listedDirty = true;
    } catch (const std::bad_alloc&) {
        Waiting().incomplete = true;
    }
}

void PaintNow(HWND handle) {
    Window* window = Peek(handle);
    if (!window || window->update.IsEmpty() || !IsOnDisplay(*window)) return;
    const std::shared_ptr<Window> kept = PeekShared(handle);
    CallProcedure(kept, WM_PAINT, 0, 0);
    if (!Peek(handle)) return;
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
    StandInLine(window);
    if (window.style & WS_CLIPCHILDREN) return;
    for (HWND handle : window.children) {
        Window* child = Peek(handle);
        if (!child || !child->IsShown() || child->type->letsPointerThrough) continue;
        CRect inChild = added;
        inChild.OffsetRect(-child->rect.left, -child->rect.top);
        Invalidate(*child, inChild, erase);
    }
}

void InvalidateAll(Window& window, bool erase) {
    Invalidate(window, window.Bounds(), erase);
}

// The parts of the parent that a child covered or covers now.
void InvalidateUnder(const Window& child, const CRect& rect) {
    Window* parent = Peek(child.parent);
    if (parent && IsVisibleInTree(*parent)) Invalidate(*parent, rect, true);
}

void Validate(Window& window) {
    window.update.Clear();
    window.eraseWanted = false;
    ++window.validation;
}

void QueueForPaint(Window& window) {
    StandInLine(window);
    for (const HWND handle : window.children)
        if (Window* child = Peek(handle)) QueueForPaint(*child);
}

HWND NextToPaint(HWND within) {
    if (std::exchange(Waiting().incomplete, false))
        ForEachWindow([](HWND, Window& window) { StandInLine(window); });
    for (std::size_t i = 0; i < Waiting().windows.size();) {
        const HWND handle = Waiting().windows[i];
        Window* window = Peek(handle);
        const bool waits = window && !window->update.IsEmpty() && IsOnDisplay(*window);
        if (!waits && i == 0) {
            if (window) window->listedDirty = false;
            Waiting().windows.pop_front();
            continue;
        }
        ++i;
        if (!waits || (within && !IsSameOrInside(handle, within))) continue;
        HWND first = handle;
        for (const Window* at = window; at && at->IsChild();) {
            at = Peek(at->parent);
            if (at && !at->update.IsEmpty() && (!within || IsSameOrInside(at->handle, within)))
                first = at->handle;
        }
        return first;
    }
    return HWND();
}

void ResetInvalidation() {
    ResetLasting<PaintLine>();
}

}  // namespace platform

using namespace platform;

BOOL InvalidateRect(HWND handle, const RECT* rect, BOOL erase) {
    Window* window = Require(handle);
    if (!window) return FALSE;
    Invalidate(*window, rect ? CRect(*rect) : window->Bounds(), erase != FALSE);
    return TRUE;
}

BOOL ValidateRect(HWND handle, const RECT* rect) {
    Window* window = Require(handle);
    if (!window) return FALSE;
    if (rect) {
        window->update.Subtract(*rect);
        ++window->validation;
    }
    if (!rect || window->update.IsEmpty()) Validate(*window);
    return TRUE;
}

BOOL UpdateWindow(HWND handle) {
    if (!Require(handle)) return FALSE;
    PaintNow(handle);
    return TRUE;
}
