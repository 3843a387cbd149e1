#include "platform/graphics/text/text_mask.h"

namespace platform {

SurfacePtr RenderCoverage(const LaidText& text, const PixelBox& part) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_A8, part.Width(), part.Height()));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    cairo_t* target = cairo_create(surface.get());
    cairo_translate(target, -part.left, -part.top);
    text.Show(target, part.top, part.bottom);
    const bool failed = cairo_status(target) != CAIRO_STATUS_SUCCESS;
    cairo_destroy(target);
    if (failed) return nullptr;
    cairo_surface_flush(surface.get());
    return surface;
}

}  // namespace platform
