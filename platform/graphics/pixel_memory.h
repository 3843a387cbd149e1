// Memory for pixels: aligned blocks that are handed out again, so that the next frame finds pages that are
// already there.
#pragma once

#include <cstddef>
#include <memory>

namespace platform {

class PixelMemory {
  public:
    enum class Contents { Zero, Any };
    // At least `bytes`, aligned for vector loads. Null without memory. The last holder gives the block back
    // to the pool, from any thread.
    static std::shared_ptr<void> Take(std::size_t bytes, Contents contents = Contents::Zero);

    // Bytes that wait to be handed out again, and how often a block was newly taken from the system.
    static std::size_t PooledBytes();
    static std::size_t SystemAllocations();
};

}  // namespace platform
