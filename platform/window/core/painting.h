// Update regions, and what is drawn and shown of them.
#pragma once

#include "platform/window/core/core.h"

namespace platform {

// Adds to the update region, in window coordinates. A parent draws over its children, so those under the
// rectangle are painted again too, unless its style spares them.
void Invalidate(Window& window, const CRect& rect, bool erase);
void InvalidateAll(Window& window, bool erase);
void Validate(Window& window);

// A window appears: it and its children that wait to be painted stand in line again. Those that are not on
// the display leave it.
void QueueForPaint(Window& window);
// The next window to be painted: parents before their children, the longest waiting first.
HWND NextToPaint(HWND within);

// Whether WM_PAINT draws this top-level; otherwise UpdateLayeredWindow feeds it.
bool IsPainted(const Window& topLevel);

// The surface of a top-level at its present size, made or enlarged when needed and ready to be written. The
// part that both sizes share keeps its pixels. Null only for an empty window or without memory.
std::shared_ptr<Surface> SurfaceForWriting(Window& topLevel);
// Shows a region of the surface, in its pixels.
void Present(Window& topLevel, const Region& drawn);

// Works out how the pixels become visible, and tells the window system when that changed.
void UpdateCompositing(Window& topLevel);

// Deletes every device context still out on a window.
void DropContexts(HWND window);

}  // namespace platform
