// Little-endian values out of foreign bytes, front to back.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include <platform/resources/resource_name.h>
#include <platform/types.h>

namespace platform {

// A read that does not fit fails and every read after it too, giving zeros and empty texts: a parser reads a
// group of fields and asks once. The bytes need no alignment.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    bool Failed() const { return failed_; }
    bool AtEnd() const { return position_ == bytes_.size(); }
    std::size_t Position() const { return position_; }
    std::size_t Left() const { return bytes_.size() - position_; }

    BYTE Byte() { return static_cast<BYTE>(Little(1)); }
    WORD Word() { return static_cast<WORD>(Little(2)); }
    DWORD Dword() { return Little(4); }
    std::span<const std::byte> Bytes(std::size_t count);
    // UTF-16 units up to a terminator, which is read too. Fails when there is none.
    std::u16string Text();
    // The mark 0xFFFF and a number, or a text.
    ResourceName Name();
    // Steps to the next multiple of four from the start of the bytes.
    void AlignToDword();
    // As above, but bytes that end within the step are at their end and have not failed.
    void SkipPadding();

  private:
    DWORD Little(std::size_t count);
    bool Fits(std::size_t count);

    std::span<const std::byte> bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

}  // namespace platform
