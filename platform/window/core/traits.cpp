#include "platform/window/core/traits.h"

#include <algorithm>
#include <new>

#include "platform/window/core/display.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

// Its own style, or that of an owner, whose traits say so already.
bool IsTopmost(const Window& topLevel) {
    const Window* owner = OwnerOf(topLevel);
    return (topLevel.exStyle & WS_EX_TOPMOST) || (owner && owner->traits.topmost);
}

// Files may be dropped somewhere on it.
bool TakesFiles(const Window& window) {
    if (window.exStyle & WS_EX_ACCEPTFILES) return true;
    return std::ranges::any_of(window.children, [](HWND handle) {
        const Window* child = Peek(handle);
        return child && TakesFiles(*child);
    });
}

}  // namespace

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
    WindowSystem* system = changed ? SystemOf(topLevel) : nullptr;
    if (system) system->SetTraits(topLevel.handle, traits);
} catch (const std::bad_alloc&) {
    // The title, last of all, is told with the next change.
}

void UpdateTraitsOfOwned(const Window& owner) {
    for (HWND handle : owner.owned) {
        Window* window = Peek(handle);
        if (!window) continue;
        UpdateTraits(*window);
        UpdateTraitsOfOwned(*window);
    }
}

}  // namespace platform
