#include "examples/gallery/skin/noise.h"

#include <algorithm>
#include <cmath>

namespace skin {
namespace {

std::uint64_t Scramble(std::uint64_t value) {
    value = (value ^ value >> 30) * 0xbf58476d1ce4e5b9U;
    value = (value ^ value >> 27) * 0x94d049bb133111ebU;
    return value ^ value >> 31;
}

double ToUnit(std::uint64_t bits) {
    return static_cast<double>(bits >> 11) * 0x1p-53;
}

}  // namespace

double Random::Unit() {
    state_ += 0x9e3779b97f4a7c15U;
    return ToUnit(Scramble(state_));
}

double Lattice(int x, int y, std::uint32_t seed) {
    const std::uint64_t cell =
        static_cast<std::uint64_t>(static_cast<std::uint32_t>(x)) << 32 | static_cast<std::uint32_t>(y);
    return ToUnit(Scramble(cell + seed * 0x9e3779b97f4a7c15U));
}

double Noise(double x, double y, std::uint32_t seed) {
    const double floorX = std::floor(x);
    const double floorY = std::floor(y);
    const double shareX = SmoothStep(0, 1, x - floorX);
    const double shareY = SmoothStep(0, 1, y - floorY);
    const int cellX = static_cast<int>(floorX);
    const int cellY = static_cast<int>(floorY);
    const double top = std::lerp(Lattice(cellX, cellY, seed), Lattice(cellX + 1, cellY, seed), shareX);
    const double bottom =
        std::lerp(Lattice(cellX, cellY + 1, seed), Lattice(cellX + 1, cellY + 1, seed), shareX);
    return std::lerp(top, bottom, shareY);
}

double Fractal(double x, double y, int octaves, std::uint32_t seed) {
    double sum = 0;
    double weight = 0.5;
    double total = 0;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += weight * Noise(x, y, seed + static_cast<std::uint32_t>(octave));
        total += weight;
        weight /= 2;
        x = x * 2 + 17.3;
        y = y * 2 + 9.1;
    }
    return sum / total;
}

double SmoothStep(double low, double high, double value) {
    const double share = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return share * share * (3 - 2 * share);
}

}  // namespace skin
