// Reference-counted streams over memory.
#pragma once

#include <platform/resources.h>
#include <platform/types.h>

// A counted interface: every holder calls Release once; the last call destroys the object.
class PLATFORM_API IUnknown {
  public:
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

  protected:
    virtual ~IUnknown();
};

enum : DWORD { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

class PLATFORM_API IStream : public IUnknown {
  public:
    // Reads up to `size` bytes and moves on. `read` may be null. S_FALSE when fewer bytes were left.
    virtual HRESULT Read(void* buffer, ULONG size, ULONG* read) = 0;
    // Moves the position, also beyond the end, where nothing is read; `position` may be null. A target before
    // the start fails with E_INVALIDARG and moves nothing.
    virtual HRESULT Seek(std::int64_t offset, DWORD origin, std::uint64_t* position) = 0;
    // The size of the whole stream in bytes.
    virtual HRESULT Size(std::uint64_t* bytes) = 0;

  protected:
    ~IStream() override;
};

// A stream over a block, with the position at its start and one holder. With `deleteOnRelease` the last
// Release frees the block. A stale block, or a null `stream`, fails with E_INVALIDARG. Reads of a block freed
// meanwhile fail with E_FAIL.
PLATFORM_API HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream);

// Per-thread start of the component services. Calls nest; S_FALSE when the thread was started before. The
// reserved argument is null, anything else fails with E_INVALIDARG. A stop without a start does nothing.
PLATFORM_API HRESULT CoInitialize(void* reserved);
PLATFORM_API void CoUninitialize();
