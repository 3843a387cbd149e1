#include "platform/window/core/tree.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "platform/window/core/file_drop.h"
#include "platform/window/core/painting.h"

namespace platform {

namespace {

constexpr int kMinimisedPlace = -32000;

Window* OwnerOf(const Window& topLevel) {
    return Core::Get().Peek(topLevel.parent);
}

// Its own style, or that of an owner, whose traits say so already.
bool IsTopmost(const Window& topLevel) {
    const Window* owner = OwnerOf(topLevel);
    return (topLevel.exStyle & WS_EX_TOPMOST) || (owner && owner->traits.topmost);
}

bool IsNamed(HWND after) {
    return !(after == HWND_TOP) && !(after == HWND_BOTTOM) && !(after == HWND_TOPMOST) &&
           !(after == HWND_NOTOPMOST);
}

void PutAtBottom(const Window& window) {
    StackingOrder& stack = Core::Get().stack;
    const auto layer = LayerOf(window.handle);
    stack.Lower(window.handle, layer);
    if (const Window* owner = OwnerOf(window); owner && stack.LayerOf(owner->handle) == layer)
        stack.PutAbove(window.handle, owner->handle);
}

// Directly under `after`, as far as the layers and the owner of the first allow.
void PutGroupUnder(const std::vector<HWND>& group, HWND owner, HWND after) {
    using Layer = StackingOrder::Layer;
    StackingOrder& stack = Core::Get().stack;
    HWND last[3];  // the one put last into each layer
    for (const HWND window : group) {
        const Layer layer = LayerOf(window);
        HWND& below = last[static_cast<int>(layer)];
        const bool aboveOwner = !below && owner && stack.LayerOf(owner) == layer &&
                                (owner == after || stack.IsAbove(owner, after));
        if (aboveOwner)
            stack.PutAbove(window, owner);
        else if (below)
            stack.PutAbove(window, below);
        else if (stack.LayerOf(after) == layer)
            stack.PutBelow(window, after);
        else if (layer < stack.LayerOf(after))
            stack.Raise(window, layer);
        else
            stack.Lower(window, layer);
        below = window;
    }
}

// The first window above the run of moved ones that begins at `first`; empty at the top of their layer.
HWND OverRun(const std::vector<HWND>& moved, std::size_t first) {
    const StackingOrder& stack = Core::Get().stack;
    std::size_t last = first;
    while (last + 1 < moved.size() && stack.Above(moved[last]) == moved[last + 1])
        ++last;
    const HWND over = stack.Above(moved[last]);
    return over && stack.LayerOf(over) == stack.LayerOf(moved[first]) ? over : HWND();
}

// From the bottom up: the lowest goes where all go, each other directly above the one before. Asked to put an
// owner under what it owns, window managers sink both; asked to raise what it owns, some activate that.
void TellSystem(std::vector<HWND> moved, bool toBottom) {
    const StackingOrder& stack = Core::Get().stack;
    // Among other layers than before they may stand in another order.
    std::sort(moved.begin(), moved.end(), [&](HWND a, HWND b) { return stack.IsAbove(b, a); });
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const Window* window = Core::Get().Peek(moved[i]);
        WindowSystem* system = window ? Core::Get().SystemOf(*window) : nullptr;
        if (!system) continue;
        const HWND below = stack.Below(moved[i]);
        if (i > 0 && below == moved[i - 1] && stack.LayerOf(below) == stack.LayerOf(moved[i]))
            system->Restack(moved[i], StackPlace::Above, below);
        else if (toBottom && (!below || stack.LayerOf(below) == StackingOrder::Layer::Desktop))
            system->Restack(moved[i], StackPlace::Bottom, HWND());
        else if (const HWND over = OverRun(moved, i))
            system->Restack(moved[i], StackPlace::Below, over);
        else
            system->Restack(moved[i], StackPlace::Top, HWND());
    }
}

// Without memory all windows stay where they are.
void RestackTopLevel(const Window& window, HWND after) try {
    StackingOrder& stack = Core::Get().stack;
    if (after == HWND_BOTTOM) {
        // What it owns need not follow it down; it is above already.
        PutAtBottom(window);
        TellSystem({window.handle}, true);
        return;
    }
    const std::vector<HWND> group = OwnerGroup(window);
    if (IsNamed(after)) {
        if (std::find(group.begin(), group.end(), after) != group.end()) return;
        PutGroupUnder(group, window.parent, after);
    } else {
        for (const HWND one : group)
            stack.Raise(one, LayerOf(one));
    }
    TellSystem(group, false);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
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

StackingOrder::Layer LayerOf(HWND window) {
    const Window* found = Core::Get().Peek(window);
    if (found && found->host) return StackingOrder::Layer::Desktop;
    return found && IsTopmost(*found) ? StackingOrder::Layer::Topmost : StackingOrder::Layer::Normal;
}

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
    UpdateTraits(window);  // what it owns goes by them
    core.stack.Insert(window.handle, LayerOf(window.handle));
}

void RemoveFromTree(Window& window) {
    Core& core = Core::Get();
    // A parent that goes itself needs its list no more.
    if (Window* parent = core.Peek(window.parent); parent && !parent->destroying) {
        std::vector<HWND>& list = window.IsChild() ? parent->children : parent->owned;
        const auto own = std::find(list.begin(), list.end(), window.handle);
        if (own != list.end()) list.erase(own);
    }
    if (!window.IsChild()) core.stack.Remove(window.handle);
}

std::vector<HWND> OwnerGroup(const Window& topLevel) {
    Core& core = Core::Get();
    std::vector<HWND> group{topLevel.handle};
    for (std::size_t i = 0; i < group.size(); ++i)
        if (const Window* window = core.Peek(group[i]))
            std::copy_if(window->owned.begin(), window->owned.end(), std::back_inserter(group),
                         [&](HWND owned) { return core.Peek(owned) != nullptr; });
    std::sort(group.begin(), group.end(), [&](HWND a, HWND b) { return core.stack.IsAbove(b, a); });
    return group;
}

void FollowLayer(const Window& topLevel) {
    if (Core::Get().stack.LayerOf(topLevel.handle) != LayerOf(topLevel.handle))
        RestackTopLevel(topLevel, HWND_TOP);
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

void UpdateTraits(Window& topLevel) try {
    if (topLevel.IsChild()) return;
    const Window* owner = OwnerOf(topLevel);
    WindowTraits& traits = topLevel.traits;
    bool changed = false;
    const auto set = [&]<class Trait>(Trait& trait, const Trait& now) {
        if (trait == now) return;
        trait = now;
        changed = true;
    };
    set(traits.decorated, topLevel.IsDecorated());
    set(traits.minimizable, (topLevel.style & WS_MINIMIZEBOX) != 0);
    set(traits.maximizable, (topLevel.style & WS_MAXIMIZEBOX) != 0);
    set(traits.resizable, (topLevel.style & WS_THICKFRAME) != 0);
    set(traits.maximised, topLevel.IsMaximised() && topLevel.IsDecorated());
    set(traits.least, topLevel.leastSize);
    set(traits.most, topLevel.mostSize);
    set(traits.topmost, IsTopmost(topLevel));
    set(traits.toolWindow, (topLevel.exStyle & (WS_EX_TOOLWINDOW | WS_EX_APPWINDOW)) == WS_EX_TOOLWINDOW);
    set(traits.activates, (topLevel.exStyle & WS_EX_NOACTIVATE) == 0);
    set(traits.takesFiles, TakesFiles(topLevel));
    set(traits.modal, owner && owner->IsDisabled() && topLevel.IsShown());
    set(traits.owner, owner ? owner->handle : HWND());
    set(traits.icons, {topLevel.icons[ICON_BIG].picture, topLevel.icons[ICON_SMALL].picture});
    set(traits.title, topLevel.title);
    WindowSystem* system = changed ? Core::Get().SystemOf(topLevel) : nullptr;
    if (system) system->SetTraits(topLevel.handle, traits);
} catch (const std::bad_alloc&) {
    // The title, last of all, is told with the next change.
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
