// Little-endian values out of foreign bytes, front to back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include <platform/types.h>

namespace platform {

// A read that does not fit fails and every read after it too, giving zeros and empty texts: a parser reads a
// group of fields and asks once. The bytes need no alignment.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    explicit ByteReader(std::span<const std::byte> bytes)
        : bytes_(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()) {}

    bool Failed() const { return failed_; }
    bool AtEnd() const { return position_ == bytes_.size(); }
    std::size_t Position() const { return position_; }
    std::size_t Left() const { return bytes_.size() - position_; }

    BYTE Byte() { return static_cast<BYTE>(Little(1)); }
    WORD Word() { return static_cast<WORD>(Little(2)); }
    DWORD Dword() { return Little(4); }
    std::span<const std::uint8_t> Bytes(std::size_t count);
    void Skip(std::size_t count) { Bytes(count); }
    // UTF-16 units up to a terminator, which is read too. Fails when there is none.
    std::u16string Text();
    // Steps to the next multiple of four from the start of the bytes.
    void AlignToDword();
    // As above, but bytes that end within the step are at their end and have not failed.
    void SkipPadding();

  private:
    DWORD Little(std::size_t count);
    bool Fits(std::size_t count);

    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

}  // namespace platform
