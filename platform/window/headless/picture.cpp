#include <platform/headless.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/surface.h"

namespace Headless {

std::uint32_t Picture::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return 0;
    const std::size_t index =
        static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    return index < argb.size() ? argb[index] : 0;
}

Picture Picture::Load(const CString& path) {
    Picture picture;
    Gdiplus::Bitmap file(path);
    const Gdiplus::Rect whole(0, 0, static_cast<INT>(file.GetWidth()), static_cast<INT>(file.GetHeight()));
    Gdiplus::BitmapData data{};
    if (file.LockBits(&whole, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppPARGB, &data) !=
        Gdiplus::Ok)
        return picture;
    picture.width = whole.Width;
    picture.height = whole.Height;
    for (int y = 0; y < whole.Height; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(
            static_cast<const std::uint8_t*>(data.Scan0) + std::ptrdiff_t{y} * data.Stride);
        picture.argb.insert(picture.argb.end(), row, row + whole.Width);
    }
    file.UnlockBits(&data);
    return picture;
}

bool Picture::SavePng(const CString& path) const {
    const std::shared_ptr<platform::Surface> surface = platform::Surface::Create(width, height);
    if (!surface || argb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        return false;
    for (int y = 0; y < height; ++y)
        std::memcpy(surface->Row(y), argb.data() + static_cast<std::ptrdiff_t>(y) * width,
                    static_cast<std::size_t>(width) * sizeof(std::uint32_t));
    surface->Touch();
    const std::vector<std::uint8_t> bytes = platform::EncodePng(*surface);
    if (bytes.empty()) return false;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(ToUtf8(path).c_str(), "wb"), std::fclose);
    if (!file) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}

}  // namespace Headless
