#include "platform/window/core/stacking.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "platform/window/core/display.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

StackingOrder& Order() {
    return Lasting<StackingOrder>();
}

bool IsNamed(HWND after) {
    return !(after == HWND_TOP) && !(after == HWND_BOTTOM) && !(after == HWND_TOPMOST) &&
           !(after == HWND_NOTOPMOST);
}

// The layer that a top-level belongs into.
StackingOrder::Layer LayerOf(HWND window) {
    const Window* found = Peek(window);
    if (found && found->host) return StackingOrder::Layer::Desktop;
    return found && found->traits.topmost ? StackingOrder::Layer::Topmost : StackingOrder::Layer::Normal;
}

void PutAtBottom(const Window& window) {
    StackingOrder& stack = Order();
    const auto layer = LayerOf(window.handle);
    stack.Lower(window.handle, layer);
    if (const Window* owner = OwnerOf(window); owner && stack.LayerOf(owner->handle) == layer)
        stack.PutAbove(window.handle, owner->handle);
}

// Directly under `after`, as far as the layers and the owner of the first allow.
void PutGroupUnder(const std::vector<HWND>& group, HWND owner, HWND after) {
    using Layer = StackingOrder::Layer;
    StackingOrder& stack = Order();
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
    const StackingOrder& stack = Order();
    std::size_t last = first;
    while (last + 1 < moved.size() && stack.Above(moved[last]) == moved[last + 1])
        ++last;
    const HWND over = stack.Above(moved[last]);
    return over && stack.LayerOf(over) == stack.LayerOf(moved[first]) ? over : HWND();
}

// From the bottom up: the lowest goes where all go, each other directly above the one before. Asked to put an
// owner under what it owns, window managers sink both; asked to raise what it owns, some activate that.
void TellSystem(std::vector<HWND> moved, bool toBottom) {
    const StackingOrder& stack = Order();
    // Among other layers than before they may stand in another order.
    std::sort(moved.begin(), moved.end(), [&](HWND a, HWND b) { return stack.IsAbove(b, a); });
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const Window* window = Peek(moved[i]);
        WindowSystem* system = window ? SystemOf(*window) : nullptr;
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
    StackingOrder& stack = Order();
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
    Window* parent = Peek(window.parent);
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

const StackingOrder& Stack() {
    return Order();
}

void AddToTree(Window& window) {
    Window* parent = Peek(window.parent);
    if (window.IsChild()) {
        if (parent) parent->children.push_back(window.handle);
        return;
    }
    if (parent) parent->owned.push_back(window.handle);
    UpdateTraits(window);  // what it owns goes by them
    Order().Insert(window.handle, LayerOf(window.handle));
}

void RemoveFromTree(Window& window) {
    // A parent that goes itself needs its list no more.
    if (Window* parent = Peek(window.parent); parent && !parent->destroying) {
        std::vector<HWND>& list = window.IsChild() ? parent->children : parent->owned;
        const auto own = std::find(list.begin(), list.end(), window.handle);
        if (own != list.end()) list.erase(own);
    }
    if (!window.IsChild()) Order().Remove(window.handle);
}

std::vector<HWND> OwnerGroup(const Window& topLevel) {
    std::vector<HWND> group{topLevel.handle};
    for (std::size_t i = 0; i < group.size(); ++i)
        if (const Window* window = Peek(group[i]))
            std::copy_if(window->owned.begin(), window->owned.end(), std::back_inserter(group),
                         [&](HWND owned) { return Peek(owned) != nullptr; });
    std::sort(group.begin(), group.end(), [&](HWND a, HWND b) { return Order().IsAbove(b, a); });
    return group;
}

void FollowLayer(const Window& topLevel) {
    if (Order().LayerOf(topLevel.handle) != LayerOf(topLevel.handle)) RestackTopLevel(topLevel, HWND_TOP);
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

void RaiseInLayer(const Window& topLevel) {
    Order().Raise(topLevel.handle, LayerOf(topLevel.handle));
}

void ClearStack() {
    ResetLasting<StackingOrder>();
}

}  // namespace platform
