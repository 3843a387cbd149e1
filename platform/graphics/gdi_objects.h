// What stands behind the handles of device contexts, bitmaps, brushes and regions.
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include <platform/gdi.h>

#include "platform/base/handle_table.h"
#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"

namespace platform {

class ImageData;

struct GdiBitmap {
    std::shared_ptr<Surface> surface;
    bool section = false;  // its memory is written directly
    HDC holder;            // the context it is selected into
};

struct GdiBrush {
    COLORREF colour;
};

struct GdiIcon {
    std::shared_ptr<ImageData> image;
};

// One drawing context. Used by one thread at a time, as every object of a window is.
class DeviceContext {
  public:
    // A memory context, empty.
    DeviceContext() = default;
    // A window's context; see MakeDeviceContext.
    DeviceContext(std::shared_ptr<Surface> surface, POINT origin, Region bounds);

    bool IsMemory() const { return memory_; }
    // Null while a memory context holds no bitmap.
    const std::shared_ptr<Surface>& GetSurface() const { return surface_; }
    POINT Origin() const { return origin_; }
    // Everything that may be drawn on, in surface coordinates.
    const Region& Drawable() const { return drawable_; }

    HBITMAP Bitmap() const { return bitmap_; }
    void Select(HBITMAP bitmap, std::shared_ptr<Surface> surface);

    // The caller's clip, in context coordinates.
    void SetClip(std::optional<Region> clip);
    void IntersectClip(const RECT& rect);

    void Note(const RECT& surfaceRect);
    const Region& Drawn() const { return drawn_; }

  private:
    void Recompute();

    bool memory_ = true;
    std::shared_ptr<Surface> surface_;
    POINT origin_{0, 0};
    std::optional<Region> bounds_;
    std::optional<Region> clip_;
    Region drawable_;
    HBITMAP bitmap_;
    Region drawn_;
};

// All tables, under one lock: handles may be made and deleted by any thread, while each object is used by
// one. Nothing is called out of the lock.
struct GdiTables {
    std::mutex mutex;
    HandleTable<HDC, DeviceContext> contexts;
    HandleTable<HBITMAP, GdiBitmap> bitmaps;
    HandleTable<HBRUSH, GdiBrush> brushes;
    HandleTable<HRGN, Region> regions;
    HandleTable<HICON, GdiIcon> icons;
};
GdiTables& Gdi();

// The objects behind handles. Null for a stale, foreign or empty handle, and then the last error is
// ERROR_INVALID_HANDLE.
std::shared_ptr<DeviceContext> ShareContext(HDC context);
std::shared_ptr<Region> ShareRegion(HRGN region);
std::shared_ptr<GdiBrush> ShareBrush(HBRUSH brush);

// NULLREGION, SIMPLEREGION or COMPLEXREGION.
int KindOf(const Region& region);

}  // namespace platform
