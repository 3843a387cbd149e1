// Parents, children and owners.
#pragma once

#include <vector>

#include "platform/window/core/window_table.h"

namespace platform {

// The top-level that a window is or lies in.
HWND TopLevelOf(HWND window);
Window* TopLevelOf(const Window& window);
Window* OwnerOf(const Window& topLevel);
bool IsSameOrInside(HWND window, HWND ancestor);
// Shown, and so are all its parents.
bool IsVisibleInTree(const Window& window);
// Visible, and its top-level is not minimised: worth painting.
bool IsOnDisplay(const Window& window);
// Enabled, and so are all its parents.
bool IsEnabledInTree(const Window& window);

}  // namespace platform
