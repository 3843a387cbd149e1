#include "platform/base/byte_reader.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::size_t kAlignment = 4;

std::size_t StepFrom(std::size_t position) {
    return (kAlignment - position % kAlignment) % kAlignment;
}

}  // namespace

bool ByteReader::Fits(std::size_t count) {
    if (count > Left()) failed_ = true;
    return !failed_;
}

DWORD ByteReader::Little(std::size_t count) {
    DWORD value = 0;
    if (!Fits(count)) return value;
    for (std::size_t i = count; i > 0; --i)
        value = (value << 8) | bytes_[position_ + i - 1];
    position_ += count;
    return value;
}

std::span<const std::uint8_t> ByteReader::Bytes(std::size_t count) {
    if (!Fits(count)) return {};
    position_ += count;
    return bytes_.subspan(position_ - count, count);
}

std::u16string ByteReader::Text() {
    std::u16string text;
    for (WORD unit = Word(); unit != 0; unit = Word())
        text.push_back(unit);
    return failed_ ? std::u16string() : text;
}

void ByteReader::AlignToDword() {
    Bytes(StepFrom(position_));
}

void ByteReader::SkipPadding() {
    Bytes(std::min(StepFrom(position_), Left()));
}

}  // namespace platform
