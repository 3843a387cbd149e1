// Ownership of what XCB allocates, and the narrowing that its wire types ask for.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include <platform/types.h>
#include <xcb/xcb.h>

namespace platform::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
// A reply, event or error; null when the request failed or the connection is gone.
template <class Record>
using Reply = std::unique_ptr<Record, FreeDeleter>;

// Coordinates beyond what the protocol can say are clamped to its ends.
inline std::int16_t ToX(LONG value) {
    return static_cast<std::int16_t>(std::clamp<LONG>(value, INT16_MIN, INT16_MAX));
}
// Windows of the protocol have at least one pixel each way.
inline std::uint16_t ToExtent(LONG value) {
    return static_cast<std::uint16_t>(std::clamp<LONG>(value, 1, INT16_MAX));
}
inline std::uint32_t ToBits(std::int32_t value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace platform::x11
