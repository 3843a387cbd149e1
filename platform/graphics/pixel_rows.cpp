#include "platform/graphics/pixel_rows.h"

#include <algorithm>
#include <array>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {
namespace {

constexpr std::uint32_t kOddBytes = 0x00FF00FF;

// Two channels at a time: bytes 0 and 2 of `pair`, each times `factor` / 255.
constexpr std::uint32_t ScalePair(std::uint32_t pair, std::uint32_t factor) {
    const std::uint32_t product = pair * factor + 0x00800080;
    return ((product + ((product >> 8) & kOddBytes)) >> 8) & kOddBytes;
}

// Sums that would leave a channel stop at 255; only colours with a channel above their alpha get there.
constexpr std::uint32_t AddPairs(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t sum = a + b;
    return (sum | (0x01000100 - ((sum >> 8) & kOddBytes))) & kOddBytes;
}

constexpr std::uint32_t Over(std::uint32_t from, std::uint32_t to) {
    const std::uint32_t rest = 255 - (from >> 24);
    const std::uint32_t even = AddPairs(from & kOddBytes, ScalePair(to & kOddBytes, rest));
    const std::uint32_t odd = AddPairs((from >> 8) & kOddBytes, ScalePair((to >> 8) & kOddBytes, rest));
    return even | (odd << 8);
}

// ceil(2^24 / alpha): channel * 255 / alpha, rounded, as one multiplication. Exact for all pairs (tested).
constexpr std::array<std::uint32_t, 256> MakeReciprocals() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t alpha = 1; alpha < 256; ++alpha)
        table[alpha] = ((1U << 24) + alpha - 1) / alpha;
    return table;
}
constexpr std::array<std::uint32_t, 256> kReciprocals = MakeReciprocals();

#if defined(__SSE2__)

__m128i Load(const std::uint32_t* row) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(row));
}
void Store(std::uint32_t* row, __m128i pixels) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(row), pixels);
}

// Eight 16-bit products / 255, rounded.
__m128i Scale8(__m128i channels, __m128i factors) {
    const __m128i product = _mm_add_epi16(_mm_mullo_epi16(channels, factors), _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(product, _mm_srli_epi16(product, 8)), 8);
}

// The alpha of each of two unpacked pixels in all of its four channels.
__m128i SpreadAlpha(__m128i twoPixels) {
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(twoPixels, _MM_SHUFFLE(3, 3, 3, 3)),
                               _MM_SHUFFLE(3, 3, 3, 3));
}

__m128i Over4(__m128i from, __m128i to) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i full = _mm_set1_epi16(255);
    const __m128i restLow = _mm_sub_epi16(full, SpreadAlpha(_mm_unpacklo_epi8(from, zero)));
    const __m128i restHigh = _mm_sub_epi16(full, SpreadAlpha(_mm_unpackhi_epi8(from, zero)));
    const __m128i low = Scale8(_mm_unpacklo_epi8(to, zero), restLow);
    const __m128i high = Scale8(_mm_unpackhi_epi8(to, zero), restHigh);
    return _mm_adds_epu8(from, _mm_packus_epi16(low, high));
}

#endif

}  // namespace

std::uint32_t Unpremultiply(std::uint32_t premultiplied) {
    const std::uint32_t alpha = premultiplied >> 24;
    if (alpha == 255) return premultiplied;
    if (alpha == 0) return 0;
    const std::uint64_t reciprocal = kReciprocals[alpha];
    const std::uint32_t half = alpha / 2;
    const auto straight = [&](int shift) {
        const std::uint32_t channel = std::min((premultiplied >> shift) & 0xFF, alpha);
        return static_cast<std::uint32_t>(((channel * 255 + half) * reciprocal) >> 24) << shift;
    };
    return (alpha << 24) | straight(16) | straight(8) | straight(0);
}

void PremultiplyRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t alpha = from[i] >> 24;
        const std::uint32_t redBlue = ScalePair(from[i] & kOddBytes, alpha);
        const std::uint32_t green = ScalePair((from[i] >> 8) & 0xFF, alpha);
        to[i] = (alpha << 24) | redBlue | (green << 8);
    }
}

void UnpremultiplyRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = Unpremultiply(from[i]);
}

void ClampPremultipliedRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = from[i];
        const std::uint32_t alpha = pixel >> 24;
        to[i] = (alpha << 24) | (std::min((pixel >> 16) & 0xFF, alpha) << 16) |
                (std::min((pixel >> 8) & 0xFF, alpha) << 8) | std::min(pixel & 0xFF, alpha);
    }
}

void MakeOpaqueRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        to[i] = from[i] | 0xFF000000U;
}

void BlendRow(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    const __m128i alphas = _mm_set1_epi32(static_cast<int>(0xFF000000U));
    for (; i + 4 <= count; i += 4) {
        const __m128i pixels = Load(from + i);
        const __m128i alpha = _mm_and_si128(pixels, alphas);
        if (_mm_movemask_epi8(_mm_cmpeq_epi32(alpha, alphas)) == 0xFFFF)
            Store(to + i, pixels);
        else if (_mm_movemask_epi8(_mm_cmpeq_epi32(pixels, zero)) != 0xFFFF)
            Store(to + i, Over4(pixels, Load(to + i)));
    }
#endif
    for (; i < count; ++i)
        to[i] = Over(from[i], to[i]);
}

void BlendColorRow(std::uint32_t* to, std::uint32_t color, std::size_t count) {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    const __m128i pixels = _mm_set1_epi32(static_cast<int>(color));
    const __m128i rest = _mm_set1_epi16(static_cast<short>(255 - (color >> 24)));
    for (; i + 4 <= count; i += 4) {
        const __m128i under = Load(to + i);
        const __m128i low = Scale8(_mm_unpacklo_epi8(under, zero), rest);
        const __m128i high = Scale8(_mm_unpackhi_epi8(under, zero), rest);
        Store(to + i, _mm_adds_epu8(pixels, _mm_packus_epi16(low, high)));
    }
#endif
    for (; i < count; ++i)
        to[i] = Over(color, to[i]);
}

bool IsOpaqueRow(const std::uint32_t* row, std::size_t count) {
    std::uint32_t all = 0xFF000000U;
    for (std::size_t i = 0; i < count; ++i)
        all &= row[i];
    return all == 0xFF000000U;
}

void FillPixels(Surface& target, const CRect& rect, std::uint32_t pixel) {
    for (int y = rect.top; y < rect.bottom; ++y)
        std::fill_n(target.Row(y) + rect.left, static_cast<std::size_t>(rect.Width()), pixel);
}

void BlendColor(Surface& target, const CRect& rect, std::uint32_t color) {
    if (color >> 24 == 255) {
        FillPixels(target, rect, color);
        return;
    }
    for (int y = rect.top; y < rect.bottom; ++y)
        BlendColorRow(target.Row(y) + rect.left, color, static_cast<std::size_t>(rect.Width()));
}

void CopyPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top) {
    const std::size_t bytes = static_cast<std::size_t>(rect.Width()) * 4;
    const std::ptrdiff_t pitch = static_cast<std::ptrdiff_t>(bytes);
    if (target.Stride() == pitch && from.Stride() == pitch) {
        std::memcpy(target.Row(rect.top) + rect.left, from.Row(rect.top - top) + rect.left - left,
                    bytes * static_cast<std::size_t>(rect.Height()));
        return;
    }
    for (int y = rect.top; y < rect.bottom; ++y)
        std::memcpy(target.Row(y) + rect.left, from.Row(y - top) + rect.left - left, bytes);
}

void BlendPixels(Surface& target, const CRect& rect, const Surface& from, int left, int top) {
    for (int y = rect.top; y < rect.bottom; ++y)
        BlendRow(target.Row(y) + rect.left, from.Row(y - top) + rect.left - left,
                 static_cast<std::size_t>(rect.Width()));
}

}  // namespace platform
