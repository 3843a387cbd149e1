// Device contexts as the other modules of the platform make and use them.
#pragma once

#include <memory>
#include <optional>

#include <platform/gdi.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"

namespace platform {

// A context on a surface that is not a selected bitmap: a window's. (0, 0) of the context is `origin` of the
// surface; drawing is confined to `bounds`, in surface coordinates. Deleted by DeleteDeviceContext only.
// DeleteDC and SelectObject refuse it.
HDC MakeDeviceContext(std::shared_ptr<Surface> surface, POINT origin, Region bounds);
void DeleteDeviceContext(HDC context);

// What a context draws on right now; null for a stale context or one without a bitmap.
std::shared_ptr<Surface> SurfaceOf(HDC context);

// A drawing target, taken from a context at the moment of drawing.
struct Target {
    std::shared_ptr<Surface> surface;
    POINT origin;  // of the context, in surface coordinates
    Region clip;   // in surface coordinates; everything that may be drawn on
};
std::optional<Target> TargetOf(HDC context);

// What was drawn through the context since it was made, as a region in surface coordinates (a cover, not
// always exact). For window contexts only; empty otherwise.
Region DrawnRegion(HDC context);
void NoteDrawn(HDC context, const RECT& surfaceRect);

// The region behind a handle, which is stale afterwards; empty when it is so already.
std::optional<Region> TakeRegion(HRGN region);

}  // namespace platform
