#include "platform/graphics/text/coverage.h"

#include <utility>

#include "platform/graphics/text/text_layout.h"

namespace platform {

Coverage Coverage::Render(const TextLayout& text, const CRect& part) {
    return Render(part, [&](cairo_t* target) { text.Show(target, part.top, part.bottom); });
}

Coverage Coverage::Render(const CRect& part, const std::function<void(cairo_t*)>& draw) {
    Coverage coverage;
    std::unique_ptr<cairo_surface_t, Destroy> surface(
        cairo_image_surface_create(CAIRO_FORMAT_A8, part.Width(), part.Height()));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return coverage;
    cairo_t* target = cairo_create(surface.get());
    cairo_translate(target, -part.left, -part.top);
    draw(target);
    const bool failed = cairo_status(target) != CAIRO_STATUS_SUCCESS;
    cairo_destroy(target);
    if (failed) return coverage;
    cairo_surface_flush(surface.get());
    coverage.values_ = cairo_image_surface_get_data(surface.get());
    coverage.stride_ = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    coverage.part_ = part;
    coverage.surface_ = std::move(surface);
    return coverage;
}

}  // namespace platform
