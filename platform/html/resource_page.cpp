#include "platform/html/resource_page.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string_view>

#include <platform/resources.h>

#include "platform/resources/module_file.h"

namespace platform::html {

namespace {

constexpr std::string_view kScheme = "res://";

bool StartsWithScheme(const std::string& url) {
    return url.size() >= kScheme.size() &&
           FromUtf8(url.substr(0, kScheme.size())).CompareNoCase(FromUtf8(kScheme)) == 0;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::string Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair =
            text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 && HexDigit(text[i + 2]) >= 0;
        if (!pair) {
            plain += text[i];
            continue;
        }
        plain += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
        i += 2;
    }
    return plain;
}

std::string Escaped(std::string_view text) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x20 && byte < 0x7F && !std::strchr("%?#\"<>\\^`{|}", c)) {
            escaped += c;
            continue;
        }
        escaped += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return escaped;
}

// A name or type in an address: a number names by number, as does one behind a '#'.
class ResourceKey {
  public:
    explicit ResourceKey(std::string_view text) : text_(FromUtf8(text)) {
        if (text.starts_with('#')) text.remove_prefix(1);
        const bool digits =
            !text.empty() && text.size() <= 5 &&
            std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
        if (digits && std::stoul(std::string(text)) <= 0xFFFF) number_ = std::stoul(std::string(text));
    }
    LPCWSTR Get() const { return number_ ? MAKEINTRESOURCE(*number_) : text_.GetString(); }

  private:
    CString text_;
    std::optional<unsigned long> number_;
};

std::span<const std::byte> Find(HMODULE module, LPCWSTR name, LPCWSTR type) {
    const HRSRC resource = FindResourceW(module, name, type);
    if (!resource) return {};
    const void* const bytes = LockResource(LoadResource(module, resource));
    if (!bytes) return {};
    return {static_cast<const std::byte*>(bytes), SizeofResource(module, resource)};
}

// The file of a bitmap whose resource begins with its information header.
std::vector<std::byte> BitmapFile(std::span<const std::byte> bytes) {
    const auto number = [&](std::size_t at, std::size_t size) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size && at + i < bytes.size(); ++i)
            value |= std::to_integer<std::uint32_t>(bytes[at + i]) << (8 * i);
        return value;
    };
    const std::uint32_t header = number(0, 4);
    const std::uint32_t depth = number(14, 2);
    const std::uint32_t used = number(32, 4);
    const std::uint32_t colours = depth <= 8 ? (used != 0 ? used : 1U << depth) : used;
    const std::uint32_t masks = header == 40 && number(16, 4) == 3 ? 12 : 0;
    const auto size = static_cast<std::uint32_t>(14 + bytes.size());
    const std::uint32_t pixels = 14 + header + masks + 4 * colours;
    std::vector<std::byte> file{std::byte{'B'}, std::byte{'M'}};
    for (const std::uint32_t value : {size, std::uint32_t{0}, pixels})
        for (int shift = 0; shift < 32; shift += 8)
            file.push_back(static_cast<std::byte>(value >> shift));
    file.insert(file.end(), bytes.begin(), bytes.end());
    return file;
}

constexpr std::array<std::array<std::string_view, 2>, 22> kTypes{{
    {".html", "text/html"},      {".htm", "text/html"},
    {".css", "text/css"},        {".js", "text/javascript"},
    {".mjs", "text/javascript"}, {".json", "application/json"},
    {".xml", "application/xml"}, {".xhtml", "application/xhtml+xml"},
    {".svg", "image/svg+xml"},   {".png", "image/png"},
    {".jpg", "image/jpeg"},      {".jpeg", "image/jpeg"},
    {".gif", "image/gif"},       {".bmp", "image/bmp"},
    {".ico", "image/x-icon"},    {".webp", "image/webp"},
    {".woff", "font/woff"},      {".woff2", "font/woff2"},
    {".ttf", "font/ttf"},        {".mp3", "audio/mpeg"},
    {".mp4", "video/mp4"},       {".txt", "text/plain"},
}};

// By the ending of the name, else by how the bytes begin; what is neither is a page.
std::string MimeType(const std::string& name, std::span<const std::byte> bytes) {
    std::string lower = ToUtf8(FromUtf8(name).MakeLower());
    for (const auto& [ending, type] : kTypes)
        if (lower.ends_with(ending)) return std::string(type);
    const std::string_view start(reinterpret_cast<const char*>(bytes.data()),
                                 std::min<std::size_t>(bytes.size(), 12));
    if (start.starts_with("\x89PNG")) return "image/png";
    if (start.starts_with("\xFF\xD8\xFF")) return "image/jpeg";
    if (start.starts_with("GIF8")) return "image/gif";
    if (start.starts_with("BM")) return "image/bmp";
    if (start.starts_with("RIFF") && start.ends_with("WEBP")) return "image/webp";
    return "text/html";
}

// What an address says behind "res://", without what only the browser looks at.
std::string PathOf(const std::string& url) {
    const std::string path = url.substr(kScheme.size());
    return path.substr(0, path.find_first_of("?#"));
}

}  // namespace

std::optional<ResourceAnswer> FindResourcePage(const std::string& url) {
    if (!StartsWithScheme(url)) return std::nullopt;
    const std::string path = Unescaped(PathOf(url));
    const std::optional<FileInModule> found = FindModuleOfPath(path);
    if (!found) return std::nullopt;
    const std::size_t slash = found->rest.find('/');
    const bool typed = slash != std::string::npos;
    const std::string name = typed ? found->rest.substr(slash + 1) : found->rest;
    const ResourceKey nameKey(name);
    std::span<const std::byte> bytes;
    bool bitmap = false;
    if (typed) {
        const ResourceKey typeKey(std::string_view(found->rest).substr(0, slash));
        bytes = Find(found->module, nameKey.Get(), typeKey.Get());
        bitmap = typeKey.Get() == RT_BITMAP;
    } else {
        bytes = Find(found->module, nameKey.Get(), RT_HTML);
        if (bytes.empty()) bytes = Find(found->module, nameKey.Get(), RT_RCDATA);
    }
    if (bytes.empty()) return std::nullopt;
    ResourceAnswer answer;
    answer.bytes = bitmap ? BitmapFile(bytes) : std::vector<std::byte>(bytes.begin(), bytes.end());
    answer.mimeType = MimeType(name, answer.bytes);
    return answer;
}

std::string AddressOfResource(const std::string& url) {
    if (!StartsWithScheme(url)) return url;
    const std::string path = url.substr(kScheme.size());
    const std::optional<FileInModule> found = FindModuleOfPath(path);
    if (!found) return url;
    const std::size_t file = path.size() - found->rest.size();
    return std::string(kScheme) + Escaped(std::string_view(path).substr(0, file)) + found->rest;
}

}  // namespace platform::html
