// Memory contexts and the bitmaps that are selected into them.
#include <limits>
#include <new>
#include <utility>

#include "platform/graphics/device_context.h"
#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/scale.h"

namespace platform {
namespace {

HBITMAP RefuseSize() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return {};
}

std::shared_ptr<Surface> MakeSurface(int width, int height) {
    if (!Surface::IsPossible(width, height)) {
        RefuseSize();
        return {};
    }
    std::shared_ptr<Surface> surface = Surface::Create(width, height);
    if (!surface) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return surface;
}

HBITMAP InsertBitmap(std::shared_ptr<Surface> surface, bool section) {
    auto bitmap = std::make_shared<GdiBitmap>();
    bitmap->surface = std::move(surface);
    bitmap->section = section;
    const std::lock_guard lock(Gdi().mutex);
    return Gdi().bitmaps.Insert(std::move(bitmap));
}

// The empty handle asks nothing of a compatible object.
bool IsReference(HDC context) {
    return !context || ShareContext(context);
}

BOOL InvalidHandle() {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

}  // namespace
}  // namespace platform

using namespace platform;

HDC CreateCompatibleDC(HDC context) {
    if (!IsReference(context)) return {};
    auto made = std::make_shared<DeviceContext>();
    const std::lock_guard lock(Gdi().mutex);
    return Gdi().contexts.Insert(std::move(made));
}

BOOL DeleteDC(HDC context) {
    std::shared_ptr<DeviceContext> removed;
    const std::lock_guard lock(Gdi().mutex);
    const DeviceContext* const found = Gdi().contexts.Find(context);
    if (!found || !found->IsMemory()) return InvalidHandle();
    removed = Gdi().contexts.Remove(context);
    if (GdiBitmap* const held = Gdi().bitmaps.Find(removed->Bitmap())) held->holder = {};
    return TRUE;
}

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) {
    if (!IsReference(context)) return {};
    const int scale = GetDeviceScale(context);
    if (!Surface::IsPossible(width, height)) return RefuseSize();
    std::shared_ptr<Surface> surface = MakeSurface(ScaledLength(width, scale), ScaledLength(height, scale));
    if (!surface) return {};
    surface->SetScale(scale);
    return InsertBitmap(std::move(surface), false);
}

HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits) {
    if (bits) *bits = nullptr;
    if (!IsReference(context)) return {};
    if (!info || !bits || usage != DIB_RGB_COLORS || info->bmiHeader.biPlanes != 1 ||
        info->bmiHeader.biBitCount != 32 || info->bmiHeader.biCompression != BI_RGB ||
        info->bmiHeader.biHeight == std::numeric_limits<LONG>::min()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    const int width = info->bmiHeader.biWidth;
    const bool bottomUp = info->bmiHeader.biHeight > 0;
    const int height = bottomUp ? info->bmiHeader.biHeight : -info->bmiHeader.biHeight;
    std::shared_ptr<Surface> surface = MakeSurface(width, height);
    if (!surface) return {};
    std::uint32_t* const first = surface->Row(0);
    if (bottomUp) {
        const std::ptrdiff_t stride = surface->Stride();
        std::uint32_t* const last = surface->Row(height - 1);
        surface = Surface::Wrap(last, width, height, -stride, std::move(surface));
    }
    const HBITMAP bitmap = InsertBitmap(std::move(surface), true);
    *bits = first;
    return bitmap;
}

int GetDeviceScale(HDC context) {
    const std::shared_ptr<Surface> surface = context ? SurfaceOf(context) : std::shared_ptr<Surface>();
    return surface ? surface->Scale() : 1;
}

BOOL SetBitmapScale(HBITMAP bitmap, int scale) {
    const std::lock_guard lock(Gdi().mutex);
    GdiBitmap* const found = Gdi().bitmaps.Find(bitmap);
    if (!found || found->holder) return InvalidHandle();
    Surface& surface = *found->surface;
    if (scale < 1 || surface.Width() % scale != 0 || surface.Height() % scale != 0) {
        RefuseSize();
        return FALSE;
    }
    surface.SetScale(scale);
    return TRUE;
}

void GdiFlush() {
    const std::lock_guard lock(Gdi().mutex);
    Gdi().bitmaps.ForEach([](HBITMAP, GdiBitmap& bitmap) {
        if (bitmap.section) bitmap.surface->NoteWrites();
    });
}

HBITMAP SelectObject(HDC context, HBITMAP bitmap) {
    GdiTables& gdi = Gdi();
    std::shared_ptr<Surface> old = SurfaceOf(context);  // its first use; released after the lock
    const std::lock_guard lock(gdi.mutex);
    DeviceContext* const target = gdi.contexts.Find(context);
    GdiBitmap* const chosen = gdi.bitmaps.Find(bitmap);
    if (!target || !target->IsMemory() || (bitmap && !chosen) ||
        (chosen && chosen->holder && !(chosen->holder == context))) {
        SetLastError(ERROR_INVALID_HANDLE);
        return {};
    }
    const HBITMAP before = target->Bitmap();
    if (GdiBitmap* const released = gdi.bitmaps.Find(before)) released->holder = {};
    if (chosen) chosen->holder = context;
    old = target->Select(bitmap, chosen ? chosen->surface : std::shared_ptr<Surface>());
    return before;
}

BOOL DeleteObject(HBITMAP bitmap) {
    std::shared_ptr<GdiBitmap> removed;
    const std::lock_guard lock(Gdi().mutex);
    const GdiBitmap* const found = Gdi().bitmaps.Find(bitmap);
    if (!found || found->holder) return InvalidHandle();
    removed = Gdi().bitmaps.Remove(bitmap);
    return TRUE;
}

BOOL SetFirstUseProc(HDC context, FIRSTUSEPROC procedure, void* argument) {
    const auto found = ShareContext(context);
    if (!found || !found->IsMemory()) return InvalidHandle();
    found->SetFirstUse({procedure, argument});
    return TRUE;
}

std::uint64_t GetSurfaceRevision(HDC context) {
    const std::shared_ptr<Surface> surface = SurfaceOf(context);
    return surface ? surface->Revision() : 0;
}
