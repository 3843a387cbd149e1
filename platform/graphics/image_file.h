// The bytes of a picture, from where an image gets them.
#pragma once

#include <cstdint>
#include <vector>

#include <platform/gdiplus.h>

namespace platform {

// Ok with the bytes; FileNotFound for what cannot be opened or is no regular file, OutOfMemory for what is
// beyond kMaxEncodedBytes, InvalidParameter without a path or a stream, GenericError when reading fails.
constexpr std::size_t kMaxEncodedBytes = std::size_t{256} << 20;
Gdiplus::Status ReadFileBytes(LPCWSTR path, std::vector<std::uint8_t>& bytes);
// All of the stream, from its start.
Gdiplus::Status ReadStreamBytes(IStream* stream, std::vector<std::uint8_t>& bytes);

}  // namespace platform
