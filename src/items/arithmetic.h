// Whole numbers of a host's choosing: sums and conversions end at the ends of an int.
#pragma once

#include <cstdint>
#include <limits>

#include <platform/saturate.h>

namespace qkui {

using platform::Saturate;

template <class... Ints>
int Sum(Ints... values) {
    return Saturate((std::int64_t{values} + ...));
}

inline int Difference(int a, int b) {
    return Saturate(std::int64_t{a} - b);
}

// Cut towards zero; what is no number is 0.
inline int Whole(double value) {
    using Limits = std::numeric_limits<int>;
    if (!(value > Limits::min())) return value <= Limits::min() ? Limits::min() : 0;
    return value < Limits::max() ? static_cast<int>(value) : Limits::max();
}

}  // namespace qkui
