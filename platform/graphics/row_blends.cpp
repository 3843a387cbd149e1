#include "platform/graphics/row_blends.h"

#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

constexpr std::uint32_t kEvenBytes = 0x00FF00FF;

// Sums that would leave a channel stop at 255; only colours with a channel above their alpha get there.
constexpr std::uint32_t AddPairs(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t sum = a + b;
    return (sum | (0x01000100 - ((sum >> 8) & kEvenBytes))) & kEvenBytes;
}

constexpr std::uint32_t Over(std::uint32_t from, std::uint32_t to) {
    const std::uint32_t under = ScalePixel(to, 255 - (from >> 24));
    const std::uint32_t even = AddPairs(from & kEvenBytes, under & kEvenBytes);
    const std::uint32_t odd = AddPairs((from >> 8) & kEvenBytes, (under >> 8) & kEvenBytes);
    return even | (odd << 8);
}

void Pixels(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Over(from[i], to[i]);
}

void Color(std::uint32_t* to, std::uint32_t color, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Over(color, to[i]);
}

void Coverage(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Over(ScalePixel(color, coverage[i]), to[i]);
}

}  // namespace

const RowBlends kPlainRowBlends{&Pixels, &Color, &Coverage};

const RowBlends& FastestRowBlends() {
    static const RowBlends& fastest = Avx2RowBlends()   ? *Avx2RowBlends()
                                      : Sse2RowBlends() ? *Sse2RowBlends()
                                                        : kPlainRowBlends;
    return fastest;
}

}  // namespace platform
