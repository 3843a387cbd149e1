// The compiled sample.rc, embedded into this program by the build, and a writer of files like it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <platform/resources.h>

#include "platform/resources/resource_name.h"

using Bytes = std::vector<std::byte>;

// The bytes of a resource of the current module; empty when it is not found.
inline std::span<const std::byte> Embedded(LPCWSTR name, LPCWSTR type) {
    const HRSRC found = FindResourceW(nullptr, name, type);
    const void* bytes = LockResource(LoadResource(nullptr, found));
    return {static_cast<const std::byte*>(bytes), SizeofResource(nullptr, found)};
}

inline std::string Characters(std::span<const std::byte> bytes) {
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

inline Bytes FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    const auto* first = reinterpret_cast<const std::byte*>(text.data());
    return Bytes(first, first + text.size());
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

// Appends what the resource compiler would write.
class ResourceWriter {
  public:
    Bytes bytes;

    ResourceWriter& Little(std::uint64_t value, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            bytes.push_back(static_cast<std::byte>(i < 8 ? value >> (8 * i) : 0));
        return *this;
    }
    ResourceWriter& Text(std::u16string_view text) {
        for (const char16_t unit : text)
            Little(unit, 2);
        return Little(0, 2);
    }
    ResourceWriter& Number(WORD number) { return Little(0xFFFF, 2).Little(number, 2); }
    ResourceWriter& Align() {
        while (bytes.size() % 4)
            Little(0, 1);
        return *this;
    }
    // An entry whose sizes are right. A name is a number or, where it is not empty, the text.
    ResourceWriter& Entry(WORD type, WORD number, std::u16string_view name, std::string_view data) {
        const std::size_t start = bytes.size();
        Little(data.size(), 4).Little(0, 4).Number(type);
        name.empty() ? Number(number) : Text(name);
        Align().Little(0, 16);
        bytes[start + 4] = static_cast<std::byte>(bytes.size() - start);
        for (const char byte : data)
            Little(static_cast<unsigned char>(byte), 1);
        return Align();
    }
    ResourceWriter& Opening() { return Entry(0, 0, u"", ""); }
};
