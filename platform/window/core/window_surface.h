// The pixels of a top-level, and how they become visible.
#pragma once

#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

// Whether WM_PAINT draws this top-level; otherwise UpdateLayeredWindow feeds it.
bool IsPainted(const Window& topLevel);

// The surface of a top-level at its present size, made or enlarged when needed and ready to be written. The
// part that both sizes share keeps its pixels. Null only for an empty window or without memory.
std::shared_ptr<Surface> SurfaceForWriting(Window& topLevel);
// Shows a region of the surface, in its pixels.
void Present(Window& topLevel, const Region& drawn);

// Works out how the pixels become visible, and tells the window system when that changed.
void UpdateCompositing(Window& topLevel);

}  // namespace platform
