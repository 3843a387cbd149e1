#include "platform/graphics/decode/icon_picture.h"

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>
#include <vector>

#include "platform/base/byte_reader.h"
#include "platform/graphics/decode/still_picture.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

// A file can list one costly entry that fails at its end thousands of times.
constexpr std::int64_t kMostTriedPixels = kMaxPicturePixels;
constexpr std::int64_t kLeastTry = 1 << 16;  // what the smallest failure counts for

struct IconEntry {
    std::span<const std::uint8_t> bytes;
    int width = 0;
    int height = 0;
    int depth = 0;            // bits of a pixel
    bool isPng = false;       // else a device-independent bitmap with a mask below it
    std::size_t colours = 0;  // of the bitmap's table
    std::size_t tableAt = 0;
};

std::uint32_t BigEndian(std::span<const std::uint8_t> bytes, std::size_t at) {
    return (std::uint32_t{bytes[at]} << 24) | (std::uint32_t{bytes[at + 1]} << 16) |
           (std::uint32_t{bytes[at + 2]} << 8) | bytes[at + 3];
}

std::optional<IconEntry> ReadPngEntry(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t kSizeAt = 16;
    if (bytes.size() < kSizeAt + 8) return std::nullopt;
    const std::uint32_t width = BigEndian(bytes, kSizeAt);
    const std::uint32_t height = BigEndian(bytes, kSizeAt + 4);
    if (!IsBelievableSize(PictureKind::Png, width, height, bytes.size())) return std::nullopt;
    return IconEntry{bytes, static_cast<int>(width), static_cast<int>(height), 32, true, 0, 0};
}

std::optional<IconEntry> ReadBitmapEntry(std::span<const std::uint8_t> bytes) {
    ByteReader reader(bytes);
    const std::uint32_t headerBytes = reader.Dword();
    const std::uint32_t width = reader.Dword();
    const std::uint32_t twiceHeight = reader.Dword();  // the picture's and the mask's
    reader.Skip(2);
    const int depth = reader.Word();
    const std::uint32_t compression = reader.Dword();
    reader.Skip(12);
    std::uint32_t colours = reader.Dword();
    if (reader.Failed() || headerBytes < 40 || headerBytes > bytes.size() || compression != 0) {
        return std::nullopt;
    }
    constexpr std::array kDepths = {1, 4, 8, 16, 24, 32};
    if (std::find(kDepths.begin(), kDepths.end(), depth) == kDepths.end()) return std::nullopt;
    const std::uint32_t height = twiceHeight / 2;
    if (!IsBelievableSize(PictureKind::Icon, width, height, bytes.size())) return std::nullopt;
    if (depth <= 8) {
        const std::uint32_t most = 1U << depth;
        if (colours == 0 || colours > most) colours = most;
    }
    if (colours > 256) return std::nullopt;
    return IconEntry{bytes,      static_cast<int>(width), static_cast<int>(height), depth, false, colours,
                     headerBytes};
}

std::vector<IconEntry> ReadDirectory(std::span<const std::uint8_t> bytes) {
    std::vector<IconEntry> entries;
    ByteReader reader(bytes);
    reader.Skip(4);
    for (int count = reader.Word(); count > 0 && !reader.Failed(); --count) {
        reader.Skip(8);
        const std::uint32_t length = reader.Dword();
        const std::uint32_t offset = reader.Dword();
        if (reader.Failed() || offset >= bytes.size()) continue;
        const auto data = bytes.subspan(offset, std::min<std::size_t>(length, bytes.size() - offset));
        const bool isPng = RecognisePicture(data) == PictureKind::Png;
        if (const auto entry = isPng ? ReadPngEntry(data) : ReadBitmapEntry(data)) entries.push_back(*entry);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const IconEntry& a, const IconEntry& b) {
        const auto rank = [](const IconEntry& e) {
            return std::tuple(std::int64_t{e.width} * e.height, e.depth);
        };
        return rank(a) > rank(b);
    });
    return entries;
}

// The rows of a bitmap stand bottom up, each padded to 32 bits.
struct BitRows {
    std::span<const std::uint8_t> bytes;
    std::size_t stride;
    int height;
    int depth;

    std::span<const std::uint8_t> Row(int y) const {
        return bytes.subspan(stride * static_cast<std::size_t>(height - 1 - y), stride);
    }
};

std::optional<BitRows> TakeRows(ByteReader& reader, int width, int height, int depth) {
    const std::size_t stride =
        (static_cast<std::size_t>(width) * static_cast<std::size_t>(depth) + 31) / 32 * 4;
    const auto bytes = reader.Bytes(stride * static_cast<std::size_t>(height));
    if (reader.Failed()) return std::nullopt;
    return BitRows{bytes, stride, height, depth};
}

// The bits of one pixel of at most 8.
unsigned PackedPixel(std::span<const std::uint8_t> row, int x, int depth) {
    const auto bit = static_cast<std::size_t>(x) * static_cast<std::size_t>(depth);
    const unsigned shift = 8U - static_cast<unsigned>(depth) - static_cast<unsigned>(bit % 8);
    return (unsigned{row[bit / 8]} >> shift) & ((1U << depth) - 1U);
}

// Straight ARGB; only 32-bit pixels have an alpha other than 255.
std::uint32_t PixelOf(std::span<const std::uint8_t> row, int x, int depth,
                      std::span<const std::uint32_t> table) {
    if (depth <= 8) {
        const unsigned index = PackedPixel(row, x, depth);
        return index < table.size() ? table[index] : 0xFF000000U;
    }
    const std::size_t at = static_cast<std::size_t>(x) * static_cast<std::size_t>(depth) / 8;
    if (depth == 16) {
        const unsigned packed = row[at] | (unsigned{row[at + 1]} << 8);
        const auto widen = [](unsigned five) { return (five << 3) | (five >> 2); };
        return 0xFF000000U | (widen((packed >> 10) & 31U) << 16) | (widen((packed >> 5) & 31U) << 8) |
               widen(packed & 31U);
    }
    const std::uint32_t alpha = depth == 32 ? row[at + 3] : 255U;
    return (alpha << 24) | (std::uint32_t{row[at + 2]} << 16) | (std::uint32_t{row[at + 1]} << 8) | row[at];
}

bool HasAlpha(const BitRows& rows, int width) {
    if (rows.depth != 32) return false;
    for (int y = 0; y < rows.height; ++y) {
        const auto row = rows.Row(y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            if (row[x * 4 + 3] != 0) return true;
        }
    }
    return false;
}

std::shared_ptr<Surface> DecodeBitmapEntry(const IconEntry& entry) {
    ByteReader reader(entry.bytes);
    reader.Skip(entry.tableAt);
    std::vector<std::uint32_t> table(entry.colours);
    for (std::uint32_t& colour : table)
        colour = 0xFF000000U | reader.Dword();
    const auto rows = TakeRows(reader, entry.width, entry.height, entry.depth);
    if (!rows) return nullptr;
    const auto mask = TakeRows(reader, entry.width, entry.height, 1);  // may be missing: nothing is cut out
    std::shared_ptr<Surface> surface = Surface::Create(entry.width, entry.height);
    if (!surface) return nullptr;

    const bool hasAlpha = HasAlpha(*rows, entry.width);
    for (int y = 0; y < entry.height; ++y) {
        const auto row = rows->Row(y);
        std::uint32_t* out = surface->Row(y);
        for (int x = 0; x < entry.width; ++x) {
            const std::uint32_t pixel = PixelOf(row, x, entry.depth, table);
            const bool cut = !hasAlpha && mask && PackedPixel(mask->Row(y), x, 1) != 0;
            const std::uint32_t alpha = hasAlpha ? pixel >> 24 : (cut ? 0U : 255U);
            out[x] = Premultiply((alpha << 24) | (pixel & 0xFFFFFFU));
        }
    }
    surface->Touch();
    return surface;
}

}  // namespace

std::shared_ptr<Surface> DecodeIcon(PictureKind, std::span<const std::uint8_t> bytes,
                                    Gdiplus::Status& status) {
    const std::vector<IconEntry> entries = ReadDirectory(bytes);
    std::int64_t tried = 0;
    for (const IconEntry& entry : entries) {
        tried += std::max<std::int64_t>(std::int64_t{entry.width} * entry.height, kLeastTry);
        if (tried > kMostTriedPixels) break;
        std::shared_ptr<Surface> surface =
            entry.isPng ? DecodeStill(PictureKind::Png, entry.bytes, status) : DecodeBitmapEntry(entry);
        if (!surface) continue;
        status = Gdiplus::Ok;
        return surface;
    }
    status = Gdiplus::UnknownImageFormat;
    return nullptr;
}

}  // namespace platform
