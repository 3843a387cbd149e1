// The bytes of a picture, from where an image gets them.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <vector>

#include <platform/gdiplus.h>

namespace platform {

// What a regular file is known by: the same values, the same bytes. Any other file, and the same one written
// to later, has others.
struct FileState {
    std::array<std::int64_t, 7> values{};  // device, number, size, and when it was written and changed

    bool IsEmpty() const { return values == decltype(values){}; }
    auto operator<=>(const FileState&) const = default;
};
// Empty for what is not there.
FileState StateOfFile(LPCWSTR path);

// Ok with the bytes; FileNotFound for what cannot be opened or is no regular file, OutOfMemory for what is
// beyond kMaxEncodedBytes, InvalidParameter without a path or a stream, GenericError when reading fails.
constexpr std::size_t kMaxEncodedBytes = std::size_t{256} << 20;
// `state`: where not null, of the file at that moment, empty for one that may be written to just now.
Gdiplus::Status ReadFileBytes(LPCWSTR path, std::vector<std::uint8_t>& bytes, FileState* state = nullptr);
// All of the stream, from its start.
Gdiplus::Status ReadStreamBytes(IStream* stream, std::vector<std::uint8_t>& bytes);

}  // namespace platform
