#include "platform/window/core/tree.h"

#include <algorithm>

#include "platform/window/core/painting.h"

namespace platform {

namespace {

constexpr int kMinimisedPlace = -32000;

Window* OwnerOf(const Window& topLevel) {
    return Core::Get().Peek(topLevel.parent);
}

bool IsTopmost(const Window& topLevel) {
    for (const Window* at = &topLevel; at; at = OwnerOf(*at))
        if (at->exStyle & WS_EX_TOPMOST) return true;
    return false;
}

bool IsTopmost(HWND window) {
    const Window* found = Core::Get().Peek(window);
    return found && IsTopmost(*found);
}

bool IsOwnedBy(HWND window, HWND owner) {
    Core& core = Core::Get();
    for (const Window* at = core.Peek(window); at; at = OwnerOf(*at))
        if (at->parent == owner) return true;
    return false;
}

// The window and all that it owns, in stacking order.
std::vector<HWND> OwnerGroup(const Window& window) {
    std::vector<HWND> group;
    for (HWND other : Core::Get().stack)
        if (other == window.handle || (!window.owned.empty() && IsOwnedBy(other, window.handle)))
            group.push_back(other);
    return group;
}

// Where in `rest` the moved group goes, before the layers are kept apart.
std::size_t PlaceFor(const std::vector<HWND>& rest, const Window& window, HWND after) {
    std::size_t place = rest.size();
    if (after == HWND_BOTTOM) {
        place = 0;
    } else if (!(after == HWND_TOP) && !(after == HWND_TOPMOST) && !(after == HWND_NOTOPMOST)) {
        auto reference = std::find(rest.begin(), rest.end(), after);
        place = static_cast<std::size_t>(reference - rest.begin());
    }
    auto owner = std::find(rest.begin(), rest.end(), window.parent);
    if (owner != rest.end()) place = std::max(place, static_cast<std::size_t>(owner - rest.begin()) + 1);
    return place;
}

void TellSystem(const std::vector<HWND>& moved, bool toBottom) {
    Core& core = Core::Get();
    const std::vector<HWND> stack = core.stack;
    for (std::size_t i = stack.size(); i-- > 0;) {
        if (std::find(moved.begin(), moved.end(), stack[i]) == moved.end()) continue;
        Window* window = core.Peek(stack[i]);
        WindowSystem* system = window ? core.SystemOf(*window) : nullptr;
        if (!system) continue;
        const bool lastOfLayer = i + 1 == stack.size() || (IsTopmost(stack[i + 1]) && !IsTopmost(*window));
        if (toBottom && i == 0)
            system->Restack(stack[i], StackPlace::Bottom, HWND());
        else if (lastOfLayer)
            system->Restack(stack[i], StackPlace::Top, HWND());
        else
            system->Restack(stack[i], StackPlace::Below, stack[i + 1]);
    }
}

void RestackTopLevel(Window& window, HWND after) {
    Core& core = Core::Get();
    const std::vector<HWND> group = OwnerGroup(window);
    // What it owns need not follow it down; it is above already.
    const bool down = !(after == HWND_TOP) && !(after == HWND_TOPMOST) && !(after == HWND_NOTOPMOST);
    if (down && std::find(group.begin(), group.end(), after) != group.end()) return;
    const std::vector<HWND> moved = after == HWND_BOTTOM ? std::vector<HWND>{window.handle} : group;
    std::vector<HWND> rest = core.stack;
    std::erase_if(rest,
                  [&](HWND other) { return std::find(moved.begin(), moved.end(), other) != moved.end(); });
    const auto place = static_cast<std::ptrdiff_t>(PlaceFor(rest, window, after));
    rest.insert(rest.begin() + place, moved.begin(), moved.end());
    std::stable_partition(rest.begin(), rest.end(), [](HWND other) { return !IsTopmost(other); });
    core.stack = std::move(rest);
    TellSystem(moved, after == HWND_BOTTOM);
}

void RestackChild(Window& window, HWND after) {
    Window* parent = Core::Get().Peek(window.parent);
    if (!parent) return;
    std::vector<HWND>& siblings = parent->children;
    std::erase(siblings, window.handle);
    auto place = siblings.end();
    if (after == HWND_BOTTOM)
        place = siblings.begin();
    else if (!(after == HWND_TOP))
        place = std::find(siblings.begin(), siblings.end(), after);
    siblings.insert(place, window.handle);
    if (IsVisibleInTree(window)) InvalidateAll(window, true);
}

}  // namespace

HWND TopLevelOf(HWND window) {
    Core& core = Core::Get();
    const Window* at = core.Peek(window);
    while (at && at->IsChild())
        at = core.Peek(at->parent);
    return at ? at->handle : HWND();
}

Window* TopLevelOf(const Window& window) {
    return Core::Get().Peek(TopLevelOf(window.handle));
}

bool IsSameOrInside(HWND window, HWND ancestor) {
    Core& core = Core::Get();
    for (const Window* at = core.Peek(window); at; at = at->IsChild() ? core.Peek(at->parent) : nullptr)
        if (at->handle == ancestor) return true;
    return false;
}

bool IsVisibleInTree(const Window& window) {
    Core& core = Core::Get();
    for (const Window* at = &window; at; at = at->IsChild() ? core.Peek(at->parent) : nullptr)
        if (!at->IsShown()) return false;
    return true;
}

bool IsOnDisplay(const Window& window) {
    const Window* top = TopLevelOf(window);
    return top && !top->IsMinimised() && IsVisibleInTree(window);
}

bool IsEnabledInTree(const Window& window) {
    Core& core = Core::Get();
    for (const Window* at = &window; at; at = at->IsChild() ? core.Peek(at->parent) : nullptr)
        if (at->IsDisabled()) return false;
    return true;
}

CPoint SurfaceOrigin(const Window& window) {
    Core& core = Core::Get();
    CPoint origin;
    for (const Window* at = &window; at && at->IsChild(); at = core.Peek(at->parent))
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

void AddToTree(Window& window) {
    Core& core = Core::Get();
    Window* parent = core.Peek(window.parent);
    if (window.IsChild()) {
        if (parent) parent->children.push_back(window.handle);
        return;
    }
    if (parent) parent->owned.push_back(window.handle);
    core.stack.push_back(window.handle);
    std::stable_partition(core.stack.begin(), core.stack.end(), [](HWND other) { return !IsTopmost(other); });
}

void RemoveFromTree(Window& window) {
    Core& core = Core::Get();
    if (Window* parent = core.Peek(window.parent)) {
        std::erase(parent->children, window.handle);
        std::erase(parent->owned, window.handle);
    }
    if (!window.IsChild()) std::erase(core.stack, window.handle);
}

void Restack(Window& window, HWND after) {
    if (window.IsChild()) {
        RestackChild(window, after);
        return;
    }
    if (after == HWND_TOPMOST || after == HWND_NOTOPMOST) {
        if (after == HWND_TOPMOST)
            window.exStyle |= WS_EX_TOPMOST;
        else
            window.exStyle &= ~DWORD{WS_EX_TOPMOST};
        UpdateTraits(window);
        UpdateTraitsOfOwned(window);
    }
    RestackTopLevel(window, after);
}

void UpdateTraits(Window& topLevel) {
    if (topLevel.IsChild()) return;
    const Window* owner = OwnerOf(topLevel);
    WindowTraits traits;
    traits.title = topLevel.title;
    traits.decorated = (topLevel.style & WS_CAPTION) == WS_CAPTION;
    traits.minimizable = (topLevel.style & WS_MINIMIZEBOX) != 0;
    traits.topmost = IsTopmost(topLevel);
    traits.toolWindow = (topLevel.exStyle & (WS_EX_TOOLWINDOW | WS_EX_APPWINDOW)) == WS_EX_TOOLWINDOW;
    traits.activates = (topLevel.exStyle & WS_EX_NOACTIVATE) == 0;
    traits.dialog = owner != nullptr;
    traits.modal = owner && owner->IsDisabled() && topLevel.IsShown();
    traits.owner = owner ? owner->handle : HWND();
    if (traits == topLevel.traits) return;
    topLevel.traits = traits;
    if (WindowSystem* system = Core::Get().SystemOf(topLevel)) system->SetTraits(topLevel.handle, traits);
}

void UpdateTraitsOfOwned(const Window& owner) {
    Core& core = Core::Get();
    for (HWND handle : owner.owned) {
        Window* window = core.Peek(handle);
        if (!window) continue;
        UpdateTraits(*window);
        UpdateTraitsOfOwned(*window);
    }
}

}  // namespace platform
