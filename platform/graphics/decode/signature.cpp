#include "platform/graphics/decode/signature.h"

#include <algorithm>
#include <string_view>

#include "platform/graphics/decode/picture.h"

namespace platform {
namespace {

using namespace std::string_view_literals;

// Below this a false claim costs little: 16 MiB of pixels.
constexpr std::int64_t kCheapPixels = std::int64_t{1} << 22;

// The most pixels that one byte can stand for.
constexpr std::int64_t PixelsPerByte(PictureKind kind) {
    switch (kind) {
        case PictureKind::Gif:
            return 2731;  // 4096 pixels in a code of 12 bits
        case PictureKind::Jpeg:
            return 512;  // a bit for each block of 8 x 8
        case PictureKind::Bmp:
            return 128;  // a run of 255 in two bytes
        case PictureKind::Icon:
            return 8;  // a bit each
        default:
            return 8256;  // deflate's 1032 : 1, one bit each
    }
}

}  // namespace

PictureKind RecognisePicture(std::span<const std::uint8_t> bytes) {
    struct Signature {
        std::string_view start;
        PictureKind kind;
    };
    static constexpr Signature kSignatures[] = {
        {"\x89PNG\r\n\x1a\n"sv, PictureKind::Png},
        {"\xFF\xD8\xFF"sv, PictureKind::Jpeg},
        {"GIF87a"sv, PictureKind::Gif},
        {"GIF89a"sv, PictureKind::Gif},
        {"BM"sv, PictureKind::Bmp},
        {"\0\0\1\0"sv, PictureKind::Icon},
        {"\0\0\2\0"sv, PictureKind::Icon},  // a cursor
        {"II*\0"sv, PictureKind::Tiff},
        {"MM\0*"sv, PictureKind::Tiff},
    };
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    for (const Signature& signature : kSignatures) {
        if (text.starts_with(signature.start)) return signature.kind;
    }
    if (text.starts_with("RIFF"sv) && text.substr(0, 12).ends_with("WEBP"sv)) return PictureKind::WebP;
    return PictureKind::Unknown;
}

bool IsBelievableSize(PictureKind kind, std::int64_t width, std::int64_t height, std::size_t bytes) {
    if (width < 1 || height < 1 || width > kMaxPictureSide || height > kMaxPictureSide) return false;
    const std::int64_t pixels = width * height;
    if (pixels > kMaxPicturePixels) return false;
    return pixels <= kCheapPixels || pixels / PixelsPerByte(kind) <= static_cast<std::int64_t>(bytes);
}

}  // namespace platform
