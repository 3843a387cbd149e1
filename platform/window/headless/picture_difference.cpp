#include <platform/headless.h>

#include <algorithm>
#include <cstdlib>

namespace Headless {

namespace {

constexpr std::uint32_t kDiffers = 0xFFFF0000;

int Distance(std::uint32_t a, std::uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const auto channel = [shift](std::uint32_t pixel) { return static_cast<int>(pixel >> shift & 0xFF); };
        largest = std::max(largest, std::abs(channel(a) - channel(b)));
    }
    return largest;
}

// A pixel on white, as a pale grey that the differing ones stand out from.
std::uint32_t Faded(std::uint32_t pixel) {
    const std::uint32_t white = 255 - (pixel >> 24);
    const std::uint32_t sum = (pixel >> 16 & 0xFF) + 2 * (pixel >> 8 & 0xFF) + (pixel & 0xFF);
    const std::uint32_t grey = std::min(sum / 4 + white, std::uint32_t{255});
    return 0xFF000000 | (170 + grey / 3) * 0x010101;
}

bool Holds(const Picture& picture, int x, int y) {
    return x < picture.width && y < picture.height;
}

}  // namespace

Difference Compare(const Picture& shown, const Picture& wanted, int tolerance) {
    Difference difference;
    Picture& picture = difference.picture;
    picture.width = std::max({shown.width, wanted.width, 0});
    picture.height = std::max({shown.height, wanted.height, 0});
    picture.argb.reserve(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    CRect place;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const bool lacking = Holds(shown, x, y) != Holds(wanted, x, y);
            const int distance = lacking ? 255 : Distance(shown.At(x, y), wanted.At(x, y));
            difference.largest = std::max(difference.largest, distance);
            const bool differs = lacking || distance > tolerance;
            picture.argb.push_back(differs ? kDiffers : Faded(wanted.At(x, y)));
            if (!differs) continue;
            ++difference.pixels;
            place.UnionRect(CRect(place), CRect(x, y, x + 1, y + 1));
        }
    }
    difference.place = place;
    return difference;
}

}  // namespace Headless
