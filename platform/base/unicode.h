// Code points between UTF-8, UTF-16 and UTF-32. What is malformed becomes U+FFFD: in UTF-8 one for each
// maximal part that could have begun a character, in UTF-16 one for each unpaired surrogate.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

inline constexpr char32_t kReplacement = 0xFFFD;

// A code point and how many units of the source it took (at least 1).
struct Decoded {
    char32_t codePoint;
    std::size_t length;
};

// Both need a position inside the text.
[[nodiscard]] Decoded DecodeUtf8(std::string_view bytes, std::size_t position);
[[nodiscard]] Decoded DecodeUtf16(std::u16string_view text, std::size_t position);

// A value that is no code point is appended as U+FFFD.
void AppendUtf8(std::string& out, char32_t codePoint);
void AppendUtf16(std::u16string& out, char32_t codePoint);

[[nodiscard]] std::u16string Utf16FromUtf8(std::string_view bytes);
[[nodiscard]] std::u16string Utf16FromUtf32(std::u32string_view text);

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
constexpr bool IsCodePoint(char32_t value) {
    return value <= 0x10FFFF && !(value >= 0xD800 && value <= 0xDFFF);
}

}  // namespace platform
