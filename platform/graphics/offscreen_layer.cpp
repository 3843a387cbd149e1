#include "platform/graphics/offscreen_layer.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/cairo_paint.h"
#include "platform/graphics/pixel_memory.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

// What is drawn aside may be larger than what can be seen of it, but not without measure.
constexpr std::int64_t kAlwaysWhole = std::int64_t{1} << 20;

std::int64_t AreaOf(const CRect& rect) {
    return rect.IsRectEmpty() ? 0 : std::int64_t{rect.Width()} * rect.Height();
}

}  // namespace

OffscreenLayer::~OffscreenLayer() {
    if (cairo_) cairo_destroy(cairo_);
    if (surface_) {
        cairo_surface_finish(surface_);
        cairo_surface_destroy(surface_);
    }
}

Gdiplus::Status OffscreenLayer::Prepare(const GraphicsData& graphics, const DrawTarget& target,
                                        const Box& box, double margin, Kind kind) {
    // Without the origin of the context, so that the same shape gives the same pixels in every context.
    const World world(graphics, {0, 0}, target.Scale());
    const Box device = Transformed(world, box);
    const double reach = margin * (std::hypot(world.m11, world.m21) + std::hypot(world.m12, world.m22)) + 2;
    if (!IsNear(device.left) || !IsNear(device.top) || !IsNear(device.right) || !IsNear(device.bottom) ||
        !IsNear(reach))
        return Gdiplus::InvalidParameter;
    place_ = CRect(static_cast<int>(std::floor(device.left - reach)),
                   static_cast<int>(std::floor(device.top - reach)),
                   static_cast<int>(std::ceil(device.right + reach)),
                   static_cast<int>(std::ceil(device.bottom + reach)));
    place_.OffsetRect(target.Origin().x, target.Origin().y);
    CRect seen;
    if (!seen.IntersectRect(place_, target.Box())) return Gdiplus::Ok;
    const CRect surface(0, 0, target.Pixels().Width(), target.Pixels().Height());
    if (AreaOf(place_) > std::max(4 * AreaOf(surface), kAlwaysWhole)) place_.IntersectRect(place_, surface);
    if (!MakeRoom(kind)) return Gdiplus::OutOfMemory;

    const cairo_matrix_t matrix{world.m11,
                                world.m12,
                                world.m21,
                                world.m22,
                                world.dx + target.Origin().x - place_.left,
                                world.dy + target.Origin().y - place_.top};
    cairo_set_matrix(cairo_, &matrix);
    cairo_set_antialias(cairo_, graphics.IsSmooth() ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
    return Gdiplus::Ok;
}

bool OffscreenLayer::MakeRoom(Kind kind) {
    const cairo_format_t format = kind == Kind::Coverage ? CAIRO_FORMAT_A8 : CAIRO_FORMAT_ARGB32;
    stride_ = cairo_format_stride_for_width(format, place_.Width());
    if (stride_ <= 0) return false;
    memory_ =
        PixelMemory::Take(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(place_.Height()));
    if (!memory_) return false;
    surface_ = cairo_image_surface_create_for_data(static_cast<unsigned char*>(memory_.get()), format,
                                                   place_.Width(), place_.Height(), stride_);
    cairo_ = cairo_create(surface_);
    return cairo_status(cairo_) == CAIRO_STATUS_SUCCESS;
}

void OffscreenLayer::BlendColor(DrawTarget& target, std::uint32_t pixel) {
    cairo_surface_flush(surface_);
    const auto* const values = static_cast<const std::uint8_t*>(memory_.get());
    target.Paint(place_, [&](const CRect& part) {
        for (int y = part.top; y < part.bottom; ++y)
            BlendCoverageRow(target.Pixels().Row(y) + part.left, pixel,
                             values + std::ptrdiff_t{y - place_.top} * stride_ + (part.left - place_.left),
                             static_cast<std::size_t>(part.Width()));
    });
}

void OffscreenLayer::BlendPixels(DrawTarget& target) {
    cairo_surface_flush(surface_);
    const auto* const bytes = static_cast<const std::byte*>(memory_.get());
    target.Paint(place_, [&](const CRect& part) {
        for (int y = part.top; y < part.bottom; ++y)
            BlendRow(
                target.Pixels().Row(y) + part.left,
                reinterpret_cast<const std::uint32_t*>(bytes + std::ptrdiff_t{y - place_.top} * stride_) +
                    (part.left - place_.left),
                static_cast<std::size_t>(part.Width()));
    });
}

}  // namespace platform
