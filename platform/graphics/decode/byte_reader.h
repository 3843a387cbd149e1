// Little-endian reads that cannot leave their bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

// Reading past the end gives zeros and is remembered, so that a header is read first and judged once.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> bytes, std::size_t at = 0) : bytes_(bytes), at_(at) {}

    bool Overran() const { return overran_; }
    std::size_t At() const { return at_; }
    std::size_t Left() const { return at_ < bytes_.size() ? bytes_.size() - at_ : 0; }
    std::uint8_t Byte() {
        if (Left() == 0) {
            overran_ = true;
            return 0;
        }
        return bytes_[at_++];
    }
    std::uint16_t Word() {
        const unsigned low = Byte();
        return static_cast<std::uint16_t>(low | (unsigned{Byte()} << 8));
    }
    std::uint32_t DoubleWord() {
        const std::uint32_t low = Word();
        return low | (std::uint32_t{Word()} << 16);
    }
    void Skip(std::size_t count) { Take(count); }
    // The next bytes; fewer, and an overrun, when there are not so many.
    std::span<const std::uint8_t> Take(std::size_t count) {
        if (count > Left()) {
            overran_ = true;
            count = Left();
        }
        const std::span<const std::uint8_t> taken = bytes_.subspan(count == 0 ? 0 : at_, count);
        at_ += count;
        return taken;
    }

  private:
    std::span<const std::uint8_t> bytes_;
    std::size_t at_;
    bool overran_ = false;
};

}  // namespace platform
