#include "platform/graphics/pixel_memory.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <vector>

namespace platform {
namespace {

// Two frames of a large screen; more would only be kept from the rest of the process.
constexpr std::size_t kPoolLimit = std::size_t{64} << 20;
// Below this the allocator of the process is as good, and the pool's list stays short.
constexpr std::size_t kPooledFrom = std::size_t{32} << 10;
constexpr std::size_t kPage = 4096;
constexpr std::size_t kAlignment = 64;

struct Block {
    void* address;
    std::size_t capacity;
};

struct Pool {
    std::mutex mutex;
    std::vector<Block> idle;  // the one given back last is at the end
    std::size_t idleBytes = 0;
    std::size_t systemAllocations = 0;
};

// Never destroyed: surfaces may outlive every other static object.
Pool& ThePool() {
    static Pool* const pool = new Pool;
    return *pool;
}

// A block with some slack fits a window that is being resized; much slack would waste what the pool holds.
bool Fits(const Block& block, std::size_t bytes) {
    return block.capacity >= bytes && block.capacity - bytes <= bytes / 2;
}

bool TakeIdle(std::size_t bytes, Block& block) {
    Pool& pool = ThePool();
    const std::lock_guard lock(pool.mutex);
    for (std::size_t i = pool.idle.size(); i-- > 0;) {
        if (!Fits(pool.idle[i], bytes)) continue;
        block = pool.idle[i];
        pool.idle.erase(pool.idle.begin() + static_cast<std::ptrdiff_t>(i));
        pool.idleBytes -= block.capacity;
        return true;
    }
    ++pool.systemAllocations;
    return false;
}

void GiveBack(Block block) noexcept {
    Pool& pool = ThePool();
    std::vector<Block> surplus;
    try {
        const std::lock_guard lock(pool.mutex);
        pool.idle.push_back(block);
        pool.idleBytes += block.capacity;
        while (pool.idleBytes > kPoolLimit) {
            surplus.push_back(pool.idle.front());
            pool.idleBytes -= pool.idle.front().capacity;
            pool.idle.erase(pool.idle.begin());
        }
    } catch (const std::bad_alloc&) {
        // The lists could not grow; the blocks stay where they are.
    }
    for (const Block& old : surplus)
        munmap(old.address, old.capacity);
}

std::shared_ptr<void> TakeSmall(std::size_t bytes, PixelMemory::Contents contents) {
    const std::size_t rounded = (bytes + kAlignment - 1) / kAlignment * kAlignment;
    void* const address = std::aligned_alloc(kAlignment, rounded);
    if (!address) return {};
    if (contents == PixelMemory::Contents::Zero) std::memset(address, 0, rounded);
    return {address, [](void* memory) { std::free(memory); }};
}

}  // namespace

std::shared_ptr<void> PixelMemory::Take(std::size_t bytes, Contents contents) {
    if (bytes < kPooledFrom) return TakeSmall(bytes, contents);
    Block block{};
    if (TakeIdle(bytes, block)) {
        if (contents == Contents::Zero) std::memset(block.address, 0, bytes);
    } else {
        block.capacity = (bytes + kPage - 1) / kPage * kPage;
        block.address =
            mmap(nullptr, block.capacity, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (block.address == MAP_FAILED) return {};
    }
    return {block.address, [block](void*) { GiveBack(block); }};
}

std::size_t PixelMemory::PooledBytes() {
    const std::lock_guard lock(ThePool().mutex);
    return ThePool().idleBytes;
}

std::size_t PixelMemory::SystemAllocations() {
    const std::lock_guard lock(ThePool().mutex);
    return ThePool().systemAllocations;
}

}  // namespace platform
