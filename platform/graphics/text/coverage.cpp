#include "platform/graphics/text/coverage.h"

#include <algorithm>
#include <utility>

#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/text/text_layout.h"

namespace platform {

Coverage Coverage::Render(const LaidText& text, const CRect& part) {
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

CoveragePaint::CoveragePaint(std::uint32_t pixel) {
    for (std::uint32_t cover = 0; cover < 256; ++cover) {
        std::uint32_t covered = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            covered |= MultiplyChannels((pixel >> shift) & 0xFF, cover) << shift;
        }
        covered_[cover] = covered;
    }
}

void CoveragePaint::BlendRow(std::uint32_t* to, const std::uint8_t* coverage, std::size_t count) const {
    constexpr std::size_t kPiece = 256;
    std::uint32_t from[kPiece];
    for (; count != 0;) {
        const std::size_t size = std::min(count, kPiece);
        for (std::size_t i = 0; i < size; ++i)
            from[i] = covered_[coverage[i]];
        platform::BlendRow(to, from, size);
        to += size;
        coverage += size;
        count -= size;
    }
}

}  // namespace platform
