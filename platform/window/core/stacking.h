// Who lies above whom, among top-levels and among the children of a window.
#pragma once

#include <vector>

#include "platform/window/core/stacking_order.h"
#include "platform/window/core/window_record.h"

namespace platform {

// Of all top-levels.
const StackingOrder& Stack();

// Puts a new window on top of its siblings or of the stack (throws std::bad_alloc; take it out then, too),
// and takes a window out.
void AddToTree(Window& window);
void RemoveFromTree(Window& window);

// Moves a window in its stacking order. `after` is HWND_TOP, HWND_BOTTOM, HWND_TOPMOST, HWND_NOTOPMOST or a
// window that it comes directly under. Owned windows stay above their owners, topmost ones above the rest.
void Restack(Window& window, HWND after);
// To the top of the layer that the top-level belongs into now; the window system has done so by itself.
void RaiseInLayer(const Window& topLevel);

// The window and all that it owns, bottom to top.
std::vector<HWND> OwnerGroup(const Window& topLevel);
// Its topmost style was changed: it and what it owns go to the top of the layers they belong to now.
void FollowLayer(const Window& topLevel);

void ClearStack();

}  // namespace platform
