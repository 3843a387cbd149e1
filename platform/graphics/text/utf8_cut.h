// Cuts of UTF-8 text that leave whole characters.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

constexpr bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// At most `bytes` from the start.
constexpr std::string_view StartOf(std::string_view text, std::size_t bytes) {
    if (bytes >= text.size()) return text;
    while (bytes > 0 && ContinuesCharacter(text[bytes]))
        --bytes;
    return text.substr(0, bytes);
}

constexpr std::string_view WithoutTrailingBlanks(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \t");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

}  // namespace platform
