#include "platform/internet/request_text.h"

#include <glib.h>

#include <algorithm>
#include <memory>

#include <platform/text.h>

namespace platform {
namespace {

constexpr std::size_t kLongestName = 253;

bool IsAlphanumeric(char byte) {
    return g_ascii_isalnum(byte);
}

// "[fe80::1%25eth0]", brackets included.
bool IsBracketedAddress(std::string_view host) {
    if (host.size() < 4 || host.front() != '[' || host.back() != ']') return false;
    const std::string_view inside = host.substr(1, host.size() - 2);
    return inside.find(':') != std::string_view::npos &&
           std::all_of(inside.begin(), inside.end(), [](char byte) {
               return IsAlphanumeric(byte) || std::string_view(":.%-_").find(byte) != std::string_view::npos;
           });
}

bool IsToken(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char byte) {
        return IsAlphanumeric(byte) ||
               std::string_view("!#$%&'*+-.^_`|~").find(byte) != std::string_view::npos;
    });
}

bool MayStandInTarget(unsigned char byte) {
    return byte > 0x20 && byte < 0x7F &&
           std::string_view("\"<>\\^`{|}").find(static_cast<char>(byte)) == std::string_view::npos;
}

}  // namespace

std::optional<std::string> HostOf(std::u16string_view server) {
    const std::string utf8 = ToUtf8(server);
    if (IsBracketedAddress(utf8)) return utf8;
    const std::unique_ptr<char, decltype(&g_free)> ascii(g_hostname_to_ascii(utf8.c_str()), &g_free);
    if (!ascii) return std::nullopt;
    const std::string_view host(ascii.get());
    const bool right =
        !host.empty() && host.size() <= kLongestName && std::all_of(host.begin(), host.end(), [](char byte) {
            return IsAlphanumeric(byte) || byte == '.' || byte == '-' || byte == '_';
        });
    return right ? std::optional<std::string>(host) : std::nullopt;
}

std::string TargetOf(std::u16string_view object) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const std::string bytes = ToUtf8(object.substr(0, object.find(u'#')));
    std::string target;
    if (bytes.empty() || bytes.front() != '/') target = "/";
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        if (MayStandInTarget(byte)) {
            target += each;
        } else {
            target += '%';
            target += kDigits[byte >> 4];
            target += kDigits[byte & 15];
        }
    }
    return target;
}

std::vector<std::string> HeaderLines(std::u16string_view headers) {
    const std::string bytes = ToUtf8(headers);
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", from), bytes.size());
        const std::string_view line(bytes.data() + from, end - from);
        const std::size_t colon = line.find(':');
        const bool printable = std::none_of(line.begin(), line.end(),
                                            [](char byte) { return g_ascii_iscntrl(byte) && byte != '\t'; });
        if (colon != std::string_view::npos && IsToken(line.substr(0, colon)) && printable)
            lines.emplace_back(line);
        from = end + 1;
    }
    return lines;
}

bool HasName(std::string_view line, std::string_view name) {
    return line.size() > name.size() && line[name.size()] == ':' &&
           g_ascii_strncasecmp(line.data(), name.data(), name.size()) == 0;
}

std::string_view ValueOf(std::string_view line) {
    constexpr std::string_view kSpace = " \t\r\n";
    const std::string_view value = line.substr(std::min(line.find(':'), line.size() - 1) + 1);
    const std::size_t first = value.find_first_not_of(kSpace);
    if (first == std::string_view::npos) return {};
    return value.substr(first, value.find_last_not_of(kSpace) - first + 1);
}

}  // namespace platform
