#include "platform/base/global_memory.h"

#include <cstdint>
#include <cstdlib>
#include <mutex>

#include "platform/base/handle_table.h"

namespace platform {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

class Block : public GlobalBlock {
  public:
    // Owned bytes.
    Block(std::unique_ptr<void, Free> memory, std::size_t size, bool movable)
        : memory_(std::move(memory)),
          bytes_(static_cast<std::byte*>(memory_.get())),
          size_(size),
          movable_(movable) {}
    // Borrowed bytes.
    Block(std::byte* bytes, std::size_t size) : bytes_(bytes), size_(size) {}

    std::byte* Bytes() const override { return bytes_; }
    std::size_t Size() const override { return size_; }
    bool Borrowed() const { return !memory_; }

    void Lock() {
        if (movable_) ++locks_;
    }
    // Whether the block counted as locked.
    bool Unlock() {
        if (!movable_) return true;
        if (locks_ == 0) return false;
        --locks_;
        return true;
    }

  private:
    std::unique_ptr<void, Free> memory_;
    std::byte* bytes_;
    std::size_t size_;
    bool movable_ = false;
    std::size_t locks_ = 0;
};

struct Blocks {
    std::mutex mutex;
    HandleTable<HGLOBAL, Block> table;
};

// Never destroyed: a host's static objects may still hold blocks when the process ends.
Blocks& TheBlocks() {
    static Blocks* const blocks = new Blocks;
    return *blocks;
}

// Calls f with the block under the lock; false with the last error when the handle is stale.
template <class F>
bool WithBlock(HGLOBAL handle, F f) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    Block* block = blocks.table.Find(handle);
    if (!block) {
        SetLastError(ERROR_INVALID_HANDLE);
        return false;
    }
    f(*block);
    return true;
}

HGLOBAL Insert(std::shared_ptr<Block> block) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    return blocks.table.Insert(std::move(block));
}

// The block outlives the lock, so that its memory is released outside.
std::shared_ptr<Block> Remove(HGLOBAL handle, bool borrowed) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    const Block* block = blocks.table.Find(handle);
    return block && block->Borrowed() == borrowed ? blocks.table.Remove(handle) : nullptr;
}

}  // namespace

std::shared_ptr<GlobalBlock> ShareGlobal(HGLOBAL block) {
    Blocks& blocks = TheBlocks();
    const std::lock_guard lock(blocks.mutex);
    return blocks.table.Share(block);
}

HGLOBAL LendGlobal(const void* bytes, std::size_t size) {
    // Readers get the address as a plain pointer, as interfaces of this tradition do; they must not write.
    std::byte* address = const_cast<std::byte*>(static_cast<const std::byte*>(bytes));
    return Insert(std::make_shared<Block>(address, size));
}

void WithdrawGlobal(HGLOBAL block) {
    Remove(block, true);
}

}  // namespace platform

HGLOBAL GlobalAlloc(UINT flags, std::size_t bytes) {
    std::unique_ptr<void, platform::Free> memory;
    if (bytes <= PTRDIFF_MAX) {
        const std::size_t taken = bytes ? bytes : 1;  // an empty block has an address too
        memory.reset((flags & GMEM_ZEROINIT) ? std::calloc(1, taken) : std::malloc(taken));
    }
    if (!memory) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return platform::Insert(
        std::make_shared<platform::Block>(std::move(memory), bytes, (flags & GMEM_MOVEABLE) != 0));
}

LPVOID GlobalLock(HGLOBAL block) {
    void* address = nullptr;
    platform::WithBlock(block, [&](platform::Block& found) {
        found.Lock();
        address = found.Bytes();
    });
    return address;
}

BOOL GlobalUnlock(HGLOBAL block) {
    bool unlocked = false;
    platform::WithBlock(block, [&](platform::Block& found) { unlocked = found.Unlock(); });
    return unlocked;
}

std::size_t GlobalSize(HGLOBAL block) {
    std::size_t size = 0;
    platform::WithBlock(block, [&](platform::Block& found) { size = found.Size(); });
    return size;
}

HGLOBAL GlobalFree(HGLOBAL block) {
    if (platform::Remove(block, false)) return nullptr;
    SetLastError(ERROR_INVALID_HANDLE);
    return block;
}
