#include "platform/graphics/device_context.h"

#include <utility>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/scale.h"

namespace platform {
namespace {

// A cover with more rectangles than this costs more to keep than the pixels it saves.
constexpr int kDrawnParts = 48;

}  // namespace

DeviceContext::DeviceContext(std::shared_ptr<Surface> surface, POINT origin, Region bounds)
    : memory_(false), surface_(std::move(surface)), origin_(origin), bounds_(std::move(bounds)) {
    Recompute();
}

std::shared_ptr<Surface> DeviceContext::Select(HBITMAP bitmap, std::shared_ptr<Surface> surface) {
    bitmap_ = bitmap;
    surface_.swap(surface);
    Recompute();
    return surface;
}

void DeviceContext::BeginUse() {
    const FirstUse firstUse = std::exchange(firstUse_, {});
    firstUse.procedure(firstUse.argument);
}

void DeviceContext::SetClip(std::optional<Region> clip) {
    clip_ = std::move(clip);
    Recompute();
}

void DeviceContext::IntersectClip(const RECT& rect) {
    if (clip_)
        clip_->Intersect(rect);
    else
        clip_.emplace(rect);
    Recompute();
}

void DeviceContext::Recompute() {
    if (!surface_) {
        drawable_ = Region();
        return;
    }
    const CRect whole(0, 0, surface_->Width(), surface_->Height());
    drawable_ = Region(whole);
    if (bounds_) drawable_.Intersect(*bounds_);
    if (clip_) {
        Region clip = clip_->Scaled(surface_->Scale());
        clip.Offset(origin_.x, origin_.y);
        drawable_.Intersect(clip);
    }
}

RECT DeviceContext::ToSurface(const RECT& units) const {
    const CRect pixels = ScaledRect(units, Scale());
    return {SaturatedSum(pixels.left, origin_.x), SaturatedSum(pixels.top, origin_.y),
            SaturatedSum(pixels.right, origin_.x), SaturatedSum(pixels.bottom, origin_.y)};
}

void DeviceContext::Note(const RECT& surfaceRect) {
    if (memory_ || drawn_.Covers(surfaceRect)) return;
    drawn_.Add(surfaceRect);
    if (drawn_.Count() <= kDrawnParts) return;
    // Too scattered: all that could have been drawn inside the box.
    const CRect box = drawn_.Box();
    drawn_ = *bounds_;
    drawn_.Intersect(box);
    if (drawn_.Count() > kDrawnParts) drawn_ = Region(box);
}

HDC MakeDeviceContext(std::shared_ptr<Surface> surface, POINT origin, Region bounds) {
    auto context = std::make_shared<DeviceContext>(std::move(surface), origin, std::move(bounds));
    const std::lock_guard lock(Gdi().mutex);
    return Gdi().contexts.Insert(std::move(context));
}

void DeleteDeviceContext(HDC context) {
    std::shared_ptr<DeviceContext> removed;
    const std::lock_guard lock(Gdi().mutex);
    const DeviceContext* const found = Gdi().contexts.Find(context);
    if (found && !found->IsMemory()) removed = Gdi().contexts.Remove(context);
}

std::shared_ptr<Surface> SurfaceOf(HDC context) {
    const auto found = ShareContext(context);
    return found ? found->GetSurface() : std::shared_ptr<Surface>();
}

std::optional<Target> TargetOf(HDC context) {
    const auto found = ShareContext(context);
    if (!found || !found->GetSurface()) return {};
    return Target{found->GetSurface(), found->Origin(), found->Drawable()};
}

Region DrawnRegion(HDC context) {
    const auto found = ShareContext(context);
    return found ? found->Drawn() : Region();
}

void NoteDrawn(HDC context, const RECT& surfaceRect) {
    if (const auto found = ShareContext(context)) found->Note(surfaceRect);
}

std::optional<Region> TakeRegion(HRGN region) {
    std::shared_ptr<Region> taken;
    {
        const std::lock_guard lock(Gdi().mutex);
        taken = Gdi().regions.Remove(region);
    }
    if (!taken) return {};
    return std::move(*taken);
}

}  // namespace platform
