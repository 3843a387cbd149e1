// Layered windows: what they are fed, and how it is blended.

#include "platform/graphics/device_context.h"
#include "platform/graphics/resample.h"
#include "platform/graphics/scale.h"
#include "platform/window/core/bounds.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/pixel_copy.h"
#include "platform/window/core/window_surface.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

std::uint32_t KeyOf(COLORREF colour) {
    return ((colour & 0xFF) << 16) | (colour & 0xFF00) | ((colour >> 16) & 0xFF);
}

Window* FindLayered(HWND handle) {
    Window* window = Require(handle);
    if (!window) return nullptr;
    if (window->IsChild() || !window->IsLayered()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return window;
}

// A source with as many pixels to a unit as the window has.
std::shared_ptr<const Surface> WithScale(const std::shared_ptr<Surface>& source, int scale) {
    if (source->Scale() == scale) return source;
    Scaling scaling;
    scaling.sourceWidth = source->Width();
    scaling.sourceHeight = source->Height();
    scaling.right = scaling.width = ScaledLength(source->Width(), scale) / source->Scale();
    scaling.bottom = scaling.height = ScaledLength(source->Height(), scale) / source->Scale();
    return Resample(*source, scaling);
}

struct Feed {
    const POINT* position;
    const SIZE* size;
    HDC source;
    const POINT* sourcePoint;
    COLORREF key;
    const BLENDFUNCTION* blend;
    DWORD flags;
    const RECT* dirty;  // null: all may differ
};

bool IsValid(const Feed& feed) {
    if (feed.size && (feed.size->cx <= 0 || feed.size->cy <= 0 || feed.size->cx > kLongestSide ||
                      feed.size->cy > kLongestSide))
        return false;
    if (!feed.source) return !feed.size;
    if (!feed.sourcePoint || !feed.size) return false;
    if (feed.flags == ULW_ALPHA)
        return feed.blend && feed.blend->BlendOp == AC_SRC_OVER && feed.blend->BlendFlags == 0 &&
               feed.blend->AlphaFormat <= AC_SRC_ALPHA;
    return feed.flags == ULW_COLORKEY || feed.flags == ULW_OPAQUE;
}

Compositing CompositingOf(const Feed& feed) {
    Compositing compositing;
    if (feed.flags == ULW_COLORKEY) {
        compositing.mode = Compositing::Mode::Constant;
        compositing.hasKey = true;
        compositing.key = KeyOf(feed.key);
    } else if (feed.flags == ULW_ALPHA) {
        compositing.mode = feed.blend->AlphaFormat == AC_SRC_ALPHA ? Compositing::Mode::PerPixel
                                                                   : Compositing::Mode::Constant;
        compositing.alpha = feed.blend->SourceConstantAlpha;
    }
    return compositing;
}

// Copies the source into the window's own surface and shows what changed.
bool ShowFeed(Window& window, const Feed& feed, const Target& source) {
    const std::shared_ptr<Surface> surface = SurfaceForWriting(window);
    if (!surface) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    const int scale = surface->Scale();
    const POINT start = ScaledPoint(*feed.sourcePoint, scale);
    const POINT origin{start.x + source.origin.x, start.y + source.origin.y};
    Layering& layering = window.layering;
    const bool showsLast = surface->Revision() == layering.fedRevision &&
                           source.surface == layering.fedFrom.lock() && CPoint(origin) == layering.fedOrigin;
    CRect part(0, 0, surface->Width(), surface->Height());
    if (feed.dirty && showsLast) part.IntersectRect(CRect(part), ScaledRect(*feed.dirty, scale));
    const std::shared_ptr<const Surface> pixels = WithScale(source.surface, scale);
    if (!pixels) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    const Region damage = CopyPixels(*surface, *pixels, origin, part);
    layering.fed = true;
    layering.fedFrom = source.surface;
    layering.fedOrigin = origin;
    layering.fedRevision = surface->Revision();
    layering.chosen = CompositingOf(feed);
    UpdateCompositing(window);
    Present(window, damage);
    return true;
}

BOOL PushPixels(HWND handle, Feed feed) {
    Window* found = FindLayered(handle);
    if (!found) return FALSE;
    const POINT zero{0, 0};
    const SIZE own{found->rect.Width(), found->rect.Height()};
    if (feed.source && !feed.size) feed.size = &own;
    if (feed.source && !feed.sourcePoint) feed.sourcePoint = &zero;
    std::optional<Target> target;
    if (feed.source) target = TargetOf(feed.source);
    if (feed.source && (!target || !target->surface)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (found->layering.hasAttributes || !IsValid(feed)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const std::shared_ptr<Window> window = RequireShared(handle);
    const CRect before = window->rect;
    CRect rect = before;
    if (feed.position && !window->IsMinimised()) rect = CRect(*feed.position, rect.Size());
    if (feed.size) rect = CRect(rect.TopLeft(), *feed.size);
    const BoundsChange change = ChangeBounds(*window, rect, Redraw::No);
    if (target && !ShowFeed(*window, feed, *target)) {
        ChangeBounds(*window, before, Redraw::No);
        return FALSE;
    }
    // The pixels are up before anybody hears of the new place: whoever draws again then starts from there.
    if (!window->IsMinimised()) SendBoundsMessages(window, change);
    return TRUE;
}

}  // namespace

}  // namespace platform

using namespace platform;

BOOL SetLayeredWindowAttributes(HWND handle, COLORREF key, BYTE alpha, DWORD flags) {
    Window* window = FindLayered(handle);
    if (!window) return FALSE;
    if (!(flags & (LWA_COLORKEY | LWA_ALPHA))) {
        // From here on the window shows what it is fed.
        if (window->layering.hasAttributes) window->layering.fed = false;
        window->layering.hasAttributes = false;
        UpdateCompositing(*window);
        return TRUE;
    }
    const bool wasPainted = IsPainted(*window);
    Compositing chosen;
    chosen.mode = Compositing::Mode::Constant;
    if (flags & LWA_ALPHA) chosen.alpha = alpha;
    chosen.hasKey = (flags & LWA_COLORKEY) != 0;
    if (chosen.hasKey) chosen.key = KeyOf(key);
    window->layering.hasAttributes = true;
    window->layering.fed = false;
    window->layering.chosen = chosen;
    UpdateCompositing(*window);
    if (!wasPainted) InvalidateAll(*window, true);
    return TRUE;
}

BOOL UpdateLayeredWindow(HWND handle, HDC, const POINT* position, const SIZE* size, HDC source,
                         const POINT* sourcePoint, COLORREF key, const BLENDFUNCTION* blend, DWORD flags) {
    return PushPixels(handle, {position, size, source, sourcePoint, key, blend, flags, nullptr});
}

BOOL UpdateLayeredWindowIndirect(HWND handle, const UPDATELAYEREDWINDOWINFO* info) {
    if (!info || info->cbSize != sizeof(UPDATELAYEREDWINDOWINFO)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return PushPixels(handle, {info->pptDst, info->psize, info->hdcSrc, info->pptSrc, info->crKey,
                               info->pblend, info->dwFlags, info->prcDirty});
}
