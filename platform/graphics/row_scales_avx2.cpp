// As in row_blends_vector.h, nothing of the standard library is called from here.
#include "platform/graphics/row_scales.h"

#if defined(__AVX2__)

#include <immintrin.h>

namespace platform {
namespace {

// One value in the lower half of a vector, another one in the upper.
__m256i Halves(__m256i lower, __m256i upper) {
    return _mm256_blend_epi32(lower, upper, 0xF0);
}
__m256i Neighbours(const std::uint32_t* pixels) {
    return _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels)));
}
__m256i Weights(const TapPair& taps) {
    return _mm256_set1_epi32(static_cast<int>(static_cast<std::uint16_t>(taps.firstWeight) |
                                              static_cast<std::uint32_t>(taps.secondWeight) << 16));
}

std::size_t Across(std::int16_t* to, const std::uint32_t* row, const TapPair* taps, std::size_t count) {
    constexpr char k0 = -1;
    // Channels of two neighbours side by side, as 16-bit numbers.
    const __m256i pairs = _mm256_setr_epi8(0, k0, 4, k0, 1, k0, 5, k0, 2, k0, 6, k0, 3, k0, 7, k0,  //
                                           0, k0, 4, k0, 1, k0, 5, k0, 2, k0, 6, k0, 3, k0, 7, k0);
    const __m256i half = _mm256_set1_epi32(1 << (kAcrossShift - 1));
    const auto two = [&](const TapPair& lower, const TapPair& upper) {
        const __m256i pixels = Halves(Neighbours(row + lower.first), Neighbours(row + upper.first));
        const __m256i sums =
            _mm256_madd_epi16(_mm256_shuffle_epi8(pixels, pairs), Halves(Weights(lower), Weights(upper)));
        return _mm256_srli_epi32(_mm256_add_epi32(sums, half), kAcrossShift);
    };
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + i * 4),
                            _mm256_packs_epi32(two(taps[i], taps[i + 2]), two(taps[i + 1], taps[i + 3])));
    return i;
}

std::size_t Down(std::uint32_t* to, const std::int16_t* first, const std::int16_t* second,
                 const TapPair& rows, std::size_t count) {
    const __m256i weights = Weights(rows);
    const __m256i half = _mm256_set1_epi32(1 << (kDownShift - 1));
    const auto sum = [&](__m256i pairs) {
        return _mm256_srli_epi32(_mm256_add_epi32(_mm256_madd_epi16(pairs, weights), half), kDownShift);
    };
    const auto four = [&](std::size_t pixel) {
        const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(first + pixel * 4));
        const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(second + pixel * 4));
        return _mm256_packs_epi32(sum(_mm256_unpacklo_epi16(a, b)), sum(_mm256_unpackhi_epi16(a, b)));
    };
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i pixels = _mm256_packus_epi16(four(i), four(i + 4));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + i), _mm256_permute4x64_epi64(pixels, 0xD8));
    }
    return i;
}

constexpr RowScales kScales{&Across, &Down};

}  // namespace

const RowScales* Avx2RowScales() {
    static const bool runs = __builtin_cpu_supports("avx2");
    return runs ? &kScales : nullptr;
}

}  // namespace platform

#else

const platform::RowScales* platform::Avx2RowScales() {
    return nullptr;
}

#endif
