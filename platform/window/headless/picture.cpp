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
