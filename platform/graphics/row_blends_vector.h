// The blends over some pixels at a time. Included only by the sources that are compiled for one instruction
// set each; everything has internal linkage, and nothing of the standard library is called, or the linker
// might take an inline function that was made for the wrong processor.
#pragma once

#include <immintrin.h>

#include <cstring>

#include "platform/graphics/row_blends.h"

namespace platform {
namespace {

// Four pixels. Products are 16-bit: the even bytes of all pixels in one vector, the odd ones in another.
struct Lanes4 {
    using Vector = __m128i;
    static constexpr std::size_t kCount = 4;

    static Vector Load(const std::uint32_t* row) {
        return _mm_loadu_si128(reinterpret_cast<const Vector*>(row));
    }
    static void Store(std::uint32_t* row, Vector pixels) {
        _mm_storeu_si128(reinterpret_cast<Vector*>(row), pixels);
    }
    static Vector All(std::uint32_t pixel) { return _mm_set1_epi32(static_cast<int>(pixel)); }
    static bool IsZero(Vector v) {
        return _mm_movemask_epi8(_mm_cmpeq_epi32(v, _mm_setzero_si128())) == 0xFFFF;
    }
    static Vector And(Vector a, Vector b) { return _mm_and_si128(a, b); }
    static Vector Xor(Vector a, Vector b) { return _mm_xor_si128(a, b); }
    static Vector Or(Vector a, Vector b) { return _mm_or_si128(a, b); }
    static Vector Up(Vector v, int bits) { return _mm_slli_epi32(v, bits); }
    static Vector OddBytes(Vector v) { return _mm_srli_epi16(v, 8); }
    // Of each pixel, in both of its halves.
    static Vector Alphas(Vector v) {
        const Vector alphas = _mm_srli_epi32(v, 24);
        return _mm_or_si128(alphas, _mm_slli_epi32(alphas, 16));
    }
    static Vector Multiply(Vector a, Vector b) { return _mm_mullo_epi16(a, b); }
    static Vector MultiplyHigh(Vector a, Vector b) { return _mm_mulhi_epu16(a, b); }
    static Vector Add(Vector a, Vector b) { return _mm_add_epi16(a, b); }
    static Vector AddSaturated(Vector a, Vector b) { return _mm_adds_epu8(a, b); }
    // A byte to each pixel.
    static Vector Widen(const std::uint8_t* bytes) {
        int four;
        std::memcpy(&four, bytes, sizeof(four));
        const Vector zero = _mm_setzero_si128();
        return _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(four), zero), zero);
    }
};

#if defined(__AVX2__)

struct Lanes8 {
    using Vector = __m256i;
    static constexpr std::size_t kCount = 8;

    static Vector Load(const std::uint32_t* row) {
        return _mm256_loadu_si256(reinterpret_cast<const Vector*>(row));
    }
    static void Store(std::uint32_t* row, Vector pixels) {
        _mm256_storeu_si256(reinterpret_cast<Vector*>(row), pixels);
    }
    static Vector All(std::uint32_t pixel) { return _mm256_set1_epi32(static_cast<int>(pixel)); }
    static bool IsZero(Vector v) { return _mm256_testz_si256(v, v) != 0; }
    static Vector And(Vector a, Vector b) { return _mm256_and_si256(a, b); }
    static Vector Xor(Vector a, Vector b) { return _mm256_xor_si256(a, b); }
    static Vector Or(Vector a, Vector b) { return _mm256_or_si256(a, b); }
    static Vector Up(Vector v, int bits) { return _mm256_slli_epi32(v, bits); }
    static Vector OddBytes(Vector v) { return _mm256_srli_epi16(v, 8); }
    static Vector Alphas(Vector v) {
        constexpr char k0 = -1;
        return _mm256_shuffle_epi8(
            v, _mm256_setr_epi8(3, k0, 3, k0, 7, k0, 7, k0, 11, k0, 11, k0, 15, k0, 15, k0, 3, k0, 3, k0, 7,
                                k0, 7, k0, 11, k0, 11, k0, 15, k0, 15, k0));
    }
    static Vector Multiply(Vector a, Vector b) { return _mm256_mullo_epi16(a, b); }
    static Vector MultiplyHigh(Vector a, Vector b) { return _mm256_mulhi_epu16(a, b); }
    static Vector Add(Vector a, Vector b) { return _mm256_add_epi16(a, b); }
    static Vector AddSaturated(Vector a, Vector b) { return _mm256_adds_epu8(a, b); }
    static Vector Widen(const std::uint8_t* bytes) {
        return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes)));
    }
};

#endif

template <class L>
struct VectorBlends {
    using Vector = typename L::Vector;

    // Every byte of `pixels` times the byte in both halves of each 32-bit factor, / 255, rounded.
    static Vector Scale(Vector pixels, Vector factors) {
        const Vector half = L::All(0x00800080);
        const Vector by257 = L::All(0x01010101);
        const Vector low = L::All(0x00FF00FF);
        const Vector even = L::Add(L::Multiply(L::And(pixels, low), factors), half);
        const Vector odd = L::Add(L::Multiply(L::OddBytes(pixels), factors), half);
        return L::Or(L::MultiplyHigh(even, by257), L::Up(L::MultiplyHigh(odd, by257), 8));
    }
    static Vector Over(Vector from, Vector to) {
        const Vector rest = L::Xor(L::Alphas(from), L::All(0x00FF00FF));
        return L::AddSaturated(from, Scale(to, rest));
    }

    // How many pixels were done; fewer than kCount are left.
    static std::size_t Pixels(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
        std::size_t i = 0;
        for (; i + L::kCount <= count; i += L::kCount) {
            L::Store(to + i, Over(L::Load(from + i), L::Load(to + i)));
        }
        return i;
    }

    static std::size_t Color(std::uint32_t* to, std::uint32_t color, std::size_t count) {
        const Vector pixels = L::All(color);
        const Vector rest = L::All((255 - (color >> 24)) * 0x00010001);
        std::size_t i = 0;
        for (; i + L::kCount <= count; i += L::kCount)
            L::Store(to + i, L::AddSaturated(pixels, Scale(L::Load(to + i), rest)));
        return i;
    }

    static std::size_t Coverage(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage,
                                std::size_t count) {
        const Vector pixels = L::All(color);
        std::size_t i = 0;
        for (; i + L::kCount <= count; i += L::kCount) {
            const Vector covered = L::Widen(coverage + i);
            if (L::IsZero(covered)) continue;
            const Vector factors = L::Or(covered, L::Up(covered, 16));
            L::Store(to + i, Over(Scale(pixels, factors), L::Load(to + i)));
        }
        return i;
    }
};

}  // namespace
}  // namespace platform
