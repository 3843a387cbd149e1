#include "platform/base/unicode.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include <platform/text.h>

namespace platform {
namespace {

// What may follow a lead byte: how many bytes, and the range of the first of them. The range excludes
// overlong forms, surrogates and values beyond U+10FFFF; the bytes after it are always 80..BF.
struct Lead {
    std::size_t trailing;
    unsigned char first;
    unsigned char last;
};

Lead LeadOf(unsigned char byte) {
    if (byte < 0xC2) return {0, 0, 0};
    if (byte < 0xE0) return {1, 0x80, 0xBF};
    if (byte == 0xE0) return {2, 0xA0, 0xBF};
    if (byte == 0xED) return {2, 0x80, 0x9F};
    if (byte < 0xF0) return {2, 0x80, 0xBF};
    if (byte == 0xF0) return {3, 0x90, 0xBF};
    if (byte < 0xF4) return {3, 0x80, 0xBF};
    if (byte == 0xF4) return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

// Widens whole blocks of ASCII characters from `done` on, and returns where they end.
template <std::size_t Size>
std::size_t WidenBlocks(std::string_view bytes, char16_t* to, std::size_t done) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    for (; done + Size <= bytes.size(); done += Size) {
        std::uint64_t all = 0;
        for (std::size_t i = 0, word; i < Size; i += sizeof word) {
            std::memcpy(&word, bytes.data() + done + i, sizeof word);
            all |= word;
        }
        if (all & kHighBits) break;
        for (std::size_t i = 0; i < Size; ++i)
            to[done + i] = static_cast<unsigned char>(bytes[done + i]);
    }
    return done;
}

// Widens the ASCII characters that a text begins with, and returns how many they are.
std::size_t WidenAscii(std::string_view bytes, char16_t* to) {
    std::size_t done = WidenBlocks<16>(bytes, to, WidenBlocks<64>(bytes, to, 0));
    for (; done < bytes.size() && static_cast<unsigned char>(bytes[done]) < 0x80; ++done)
        to[done] = static_cast<unsigned char>(bytes[done]);
    return done;
}

// Decodes what fits into the block, takes it off the front of `bytes`, and returns how many units it is.
std::size_t DecodeInto(std::span<char16_t> block, std::string_view& bytes) {
    char16_t* to = block.data();
    char16_t* const end = to + block.size();
    while (!bytes.empty() && end - to >= 2) {
        const std::size_t plain = WidenAscii(bytes.substr(0, static_cast<std::size_t>(end - to)), to);
        to += plain;
        bytes.remove_prefix(plain);
        if (bytes.empty() || end - to < 2) break;
        const Decoded next = DecodeUtf8(bytes, 0);
        bytes.remove_prefix(next.length);
        if (next.codePoint < 0x10000) {
            *to++ = static_cast<char16_t>(next.codePoint);
        } else {
            *to++ = static_cast<char16_t>(0xD800 + ((next.codePoint - 0x10000) >> 10));
            *to++ = static_cast<char16_t>(0xDC00 + ((next.codePoint - 0x10000) & 0x3FF));
        }
    }
    return static_cast<std::size_t>(to - block.data());
}

}  // namespace

Decoded DecodeUtf8(std::string_view bytes, std::size_t position) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char first = at(position);
    if (first < 0x80) return {first, 1};
    const Lead lead = LeadOf(first);
    if (lead.trailing == 0) return {kReplacement, 1};
    char32_t codePoint = first & (0x3Fu >> lead.trailing);
    for (std::size_t i = 1; i <= lead.trailing; ++i) {
        if (position + i >= bytes.size()) return {kReplacement, i};
        const unsigned char byte = at(position + i);
        const unsigned char low = i == 1 ? lead.first : 0x80;
        const unsigned char high = i == 1 ? lead.last : 0xBF;
        if (byte < low || byte > high) return {kReplacement, i};
        codePoint = (codePoint << 6) | (byte & 0x3Fu);
    }
    return {codePoint, lead.trailing + 1};
}

Decoded DecodeUtf16(std::u16string_view text, std::size_t position) {
    const char32_t unit = text[position];
    if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) return {unit, 1};
    if (IsHighSurrogate(unit) && position + 1 < text.size() && IsLowSurrogate(text[position + 1]))
        return {0x10000 + ((unit - 0xD800) << 10) + (text[position + 1] - 0xDC00u), 2};
    return {kReplacement, 1};
}

void AppendUtf8(std::string& out, char32_t codePoint) {
    if (!IsCodePoint(codePoint)) codePoint = kReplacement;
    const auto push = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        push(codePoint);
    } else if (codePoint < 0x800) {
        push(0xC0 | (codePoint >> 6));
        push(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        push(0xE0 | (codePoint >> 12));
        push(0x80 | ((codePoint >> 6) & 0x3F));
        push(0x80 | (codePoint & 0x3F));
    } else {
        push(0xF0 | (codePoint >> 18));
        push(0x80 | ((codePoint >> 12) & 0x3F));
        push(0x80 | ((codePoint >> 6) & 0x3F));
        push(0x80 | (codePoint & 0x3F));
    }
}

void AppendUtf16(std::u16string& out, char32_t codePoint) {
    if (!IsCodePoint(codePoint)) codePoint = kReplacement;
    if (codePoint < 0x10000) {
        out.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    out.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
}

std::u16string Utf16FromUtf8(std::string_view bytes) {
    std::u16string out;
    AppendFromUtf8(out, bytes);
    return out;
}

std::u16string Utf16FromUtf32(std::u32string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (const char32_t unit : text)
        AppendUtf16(out, unit);
    return out;
}

}  // namespace platform

std::string ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const platform::Decoded next = platform::DecodeUtf16(text, i);
        platform::AppendUtf8(out, next.codePoint);
        i += next.length;
    }
    return out;
}

void AppendFromUtf8(std::u16string& text, std::string_view bytes) {
    // By way of a block that stays in the cache: a string's own room would have to be filled before it is
    // written, which takes longer than the decoding.
    std::array<char16_t, 2048> block;
    if (bytes.size() > block.size()) text.reserve(text.size() + bytes.size());  // which is never too little
    while (!bytes.empty())
        text.append(block.data(), platform::DecodeInto(block, bytes));
}

CString FromUtf8(std::string_view bytes) {
    return CString(platform::Utf16FromUtf8(bytes));
}
