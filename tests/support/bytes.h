// Files written byte by byte, so that a test can tell any lie in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kit {

using Bytes = std::vector<std::uint8_t>;

inline Bytes BytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

// Numbers stand with their lowest byte first.
class ByteWriter {
  public:
    ByteWriter& Byte(unsigned value) {
        bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    ByteWriter& Word(unsigned value) { return Byte(value & 0xFF).Byte((value >> 8) & 0xFF); }
    ByteWriter& Long(std::uint32_t value) { return Word(value & 0xFFFF).Word(value >> 16); }
    ByteWriter& BigLong(std::uint32_t value) {
        return Byte(value >> 24).Byte((value >> 16) & 0xFF).Byte((value >> 8) & 0xFF).Byte(value & 0xFF);
    }
    ByteWriter& Text(std::string_view text) {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        return *this;
    }
    // UTF-16 and a terminator.
    ByteWriter& Wide(std::u16string_view text) {
        for (const char16_t unit : text)
            Word(unit);
        return Word(0);
    }
    ByteWriter& Append(const Bytes& more) {
        bytes_.insert(bytes_.end(), more.begin(), more.end());
        return *this;
    }
    ByteWriter& Fill(std::size_t count, unsigned value) {
        bytes_.insert(bytes_.end(), count, static_cast<std::uint8_t>(value));
        return *this;
    }
    // To a multiple of four bytes.
    ByteWriter& Align() { return Fill((4 - bytes_.size() % 4) % 4, 0); }
    std::size_t Size() const { return bytes_.size(); }
    Bytes Take() { return std::move(bytes_); }

  private:
    Bytes bytes_;
};

// Empty when there is no such file.
inline Bytes ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

}  // namespace kit
