// Arithmetic that stops at the ends of a LONG.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include <platform/types.h>

namespace platform {

constexpr LONG Saturate(std::int64_t value) {
    return static_cast<LONG>(
        std::clamp<std::int64_t>(value, std::numeric_limits<LONG>::min(), std::numeric_limits<LONG>::max()));
}
constexpr LONG SaturatedSum(LONG a, LONG b) {
    return Saturate(std::int64_t{a} + b);
}
constexpr LONG SaturatedDifference(LONG a, LONG b) {
    return Saturate(std::int64_t{a} - b);
}

}  // namespace platform
