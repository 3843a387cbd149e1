#include "platform/registry/value_text.h"

#include <charconv>
#include <cstring>

#include <platform/text.h>

namespace platform {
namespace {

constexpr char kDigits[] = "0123456789abcdef";
constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyz0123456789-_. ";

// The text of a value that is clean UTF-16 with one terminator, at its end.
std::optional<std::string> CleanText(const std::vector<BYTE>& bytes) {
    if (bytes.size() < 2 || bytes.size() % 2 != 0) return std::nullopt;
    std::u16string units(bytes.size() / 2, u'\0');
    std::memcpy(units.data(), bytes.data(), bytes.size());
    if (units.find(u'\0') != units.size() - 1) return std::nullopt;
    units.pop_back();
    std::string text = ToUtf8(units);
    return FromUtf8(text).View() == units ? std::optional(std::move(text)) : std::nullopt;
}

RegistryValue TextValue(DWORD type, std::string_view text) {
    const CString wide = FromUtf8(text);
    RegistryValue value{type, {}};
    value.bytes.resize((static_cast<std::size_t>(wide.GetLength()) + 1) * 2);
    std::memcpy(value.bytes.data(), wide.GetString(), value.bytes.size());
    return value;
}

template <class Number>
bool ReadNumber(std::string_view text, Number& number, int base) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// What stands behind "hex(".
std::optional<RegistryValue> HexValue(std::string_view text) {
    const std::size_t end = text.find("):");
    RegistryValue value{};
    if (end == std::string_view::npos || !ReadNumber(text.substr(0, end), value.type, 10))
        return std::nullopt;
    const std::string_view digits = text.substr(end + 2);
    if (digits.size() % 2 != 0) return std::nullopt;
    value.bytes.resize(digits.size() / 2);
    for (std::size_t i = 0; i < value.bytes.size(); ++i)
        if (!ReadNumber(digits.substr(2 * i, 2), value.bytes[i], 16)) return std::nullopt;
    return value;
}

}  // namespace

std::string ValueText(const RegistryValue& value) {
    if (value.type == REG_DWORD && value.bytes.size() == sizeof(DWORD)) {
        DWORD number;
        std::memcpy(&number, value.bytes.data(), sizeof number);
        return "dword:" + std::to_string(number);
    }
    if (value.type == REG_SZ || value.type == REG_EXPAND_SZ)
        if (const auto text = CleanText(value.bytes))
            return (value.type == REG_SZ ? "sz:" : "expand:") + *text;
    std::string text = "hex(" + std::to_string(value.type) + "):";
    for (const BYTE byte : value.bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::optional<RegistryValue> ValueOfText(std::string_view text) {
    const auto take = [&text](std::string_view prefix) {
        if (!text.starts_with(prefix)) return false;
        text.remove_prefix(prefix.size());
        return true;
    };
    if (take("sz:")) return TextValue(REG_SZ, text);
    if (take("expand:")) return TextValue(REG_EXPAND_SZ, text);
    if (take("hex(")) return HexValue(text);
    DWORD number = 0;
    if (!take("dword:") || !ReadNumber(text, number, 10)) return std::nullopt;
    RegistryValue value{REG_DWORD, std::vector<BYTE>(sizeof number)};
    std::memcpy(value.bytes.data(), &number, sizeof number);
    return value;
}

std::string NameText(std::u16string_view name) {
    if (name.empty()) return "@";
    std::string text;
    for (char byte : ToUtf8(name)) {
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
        if (kPlain.find(byte) != std::string_view::npos) {
            text += byte;
        } else {
            text += '%';
            text += kDigits[static_cast<unsigned char>(byte) >> 4];
            text += kDigits[static_cast<unsigned char>(byte) & 15];
        }
    }
    // The file takes off space at either end.
    if (text.back() == ' ') text.replace(text.size() - 1, 1, "%20");
    if (text.front() == ' ') text.replace(0, 1, "%20");
    return text;
}

std::string PathText(std::u16string_view path) {
    std::string text;
    while (!path.empty()) {
        const std::size_t end = path.find(u'\\');
        if (end != 0) text += (text.empty() ? "" : "\\") + NameText(path.substr(0, end));
        path.remove_prefix(end == std::u16string_view::npos ? path.size() : end + 1);
    }
    return text.empty() ? "@" : text;
}

}  // namespace platform
