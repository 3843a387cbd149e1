#include <gdk-pixbuf/gdk-pixbuf.h>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

struct Release {
    void operator()(gpointer object) const { g_object_unref(object); }
};

std::unique_ptr<GdkPixbuf, Release> StraightCopy(const Surface& surface) {
    std::unique_ptr<GdkPixbuf, Release> pixels(
        gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, surface.Width(), surface.Height()));
    if (!pixels) return nullptr;
    guint8* row = gdk_pixbuf_get_pixels(pixels.get());
    const std::ptrdiff_t stride = gdk_pixbuf_get_rowstride(pixels.get());
    std::vector<std::uint32_t> straight(static_cast<std::size_t>(surface.Width()));
    for (int y = 0; y < surface.Height(); ++y, row += stride) {
        UnpremultiplyRow(straight.data(), surface.Row(y), straight.size());
        guint8* out = row;
        for (const std::uint32_t pixel : straight) {
            out[0] = static_cast<guint8>(pixel >> 16);
            out[1] = static_cast<guint8>(pixel >> 8);
            out[2] = static_cast<guint8>(pixel);
            out[3] = static_cast<guint8>(pixel >> 24);
            out += 4;
        }
    }
    return pixels;
}

}  // namespace

std::vector<std::uint8_t> EncodePng(const Surface& surface) {
    const std::unique_ptr<GdkPixbuf, Release> pixels = StraightCopy(surface);
    if (!pixels) return {};
    gchar* data = nullptr;
    gsize length = 0;
    GError* error = nullptr;
    if (!gdk_pixbuf_save_to_buffer(pixels.get(), &data, &length, "png", &error, nullptr)) {
        g_error_free(error);
        return {};
    }
    const std::unique_ptr<gchar, decltype(&g_free)> owned(data, &g_free);
    const auto* first = reinterpret_cast<const std::uint8_t*>(data);
    return std::vector<std::uint8_t>(first, first + length);
}

}  // namespace platform
