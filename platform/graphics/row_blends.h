// The blends of pixel_rows.h, once for every kind of processor: the same pixels, sooner or later.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

struct RowBlends {
    // to = from over to.
    void (*pixels)(std::uint32_t* to, const std::uint32_t* from, std::size_t count);
    // to = the premultiplied colour over to.
    void (*color)(std::uint32_t* to, std::uint32_t color, std::size_t count);
    // The same, as far as each pixel is covered.
    void (*coverage)(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage, std::size_t count);
};

// Any processor's.
extern const RowBlends kPlainRowBlends;
// Null where this program was not made for such processors, or runs on another.
const RowBlends* Sse2RowBlends();
const RowBlends* Avx2RowBlends();

// The widest of those that run here.
const RowBlends& FastestRowBlends();

}  // namespace platform
