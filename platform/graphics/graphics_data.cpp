#include "platform/graphics/graphics_data.h"

#include <cairo.h>

#include <utility>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/ground.h"

namespace platform {

Gdiplus::Status GraphicsData::Check() {
    Ground ground;
    return ground.Take(*this);
}

std::optional<DrawingPass> GraphicsData::Begin(const std::optional<CRect>& within) {
    Ground ground;
    if (ground.Take(*this) != Gdiplus::Ok) return {};
    CRect box = ground.Box();
    if (within) box.IntersectRect(box, *within);
    if (box.IsRectEmpty()) return {};

    DrawingPass pass;
    pass.target_ = Target{ground.Share(), ground.Origin(), ground.Clip()};
    pass.context_ = ground.Context();
    pass.cairo_ = cairo_create(ground.Pixels().Cairo());
    if (cairo_status(pass.cairo_) != CAIRO_STATUS_SUCCESS) return {};
    bool any = false;
    pass.target_.clip.ForEachIn(box, [&](const CRect& part) {
        cairo_rectangle(pass.cairo_, part.left, part.top, part.Width(), part.Height());
        any = true;
    });
    if (!any) return {};
    cairo_clip(pass.cairo_);
    pass.touched_ = box;
    const World world(*this, ground.Origin());
    const cairo_matrix_t matrix{world.m11, world.m12, world.m21, world.m22, world.dx, world.dy};
    cairo_transform(pass.cairo_, &matrix);
    cairo_set_antialias(pass.cairo_, smoothing == Gdiplus::SmoothingModeAntiAlias ? CAIRO_ANTIALIAS_GRAY
                                                                                  : CAIRO_ANTIALIAS_NONE);
    pass.drawn_ = true;
    return pass;
}

DrawingPass::DrawingPass(DrawingPass&& other) noexcept
    : target_(std::move(other.target_)),
      context_(std::move(other.context_)),
      touched_(other.touched_),
      cairo_(std::exchange(other.cairo_, nullptr)),
      drawn_(std::exchange(other.drawn_, false)) {}

DrawingPass::~DrawingPass() {
    if (!cairo_) return;
    cairo_destroy(cairo_);
    if (!drawn_) return;
    target_.surface->Touch();
    if (context_ && touched_) context_->Note(*touched_);
}

}  // namespace platform
