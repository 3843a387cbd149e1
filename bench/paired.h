// A measurement beside the memcpy of the same number of bytes, taken in turns, so that a noisy machine slows
// both.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double Seconds(Clock::time_point from) {
    return std::chrono::duration<double>(Clock::now() - from).count();
}

inline double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

class CopyPair {
  public:
    explicit CopyPair(std::size_t bytes) : from_(bytes, std::byte{1}), to_(bytes) {}
    double Once() {
        const auto start = Clock::now();
        std::memcpy(to_.data(), from_.data(), from_.size());
        benchmark::DoNotOptimize(to_.data());
        benchmark::ClobberMemory();
        return Seconds(start);
    }

  private:
    std::vector<std::byte> from_, to_;
};

// `step` returns the seconds that count. Reports the medians and their ratio.
template <class Step>
void RunPaired(benchmark::State& state, std::size_t bytes, Step step) {
    CopyPair copy(bytes);
    for (int i = 0; i < 10; ++i) {
        copy.Once();
        step();
    }
    std::vector<double> steps, copies;
    for (auto _ : state) {
        copies.push_back(copy.Once());
        steps.push_back(step());
        state.SetIterationTime(steps.back());
    }
    state.counters["median_us"] = Median(steps) * 1e6;
    state.counters["memcpy_us"] = Median(copies) * 1e6;
    state.counters["x_memcpy"] = Median(steps) / Median(copies);
}

}  // namespace bench
