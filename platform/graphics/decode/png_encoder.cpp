#include <cairo.h>

#include <new>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

cairo_status_t Append(void* bytes, const unsigned char* data, unsigned length) try {
    auto& all = *static_cast<std::vector<std::uint8_t>*>(bytes);
    all.insert(all.end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
} catch (const std::bad_alloc&) {
    return CAIRO_STATUS_NO_MEMORY;
}

}  // namespace

std::vector<std::uint8_t> EncodePng(const Surface& surface) {
    // Cairo divides by alpha as Unpremultiply does, but wraps where a channel is above it.
    const std::shared_ptr<Surface> clamped = Surface::CreateUnset(surface.Width(), surface.Height());
    if (!clamped) return {};
    for (int y = 0; y < surface.Height(); ++y)
        ClampPremultipliedRow(clamped->Row(y), surface.Row(y), static_cast<std::size_t>(surface.Width()));
    std::vector<std::uint8_t> bytes;
    if (cairo_surface_write_to_png_stream(clamped->Cairo(), &Append, &bytes) != CAIRO_STATUS_SUCCESS)
        return {};
    return bytes;
}

}  // namespace platform
