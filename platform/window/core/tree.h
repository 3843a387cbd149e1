// Parents, owners and the stacking order.
#pragma once

#include <vector>

#include "platform/window/core/core.h"

namespace platform {

// The top-level that a window is or lies in.
HWND TopLevelOf(HWND window);
Window* TopLevelOf(const Window& window);
bool IsSameOrInside(HWND window, HWND ancestor);
// Shown, and so are all its parents.
bool IsVisibleInTree(const Window& window);
// Visible, and its top-level is not minimised: worth painting.
bool IsOnDisplay(const Window& window);
// Enabled, and so are all its parents.
bool IsEnabledInTree(const Window& window);

// (0, 0) of a window, on the screen and on the surface of its top-level. A minimised top-level is far out.
CPoint ScreenOrigin(const Window& window);
CPoint SurfaceOrigin(const Window& window);
CRect ScreenRect(const Window& window);

// Puts a new window on top of its siblings or of the stack (throws std::bad_alloc; take it out then, too),
// and takes a window out.
void AddToTree(Window& window);
void RemoveFromTree(Window& window);

// Moves a window in its stacking order. `after` is HWND_TOP, HWND_BOTTOM, HWND_TOPMOST, HWND_NOTOPMOST or a
// window that it comes directly under. Owned windows stay above their owners, topmost ones above the rest.
void Restack(Window& window, HWND after);

// The window and all that it owns, bottom to top.
std::vector<HWND> OwnerGroup(const Window& topLevel);
// The layer that a top-level belongs into.
StackingOrder::Layer LayerOf(HWND window);
// Its topmost style was changed: it and what it owns go to the top of the layers they belong to now.
void FollowLayer(const Window& topLevel);

// Works out what the window system must know besides pixels, and tells it when that changed.
void UpdateTraits(Window& topLevel);
void UpdateTraitsOfOwned(const Window& owner);

}  // namespace platform
