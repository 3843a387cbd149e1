// The inner loops of scaling, for processors that do more pixels at a time. Exact: the same integers as the
// loops of resample.cpp, which do what is left over.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

// Weights of the pixels that make up one pixel add up to exactly this, so that a plain colour stays what it
// is; the largest for which a weight fits a signed 16-bit factor.
constexpr int kWeightBits = 14;
constexpr int kWeightSum = 1 << kWeightBits;
// Rows that are scaled across, but not yet down, keep 7 bits below the channel's own 8.
constexpr int kMiddleBits = 7;
constexpr int kAcrossShift = kWeightBits - kMiddleBits;
constexpr int kDownShift = kWeightBits + kMiddleBits;

// Two source positions and their weights; the loops work on pairs. An odd last one is paired with weight 0.
struct TapPair {
    int first, second;
    std::int16_t firstWeight, secondWeight;
};

// Both tell how many pixels they have done.
struct RowScales {
    // Each pixel from its taps, of which the second is right behind the first: four channels, kMiddleBits
    // finer.
    std::size_t (*across)(std::int16_t* to, const std::uint32_t* row, const TapPair* taps, std::size_t count);
    // From two rows of such channels, by the weights of `rows`.
    std::size_t (*down)(std::uint32_t* to, const std::int16_t* first, const std::int16_t* second,
                        const TapPair& rows, std::size_t count);
};

// Null where this program was not made for such processors, or runs on another.
const RowScales* Avx2RowScales();

}  // namespace platform
