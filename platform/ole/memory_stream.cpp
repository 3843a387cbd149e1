// The stream over a global block.
#include <algorithm>
#include <atomic>
#include <cstring>
#include <limits>
#include <new>

#include <platform/ole.h>

#include "platform/base/global_memory.h"

IUnknown::~IUnknown() = default;
IStream::~IStream() = default;

namespace platform {
namespace {

// Holders may be on several threads, the position is for one at a time. The block is looked up for every
// call, because its owner may free it under the stream.
class MemoryStream final : public IStream {
  public:
    MemoryStream(HGLOBAL block, bool freesBlock) : block_(block), freesBlock_(freesBlock) {}

    ULONG AddRef() override { return ++holders_; }
    ULONG Release() override {
        const ULONG left = --holders_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT Read(void* buffer, ULONG size, ULONG* read) override;
    HRESULT Seek(std::int64_t offset, DWORD origin, std::uint64_t* position) override;
    HRESULT Size(std::uint64_t* bytes) override;

  private:
    ~MemoryStream() override {
        if (freesBlock_) GlobalFree(block_);
    }

    std::atomic<ULONG> holders_ = 1;
    HGLOBAL block_;
    bool freesBlock_;
    std::uint64_t position_ = 0;  // may lie beyond the end
};

HRESULT MemoryStream::Read(void* buffer, ULONG size, ULONG* read) {
    if (read) *read = 0;
    if (!buffer && size > 0) return E_POINTER;
    const std::shared_ptr<GlobalBlock> block = ShareGlobal(block_);
    if (!block) return E_FAIL;
    const std::uint64_t left = block->Size() > position_ ? block->Size() - position_ : 0;
    const ULONG count = static_cast<ULONG>(std::min<std::uint64_t>(left, size));
    if (count > 0) std::memcpy(buffer, block->Bytes() + position_, count);
    position_ += count;
    if (read) *read = count;
    return count == size ? S_OK : S_FALSE;
}

HRESULT MemoryStream::Seek(std::int64_t offset, DWORD origin, std::uint64_t* position) {
    const std::shared_ptr<GlobalBlock> block = ShareGlobal(block_);
    if (!block) return E_FAIL;
    std::uint64_t start = 0;
    if (origin == STREAM_SEEK_CUR)
        start = position_;
    else if (origin == STREAM_SEEK_END)
        start = block->Size();
    else if (origin != STREAM_SEEK_SET)
        return E_INVALIDARG;
    // Positions stay below 2^63: both terms fit, and their sum is checked.
    std::int64_t target = 0;
    if (__builtin_add_overflow(static_cast<std::int64_t>(start), offset, &target) || target < 0)
        return E_INVALIDARG;
    position_ = static_cast<std::uint64_t>(target);
    if (position) *position = position_;
    return S_OK;
}

HRESULT MemoryStream::Size(std::uint64_t* bytes) {
    if (!bytes) return E_POINTER;
    const std::shared_ptr<GlobalBlock> block = ShareGlobal(block_);
    if (!block) return E_FAIL;
    *bytes = block->Size();
    return S_OK;
}

}  // namespace
}  // namespace platform

HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream) {
    if (!stream) return E_INVALIDARG;
    *stream = nullptr;
    if (!platform::ShareGlobal(block)) return E_INVALIDARG;
    *stream = new (std::nothrow) platform::MemoryStream(block, deleteOnRelease != FALSE);
    return *stream ? S_OK : E_OUTOFMEMORY;
}
