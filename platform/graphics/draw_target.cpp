#include "platform/graphics/draw_target.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/scale.h"

namespace platform {

Gdiplus::Status DrawTarget::Take(GraphicsData& graphics) {
    if (graphics.status != Gdiplus::Ok) return graphics.status;
    if (graphics.lent) return Gdiplus::ObjectBusy;
    if (graphics.onImage) {
        const std::shared_ptr<ImageData> image = graphics.image.lock();
        if (!image) return graphics.status = Gdiplus::Win32Error;
        surface_ = image->Writable();
        if (!surface_) return Gdiplus::OutOfMemory;
        box_ = CRect(0, 0, surface_->Width(), surface_->Height());
        opaqueFormat_ = image->IsOpaqueFormat();
    } else {
        context_ = ShareContext(graphics.context);
        if (!context_) return graphics.status = Gdiplus::Win32Error;
        surface_ = context_->GetSurface();
        if (!surface_) return Gdiplus::Win32Error;
        origin_ = context_->Origin();
        box_ = context_->Drawable().Box();
        if (context_->Drawable().Count() > 1) region_ = &context_->Drawable();
    }
    if (graphics.clip) {
        CRect clip = ScaledRect(*graphics.clip, surface_->Scale());
        clip.OffsetRect(origin_.x, origin_.y);
        box_.IntersectRect(box_, clip);
    }
    return Gdiplus::Ok;
}

Region DrawTarget::Clip() const {
    Region clip = region_ ? *region_ : Region(box_);
    if (region_) clip.Intersect(box_);
    return clip;
}

void DrawTarget::Note(const CRect& touched) {
    surface_->Touch();
    if (context_) context_->Note(touched);
}

World::World(const GraphicsData& graphics, POINT origin, int scale) {
    Gdiplus::REAL m[6];
    graphics.transform.GetElements(m);
    m11 = static_cast<double>(m[0]) * scale;
    m12 = static_cast<double>(m[1]) * scale;
    m21 = static_cast<double>(m[2]) * scale;
    m22 = static_cast<double>(m[3]) * scale;
    dx = static_cast<double>(m[4]) * scale + origin.x;
    dy = static_cast<double>(m[5]) * scale + origin.y;
}

Box Transformed(const World& world, const Box& box) {
    const double x[4] = {world.X(box.left, box.top), world.X(box.right, box.top),
                         world.X(box.left, box.bottom), world.X(box.right, box.bottom)};
    const double y[4] = {world.Y(box.left, box.top), world.Y(box.right, box.top),
                         world.Y(box.left, box.bottom), world.Y(box.right, box.bottom)};
    return {*std::min_element(x, x + 4), *std::min_element(y, y + 4), *std::max_element(x, x + 4),
            *std::max_element(y, y + 4)};
}

bool IsDrawable(const Box& box) {
    // Written so that a NaN fails.
    return box.left >= -kFarthest && box.top >= -kFarthest && box.right <= kFarthest &&
           box.bottom <= kFarthest && box.right >= -kFarthest && box.bottom >= -kFarthest &&
           box.left <= kFarthest && box.top <= kFarthest;
}

CRect Rounded(const Box& box) {
    constexpr double kHalf = 0.5 + 1.0 / 1024;
    const auto edge = [](double position) { return static_cast<int>(std::floor(position + kHalf)); };
    return CRect(edge(box.left), edge(box.top), edge(box.right), edge(box.bottom));
}

}  // namespace platform
