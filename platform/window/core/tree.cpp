#include "platform/window/core/tree.h"

namespace platform {

HWND TopLevelOf(HWND window) {
    const Window* at = Peek(window);
    while (at && at->IsChild())
        at = Peek(at->parent);
    return at ? at->handle : HWND();
}

Window* TopLevelOf(const Window& window) {
    return Peek(TopLevelOf(window.handle));
}

Window* OwnerOf(const Window& topLevel) {
    return Peek(topLevel.parent);
}

bool IsSameOrInside(HWND window, HWND ancestor) {
    for (const Window* at = Peek(window); at; at = at->IsChild() ? Peek(at->parent) : nullptr)
        if (at->handle == ancestor) return true;
    return false;
}

bool IsVisibleInTree(const Window& window) {
    for (const Window* at = &window; at; at = at->IsChild() ? Peek(at->parent) : nullptr)
        if (!at->IsShown()) return false;
    return true;
}

bool IsOnDisplay(const Window& window) {
    const Window* top = TopLevelOf(window);
    return top && !top->IsMinimised() && IsVisibleInTree(window);
}

bool IsEnabledInTree(const Window& window) {
    for (const Window* at = &window; at; at = at->IsChild() ? Peek(at->parent) : nullptr)
        if (at->IsDisabled()) return false;
    return true;
}

}  // namespace platform

using namespace platform;

HWND GetParent(HWND handle) {
    const Window* window = Require(handle);
    return window && Peek(window->parent) ? window->parent : HWND();
}

HWND GetDlgItem(HWND handle, int id) {
    const Window* window = Require(handle);
    if (!window) return HWND();
    for (HWND child : window->children) {
        const Window* record = Peek(child);
        if (record && record->id == static_cast<UINT_PTR>(id)) return child;
    }
    SetLastError(ERROR_INVALID_PARAMETER);
    return HWND();
}
