// The blocks behind HGLOBAL. They belong to the process: any thread may take, lock and free them.
#pragma once

#include <cstddef>
#include <memory>

#include <platform/memory.h>
#include <platform/types.h>

namespace platform {

// Bytes that stay where they are as long as someone shares the block.
class GlobalBlock {
  public:
    virtual ~GlobalBlock() = default;
    virtual std::byte* Bytes() const = 0;
    virtual std::size_t Size() const = 0;
};

// Null for a stale handle. The sharer may read on when the block is freed meanwhile.
[[nodiscard]] std::shared_ptr<GlobalBlock> ShareGlobal(HGLOBAL block);

// A handle over bytes that someone else owns: it can be locked, sized and streamed, not freed through
// GlobalFree. The owner withdraws it before the bytes go.
[[nodiscard]] HGLOBAL LendGlobal(const void* bytes, std::size_t size);
void WithdrawGlobal(HGLOBAL block);

}  // namespace platform
