#include "platform/window/x11/drag/uri_list.h"

#include <unistd.h>

#include <array>
#include <cstdint>
#include <optional>

namespace platform::x11 {

namespace {

constexpr std::string_view kScheme = "file://";

bool IsPlain(char byte) {
    const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    const bool digit = byte >= '0' && byte <= '9';
    return letter || digit || std::string_view("/-_.~").find(byte) != std::string_view::npos;
}

int DigitOf(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    return byte >= 'A' && byte <= 'F' ? byte - 'A' + 10 : -1;
}

// A % without two digits behind it stands for itself.
std::string Decode(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool whole = text[i] == '%' && i + 2 < text.size();
        const int high = whole ? DigitOf(text[i + 1]) : -1;
        const int low = whole ? DigitOf(text[i + 2]) : -1;
        if (high < 0 || low < 0) {
            decoded += text[i];
        } else {
            decoded += static_cast<char>(high * 16 + low);
            i += 2;
        }
    }
    return decoded;
}

bool IsThisMachine(std::string_view host) {
    std::array<char, 256> name{};
    if (host.empty() || host == "localhost") return true;
    return gethostname(name.data(), name.size() - 1) == 0 && host == name.data();
}

std::optional<CString> PathOf(std::string_view uri) {
    if (!uri.starts_with(kScheme)) return std::nullopt;
    uri.remove_prefix(kScheme.size());
    const std::size_t slash = uri.find('/');
    if (slash == std::string_view::npos || !IsThisMachine(uri.substr(0, slash))) return std::nullopt;
    const std::string path = Decode(uri.substr(slash));
    const CString text = FromUtf8(path);
    // Text of another kind than a path is bytes that nothing leads back to.
    if (path.find('\0') != std::string::npos || ToUtf8(text) != path) return std::nullopt;
    return text;
}

}  // namespace

std::string ToUriList(const std::vector<CString>& paths) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string list;
    for (const CString& path : paths) {
        list += kScheme;
        for (const char byte : ToUtf8(path)) {
            const auto value = static_cast<std::uint8_t>(byte);
            if (IsPlain(byte))
                list += byte;
            else
                list += {'%', kDigits[value >> 4], kDigits[value & 15]};
        }
        list += "\r\n";
    }
    return list;
}

std::vector<CString> FromUriList(std::string_view list) {
    std::vector<CString> paths;
    while (!list.empty()) {
        const std::size_t end = list.find_first_of("\r\n");
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
        if (const std::optional<CString> path = PathOf(line)) paths.push_back(*path);
    }
    return paths;
}

}  // namespace platform::x11
