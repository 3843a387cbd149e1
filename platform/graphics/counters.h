// The counts of real work behind GetDrawingCounters, and the limit that every drawing cache keeps to.
#pragma once

#include <atomic>
#include <cstddef>

#include <platform/gdiplus.h>

namespace Gdiplus {

// Of the calling thread: windows draw in the thread that owns them, and so do their tests.
inline DrawingCounters& Counters() {
    thread_local DrawingCounters counters;
    return counters;
}

}  // namespace Gdiplus

namespace platform {

// In bytes, for each cache alone. A cache looks at it whenever it is asked, so that a lowered limit takes
// effect with the next drawing.
inline std::atomic<std::size_t>& DrawingCacheLimit() {
    static std::atomic<std::size_t> limit{std::size_t{64} << 20};
    return limit;
}

}  // namespace platform
