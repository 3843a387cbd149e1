// Regions behind handles.
#include <new>
#include <utility>

#include "platform/graphics/device_context.h"
#include "platform/graphics/gdi_objects.h"

namespace platform {

int KindOf(const Region& region) {
    const int count = region.Count();
    return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

int NotEnoughMemory() {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return ERROR_REGION;
}

namespace {

// Does what takes memory, and gives `failure` with the last error where there is none.
template <class Work, class Result>
Result WithMemory(Work work, Result failure) try {
    return work();
} catch (const std::bad_alloc&) {
    NotEnoughMemory();
    return failure;
}

HRGN InsertRegion(Region region) {
    if (!region.IsIntact()) throw std::bad_alloc();
    auto made = std::make_shared<Region>(std::move(region));
    const std::lock_guard lock(Gdi().mutex);
    return Gdi().regions.Insert(std::move(made));
}

RECT Ordered(int left, int top, int right, int bottom) {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    return {left, top, right, bottom};
}

int InvalidParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
}

}  // namespace
}  // namespace platform

using namespace platform;

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
    return WithMemory([&] { return InsertRegion(Region(Ordered(left, top, right, bottom))); }, HRGN());
}

BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom) {
    const auto target = ShareRegion(region);
    if (!target) return FALSE;
    Region rect(Ordered(left, top, right, bottom));
    if (!rect.IsIntact()) return NotEnoughMemory();
    *target = std::move(rect);
    return TRUE;
}

HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int ellipseWidth, int ellipseHeight) {
    return WithMemory(
        [&] {
            const RECT rect = Ordered(left, top, right, bottom);
            return InsertRegion(Region::RoundRect(rect, ellipseWidth, ellipseHeight));
        },
        HRGN());
}

int CombineRgn(HRGN target, HRGN first, HRGN second, int mode) {
    const auto result = ShareRegion(target);
    const auto left = ShareRegion(first);
    if (!result || !left) return ERROR_REGION;
    if (mode < RGN_AND || mode > RGN_COPY) return InvalidParameter();
    Region combined = *left;
    if (mode != RGN_COPY) {
        const auto right = ShareRegion(second);
        if (!right) return ERROR_REGION;
        if (mode == RGN_AND) combined.Intersect(*right);
        if (mode == RGN_OR) combined.Add(*right);
        if (mode == RGN_XOR) combined.Xor(*right);
        if (mode == RGN_DIFF) combined.Subtract(*right);
    }
    if (!combined.IsIntact()) return NotEnoughMemory();
    *result = std::move(combined);
    return KindOf(*result);
}

int OffsetRgn(HRGN region, int dx, int dy) {
    const auto target = ShareRegion(region);
    if (!target) return ERROR_REGION;
    target->Offset(dx, dy);
    return KindOf(*target);
}

int GetRgnBox(HRGN region, RECT* box) {
    const auto found = ShareRegion(region);
    if (!found) return ERROR_REGION;
    if (!box) return InvalidParameter();
    *box = found->Box();
    return KindOf(*found);
}

BOOL PtInRegion(HRGN region, int x, int y) {
    const auto found = ShareRegion(region);
    return found && found->Contains(x, y);
}

BOOL RectInRegion(HRGN region, const RECT* rect) {
    const auto found = ShareRegion(region);
    if (!found) return FALSE;
    if (!rect) return InvalidParameter();
    return found->Intersects(*rect);
}

int GetRgnRectCount(HRGN region) {
    const auto found = ShareRegion(region);
    return found ? found->Count() : 0;
}

BOOL GetRgnRect(HRGN region, int index, RECT* rect) {
    const auto found = ShareRegion(region);
    if (!found) return FALSE;
    if (!rect || index < 0 || index >= found->Count()) return InvalidParameter();
    *rect = found->Rect(index);
    return TRUE;
}

BOOL DeleteObject(HRGN region) {
    if (TakeRegion(region)) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
