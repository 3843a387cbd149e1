#include "web/response_text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <utility>

namespace qkui {

namespace {

constexpr std::size_t kBlock = std::size_t{8} << 10;  // bytes decoded at once

// Both append up to the first zero character, and return whether there is one.
bool AppendNarrow(std::u16string& text, std::string_view utf8) {
    const std::size_t end = utf8.find('\0');
    AppendFromUtf8(text, utf8.substr(0, end));
    return end != std::string_view::npos;
}

bool AppendWide(std::u16string& text, std::string_view bytes) {
    std::array<char16_t, 1024> block;
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size() / 2, block.size());
        std::memcpy(block.data(), bytes.data(), 2 * count);
        bytes.remove_prefix(2 * count);
        // All are looked at first, as there seldom is one and the compiler takes several at once.
        const auto end = block.begin() + static_cast<std::ptrdiff_t>(count);
        char16_t zeroes = 0;
        for (auto unit = block.begin(); unit != end; ++unit)
            zeroes |= *unit == 0;
        const bool ends = zeroes != 0;
        text.append(block.begin(), ends ? std::find(block.begin(), end, u'\0') : end);
        if (ends) return true;
    }
    return false;
}

}  // namespace

void ResponseText::Expect(std::size_t bytes) {
    try {
        text_.reserve(IsWide() ? (bytes + 1) / 2
                               : bytes);  // UTF-8 has as many bytes as UTF-16 has units, or more
    } catch (const std::bad_alloc&) {
        // More than there is, and perhaps more than will come.
    }
}

void ResponseText::Append(std::string_view bytes) {
    size_ += bytes.size();
    if (ended_) return;
    if (charset_ == kAnsi)
        AddFormat(bytes);
    else
        undecoded_ += bytes;
    if (undecoded_.size() >= kBlock) Decode(WholeCharacters());
}

CString ResponseText::Take() {
    if (IsWide() && undecoded_.size() % 2 != 0) undecoded_ += '\0';
    if (!ended_) Decode(undecoded_.size());
    return CString(std::move(text_));
}

void ResponseText::AddFormat(std::string_view bytes) {
    while (!bytes.empty()) {
        if (std::exchange(afterPercent_, false) && bytes.front() == '%') {
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t count = std::min(bytes.find('%'), bytes.size() - 1) + 1;
        undecoded_ += bytes.substr(0, count);
        afterPercent_ = bytes[count - 1] == '%';
        bytes.remove_prefix(count);
    }
}

// How much of what is there can be decoded without what follows it.
std::size_t ResponseText::WholeCharacters() const {
    const std::size_t size = undecoded_.size();
    if (IsWide()) return size - size % 2;
    constexpr std::size_t kMostOfOne = 4;
    // A lead byte begins a character whatever stands before it.
    for (std::size_t back = 1; back < kMostOfOne && back <= size; ++back) {
        const auto byte = static_cast<unsigned char>(undecoded_[size - back]);
        if (byte >= 0xC0) return size - back;
        if (byte < 0x80) break;
    }
    return size;
}

void ResponseText::Decode(std::size_t count) {
    try {
        const std::string_view bytes(undecoded_.data(), count);
        // Seldom, since all is moved each time; of a long text, what is not written takes no memory.
        if (text_.capacity() < text_.size() + (IsWide() ? count / 2 : count)) Expect(4 * size_);
        ended_ = IsWide() ? AppendWide(text_, bytes) : AppendNarrow(text_, bytes);
        undecoded_.erase(0, count);
    } catch (const std::bad_alloc&) {
        if (charset_ != kUtf8) throw;
        text_ = {};
        ended_ = true;
    }
}

}  // namespace qkui
