// What stands behind the handles of device contexts, bitmaps, brushes and regions.
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include <platform/gdi.h>
#include <platform/geometry.h>

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

struct GdiFont {
    LOGFONTW looks;
};

// What a context draws text with, and how it stretches.
struct TextState {
    std::shared_ptr<const GdiFont> font;  // null for the system's
    HFONT fontHandle;
    COLORREF colour = 0x000000;
    COLORREF background = 0xFFFFFF;
    int backgroundMode = OPAQUE;
    int stretchMode = COLORONCOLOR;
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
    // What is drawn on and read; null while a memory context holds no bitmap. Settles what FirstUse left
    // open, which calls out: not under the lock.
    const std::shared_ptr<Surface>& GetSurface() {
        if (firstUse_.procedure) BeginUse();
        return surface_;
    }
    POINT Origin() const { return origin_; }
    // Pixels to a unit of the context.
    int Scale() const { return surface_ ? surface_->Scale() : 1; }
    RECT ToSurface(const RECT& units) const;
    // Everything that may be drawn on, in surface coordinates.
    const Region& Drawable() const { return drawable_; }

    HBITMAP Bitmap() const { return bitmap_; }
    // Returns the surface from before.
    std::shared_ptr<Surface> Select(HBITMAP bitmap, std::shared_ptr<Surface> surface);

    struct FirstUse {
        FIRSTUSEPROC procedure = nullptr;
        void* argument = nullptr;
    };
    void SetFirstUse(const FirstUse& firstUse) { firstUse_ = firstUse; }

    // The caller's clip, in context coordinates.
    void SetClip(std::optional<Region> clip);
    void IntersectClip(const RECT& rect);
    const std::optional<Region>& Clip() const { return clip_; }

    TextState& Text() { return text_; }

    void Note(const RECT& surfaceRect);
    const Region& Drawn() const { return drawn_; }

  private:
    void Recompute();
    void BeginUse();

    bool memory_ = true;
    std::shared_ptr<Surface> surface_;
    POINT origin_{0, 0};
    std::optional<Region> bounds_;
    std::optional<Region> clip_;
    Region drawable_;
    HBITMAP bitmap_;
    Region drawn_;
    FirstUse firstUse_;
    TextState text_;
};

// All tables, under one lock: handles may be made and deleted by any thread, while each object is used by
// one. Nothing is called out of the lock.
struct GdiTables {
    std::mutex mutex;
    HandleTable<HDC, DeviceContext> contexts;
    HandleTable<HBITMAP, GdiBitmap> bitmaps;
    HandleTable<HBRUSH, GdiBrush> brushes;
    HandleTable<HFONT, GdiFont> fonts;
    HandleTable<HRGN, Region> regions;
    HandleTable<HICON, GdiIcon> icons;
};
GdiTables& Gdi();

// The objects behind handles. Null for a stale, foreign or empty handle, and then the last error is
// ERROR_INVALID_HANDLE.
std::shared_ptr<DeviceContext> ShareContext(HDC context);
std::shared_ptr<Region> ShareRegion(HRGN region);
std::shared_ptr<GdiBrush> ShareBrush(HBRUSH brush);
// A copy of an icon's pixels, scaled down to at most `longestSide` each way. Null for a stale icon, with
// ERROR_INVALID_HANDLE, and without memory.
std::shared_ptr<const Surface> IconPicture(HICON icon, int longestSide);

// BitBlt between contexts that count another number of pixels to a unit.
BOOL StretchUnits(DeviceContext& to, const CRect& written, DeviceContext& from, const CRect& read);

// NULLREGION, SIMPLEREGION or COMPLEXREGION.
int KindOf(const Region& region);
// ERROR_REGION, which is also FALSE, with the last error.
int NotEnoughMemory();

}  // namespace platform
