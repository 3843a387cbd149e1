// Repeatable randomness: the same numbers on every machine and in every run.
#pragma once

#include <cstdint>

namespace skin {

// A sequence of numbers from a seed.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    double Unit();  // 0 up to, not including, 1
    double Between(double low, double high) { return low + (high - low) * Unit(); }

  private:
    std::uint64_t state_;
};

// A fixed number per lattice point, 0 to 1.
double Lattice(int x, int y, std::uint32_t seed);
// Smooth noise with features about one unit wide, 0 to 1.
double Noise(double x, double y, std::uint32_t seed);
// Several octaves of Noise, 0 to 1, mean about 0.5.
double Fractal(double x, double y, int octaves, std::uint32_t seed);
// 0 below `low`, 1 above `high`, smooth between.
double SmoothStep(double low, double high, double value);

}  // namespace skin
