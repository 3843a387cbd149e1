// Update regions, and who is painted next.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// Adds to the update region, in window coordinates. A parent draws over its children, so those under the
// rectangle are painted again too, unless its style spares them.
void Invalidate(Window& window, const CRect& rect, bool erase);
void InvalidateAll(Window& window, bool erase);
// The parts of the parent that a child covered or covers now.
void InvalidateUnder(const Window& child, const CRect& rect);
void Validate(Window& window);

// A window appears: it and its children that wait to be painted stand in line again. Those that are not on
// the display leave it.
void QueueForPaint(Window& window);
// The next window to be painted: parents before their children, the longest waiting first.
HWND NextToPaint(HWND within);

void ResetInvalidation();

}  // namespace platform
