// The compiled sample.rc, embedded into this program by the build, and copies that end where their bytes do.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include "support/resource.h"

// The bytes of a resource of the current module; empty when it is not found.
inline std::span<const std::byte> Embedded(LPCWSTR name, LPCWSTR type) {
    const HRSRC found = FindResourceW(nullptr, name, type);
    const void* bytes = LockResource(LoadResource(nullptr, found));
    return {static_cast<const std::byte*>(bytes), SizeofResource(nullptr, found)};
}

inline std::string Characters(std::span<const std::byte> bytes) {
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

inline std::span<const std::byte> ViewOf(const kit::Bytes& bytes) {
    return std::as_bytes(std::span(bytes));
}

// A copy on the heap that is exactly as long, so that the address sanitizer sees the first byte read beyond.
class Tight {
  public:
    explicit Tight(std::span<const std::byte> bytes)
        : copy_(new std::byte[bytes.size()]), size_(bytes.size()) {
        std::copy(bytes.begin(), bytes.end(), copy_.get());
    }
    std::span<const std::byte> View() const { return {copy_.get(), size_}; }

  private:
    std::unique_ptr<std::byte[]> copy_;
    std::size_t size_;
};
