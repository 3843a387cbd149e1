#include "examples/desktop/picture.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace desktop {
namespace {

// What a decoder may be asked to unpack, whatever size is wanted afterwards.
constexpr std::int64_t kMostPixels = std::int64_t{1} << 26;

bool IsDrawn(GdkPixbufFormat* format) {
    return (gdk_pixbuf_format_is_scalable(format)) != FALSE;
}

// Straight alpha in both; only the order of the channels differs.
std::shared_ptr<Gdiplus::Bitmap> ToBitmap(GdkPixbuf* pixels) {
    const int width = gdk_pixbuf_get_width(pixels);
    const int height = gdk_pixbuf_get_height(pixels);
    const int channels = gdk_pixbuf_get_n_channels(pixels);
    const guint8* bytes = gdk_pixbuf_read_pixels(pixels);
    std::vector<Gdiplus::ARGB> colours;
    colours.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const guint8* from = bytes + std::ptrdiff_t{y} * gdk_pixbuf_get_rowstride(pixels);
        for (int x = 0; x < width; ++x, from += channels) {
            const BYTE alpha = channels == 4 ? from[3] : BYTE{255};
            colours.push_back(Gdiplus::Color(alpha, from[0], from[1], from[2]).GetValue());
        }
    }
    auto picture = std::make_shared<Gdiplus::Bitmap>(width, height);
    const Gdiplus::Rect all(0, 0, width, height);
    Gdiplus::BitmapData data{};
    data.Width = static_cast<UINT>(width);
    data.Height = static_cast<UINT>(height);
    data.Stride = width * static_cast<int>(sizeof(Gdiplus::ARGB));
    data.PixelFormat = Gdiplus::PixelFormat32bppARGB;
    data.Scan0 = colours.data();
    picture->LockBits(&all, Gdiplus::ImageLockModeWrite | Gdiplus::ImageLockModeUserInputBuf,
                      Gdiplus::PixelFormat32bppARGB, &data);
    picture->UnlockBits(&data);
    return picture;
}

Gdiplus::Rect Centred(GdkPixbuf* pixels) {
    const int width = gdk_pixbuf_get_width(pixels);
    const int height = gdk_pixbuf_get_height(pixels);
    return {(kIconSide - width) / 2, (kIconSide - height) / 2, width, height};
}

void Fill(Gdiplus::Graphics& graphics, Gdiplus::Rect place, int grown, Gdiplus::Color colour) {
    const Gdiplus::SolidBrush brush(colour);
    graphics.FillRectangle(&brush, place.X - grown, place.Y - grown, place.Width + 2 * grown,
                           place.Height + 2 * grown);
}

}  // namespace

Pixels LoadPixels(const std::string& path, int side) {
    int width = 0;
    int height = 0;
    GdkPixbufFormat* format = gdk_pixbuf_get_file_info(path.c_str(), &width, &height);
    if (!format || std::int64_t{width} * height > kMostPixels) return {};
    const bool larger = width > side || height > side;
    const int bound = larger || IsDrawn(format) ? side : std::max({width, height, 1});
    const Pixels pixels(gdk_pixbuf_new_from_file_at_scale(path.c_str(), bound, bound, TRUE, nullptr));
    // As the camera was held.
    return Pixels(pixels ? gdk_pixbuf_apply_embedded_orientation(pixels.get()) : nullptr);
}

Picture IconFrom(const Pixels& pixels) {
    auto icon = std::make_shared<Gdiplus::Bitmap>(kIconSide, kIconSide);
    Gdiplus::Graphics graphics(icon.get());
    const Gdiplus::Rect place = Centred(pixels.get());
    graphics.DrawImage(ToBitmap(pixels.get()).get(), place.X, place.Y);
    return icon;
}

Picture ThumbnailFrom(const Pixels& pixels) {
    auto thumbnail = std::make_shared<Gdiplus::Bitmap>(kIconSide, kIconSide);
    Gdiplus::Graphics graphics(thumbnail.get());
    const Gdiplus::Rect place = Centred(pixels.get());
    Gdiplus::Rect shadow = place;
    shadow.Y += 1;
    Fill(graphics, shadow, 3, Gdiplus::Color(0x30000000));
    Fill(graphics, place, 3, Gdiplus::Color(0x50000000));
    Fill(graphics, place, 2, Gdiplus::Color(0xFFF4F4F8));
    graphics.DrawImage(ToBitmap(pixels.get()).get(), place.X, place.Y);
    return thumbnail;
}

}  // namespace desktop
