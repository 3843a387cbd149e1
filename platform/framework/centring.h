// Where windows are put that say only what they want to be near.
#pragma once

#include <platform/geometry.h>
#include <platform/window.h>

namespace platform {

// The place of a centred window of a given size. For a child: in the middle of its parent, in the parent's
// coordinates. For a top-level: on the screen, in the middle of its owner; in the middle of the primary
// monitor where there is no owner or it is not to be seen. Kept inside the work area of the monitor.
CPoint CentredOrigin(CSize size, HWND parentOrOwner, bool child);

// The top-level that a window lies in: itself, or the one its parents lead to. Empty for a stale handle.
HWND EnclosingTopLevel(HWND window);

}  // namespace platform
