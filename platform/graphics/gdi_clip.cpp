// What of a context may be drawn on.
#include <utility>

#include "platform/graphics/device_context.h"
#include "platform/graphics/gdi_objects.h"

namespace platform {
namespace {

// The drawable set in context coordinates.
Region DrawableOf(const DeviceContext& context) {
    Region region = context.Drawable();
    region.Offset(-context.Origin().x, -context.Origin().y);
    return region.Units(context.Scale());
}

}  // namespace
}  // namespace platform

using namespace platform;

int SelectClipRgn(HDC context, HRGN region) {
    const auto target = ShareContext(context);
    if (!target) return ERROR_REGION;
    if (!region) {
        target->SetClip({});
        return KindOf(target->Drawable());
    }
    const auto clip = ShareRegion(region);
    if (!clip) return ERROR_REGION;
    Region copy = *clip;
    if (!copy.IsIntact()) return NotEnoughMemory();
    target->SetClip(std::move(copy));
    return KindOf(target->Drawable());
}

int IntersectClipRect(HDC context, int left, int top, int right, int bottom) {
    const auto target = ShareContext(context);
    if (!target) return ERROR_REGION;
    target->IntersectClip({left, top, right, bottom});
    return KindOf(target->Drawable());
}

int GetClipRgn(HDC context, HRGN region) {
    const auto target = ShareContext(context);
    const auto result = ShareRegion(region);
    if (!target || !result) return -1;
    if (!target->Clip()) return 0;
    *result = *target->Clip();
    return 1;
}

int GetClipBox(HDC context, RECT* box) {
    const auto target = ShareContext(context);
    if (!target) return ERROR_REGION;
    if (!box) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return ERROR_REGION;
    }
    const Region drawable = DrawableOf(*target);
    *box = drawable.Box();
    return KindOf(drawable);
}

int GetDrawableRgn(HDC context, HRGN region) {
    const auto target = ShareContext(context);
    const auto result = ShareRegion(region);
    if (!target || !result) return ERROR_REGION;
    Region drawable = DrawableOf(*target);
    if (!drawable.IsIntact()) return NotEnoughMemory();
    *result = std::move(drawable);
    return KindOf(*result);
}
