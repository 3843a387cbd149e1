#include "platform/graphics/decode/still_picture.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/base/byte_reader.h"
#include "platform/graphics/counters.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

// Only these: the library also reads vector drawings and formats told by a weak byte or two, which cost time
// and trust, complain on the terminal, and which no skin is made of.
const char* LibraryName(PictureKind kind) {
    switch (kind) {
        case PictureKind::Png:
            return "png";
        case PictureKind::Jpeg:
            return "jpeg";
        case PictureKind::Bmp:
            return "bmp";
        case PictureKind::Tiff:
            return "tiff";
        case PictureKind::WebP:
            return "webp";
        default:
            return nullptr;
    }
}

struct Release {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using LoaderPtr = std::unique_ptr<GdkPixbufLoader, Release>;

// A progressive picture may be sent in any number of passes, each of which costs as much as the whole picture
// and can be a few bytes long. Ordinary files have some ten.
constexpr std::int64_t kMostPassPixels = std::int64_t{1} << 29;

std::int64_t CountPasses(PictureKind kind, std::span<const std::uint8_t> bytes) {
    if (kind != PictureKind::Jpeg) return 1;
    static constexpr std::string_view kStartOfScan = "\xFF\xDA";
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::int64_t count = 0;
    for (std::size_t at = text.find(kStartOfScan); at != std::string_view::npos;
         at = text.find(kStartOfScan, at + kStartOfScan.size())) {
        ++count;
    }
    return count;
}

// Such frames come from no camera and no paint program, and the library can read bad ones for ever. The walk
// over the segments before the first scan is as lenient as the library's own.
bool IsArithmeticJpeg(std::span<const std::uint8_t> bytes) {
    constexpr std::uint8_t kFirstArithmeticFrame = 0xC9;
    constexpr std::uint8_t kLastFrame = 0xCF;
    constexpr std::uint8_t kConditioning = 0xCC;  // among the frames, but none
    constexpr std::uint8_t kFirstBare = 0xD0;     // restarts, start and end of image have no length
    constexpr std::uint8_t kStartOfScan = 0xDA;
    for (std::size_t at = 2; at < bytes.size();) {
        while (at < bytes.size() && bytes[at] != 0xFF)
            ++at;
        while (at < bytes.size() && bytes[at] == 0xFF)
            ++at;
        ByteReader segment(bytes.subspan(at));
        const unsigned marker = segment.Byte();
        ++at;
        if (segment.Failed() || marker == kStartOfScan) return false;
        if (marker >= kFirstArithmeticFrame && marker <= kLastFrame && marker != kConditioning) return true;
        if (marker <= 1 || (marker >= kFirstBare && marker < kStartOfScan)) continue;
        const unsigned high = segment.Byte();
        at += (high << 8) | segment.Byte();
    }
    return false;
}

// What the loader tells while it reads.
struct Watch {
    PictureKind kind;
    std::size_t bytes;
    std::int64_t passes;
    bool knowsSize = false;
    bool refused = false;
    bool sawPixels = false;

    // Asked before pixel memory is taken; a size of nothing makes the loader give up.
    static void OnSize(GdkPixbufLoader* loader, int width, int height, gpointer self) {
        auto* watch = static_cast<Watch*>(self);
        watch->knowsSize = true;
        if (IsBelievableSize(watch->kind, width, height, watch->bytes) &&
            watch->passes * width * height <= kMostPassPixels) {
            return;
        }
        watch->refused = true;
        gdk_pixbuf_loader_set_size(loader, 0, 0);
    }
    // Some decoders leave the rows that a truncated file does not reach as the allocator gave them.
    static void OnMemory(GdkPixbufLoader* loader, gpointer) {
        if (GdkPixbuf* pixels = gdk_pixbuf_loader_get_pixbuf(loader)) gdk_pixbuf_fill(pixels, 0);
    }
    static void OnPixels(GdkPixbufLoader*, int, int, int, int, gpointer self) {
        static_cast<Watch*>(self)->sawPixels = true;
    }

    void Follow(GdkPixbufLoader* loader) {
        g_signal_connect(loader, "size-prepared", G_CALLBACK(&Watch::OnSize), this);
        g_signal_connect(loader, "area-prepared", G_CALLBACK(&Watch::OnMemory), nullptr);
        g_signal_connect(loader, "area-updated", G_CALLBACK(&Watch::OnPixels), this);
    }
};

// Returns the error's code in the library's own domain, or 0.
int TakeError(GError* error) {
    if (error == nullptr) return 0;
    const int code = error->domain == GDK_PIXBUF_ERROR ? error->code : GDK_PIXBUF_ERROR_FAILED;
    g_error_free(error);
    return code;
}

// Where the parts of a bitmap file lie.
struct BitmapParts {
    std::size_t tableAt = 0;
    std::size_t tableEnd = 0;  // of the colours; where they begin in a bitmap without
    std::size_t rowsAt = 0;
};

// Nothing for a bitmap that announces more before its rows than the file holds: the library takes memory for
// it.
std::optional<BitmapParts> PartsOfBitmap(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t kFileHeader = 14;
    constexpr std::uint32_t kOldHeader = 12;  // counts no colours, which have three bytes
    ByteReader reader(bytes);
    reader.Skip(10);
    BitmapParts parts;
    parts.rowsAt = reader.Dword();
    const std::uint32_t headerBytes = reader.Dword();
    if (parts.rowsAt > bytes.size() || headerBytes > bytes.size()) return std::nullopt;
    const bool isOld = headerBytes == kOldHeader;
    reader.Skip(isOld ? 6 : 10);
    const unsigned depth = reader.Word();
    std::uint32_t colours = 0;
    if (headerBytes >= 40) {
        reader.Skip(16);
        colours = reader.Dword();
    }
    if (reader.Failed() || colours > bytes.size() / 3) return std::nullopt;
    if (depth > 8)
        colours = 0;
    else if (colours == 0)
        colours = 1U << depth;
    parts.tableAt = kFileHeader + headerBytes;
    parts.tableEnd = parts.tableAt + std::size_t{colours} * (isOld ? 3 : 4);
    return parts;
}

// Hands the library the bytes of a picture until it has what it needs, or finds a fault.
//
// It gets little at a time until the size is known, because it goes on with what it was given after its size
// was refused, and a few kilobytes can stand for gigapixels. And it gets ever less towards the end, because
// it tells of no pixels that came with a fault.
class Feeder {
  public:
    Feeder(GdkPixbufLoader* loader, const Watch& watch) : loader_(loader), watch_(watch) {}

    void Write(std::span<const std::uint8_t> bytes) {
        constexpr std::size_t kMost = std::size_t{64} << 10;
        constexpr std::size_t kLeast = 64;
        std::size_t written = 0;
        while (!bytes.empty() && !hasFailed_ && !watch_.refused) {
            const std::size_t most = watch_.knowsSize ? std::clamp(written, kLeast, kMost) : kLeast;
            const std::size_t size = std::min(most, (bytes.size() + 1) / 2);
            GError* error = nullptr;
            const gboolean done = gdk_pixbuf_loader_write(loader_, bytes.data(), size, &error);
            Note(done, error);
            bytes = bytes.subspan(size);
            written += size;
        }
    }
    void Close() {
        GError* error = nullptr;
        const gboolean done = gdk_pixbuf_loader_close(loader_, &error);
        Note(done, error);
    }
    bool LacksMemory() const { return lacksMemory_; }

  private:
    void Note(gboolean done, GError* error) {
        const int code = TakeError(error);
        if (done) return;
        hasFailed_ = true;
        if (code == GDK_PIXBUF_ERROR_INSUFFICIENT_MEMORY) lacksMemory_ = true;
    }

    GdkPixbufLoader* const loader_;
    const Watch& watch_;
    bool hasFailed_ = false;
    bool lacksMemory_ = false;
};

// The library knows no gap between the colours of a bitmap and its rows.
void WriteWithoutGap(Feeder& feeder, std::span<const std::uint8_t> bytes, const BitmapParts& parts) {
    constexpr std::size_t kRowsAt = 10;
    std::vector<std::uint8_t> start(bytes.begin(),
                                    bytes.begin() + static_cast<std::ptrdiff_t>(parts.tableEnd));
    for (std::size_t i = 0; i < 4; ++i)
        start[kRowsAt + i] = static_cast<std::uint8_t>(parts.tableEnd >> (8 * i));
    feeder.Write(start);
    feeder.Write(bytes.subspan(parts.rowsAt));
}

std::shared_ptr<Surface> ToSurface(const GdkPixbuf* pixels) {
    const int width = gdk_pixbuf_get_width(pixels);
    const int height = gdk_pixbuf_get_height(pixels);
    std::shared_ptr<Surface> surface = Surface::Create(width, height);
    if (!surface) return nullptr;
    const guint8* row = gdk_pixbuf_read_pixels(pixels);
    const std::ptrdiff_t stride = gdk_pixbuf_get_rowstride(pixels);
    const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixels) != FALSE;
    const std::ptrdiff_t step = gdk_pixbuf_get_n_channels(pixels);
    std::vector<std::uint32_t> straight(static_cast<std::size_t>(width));
    for (int y = 0; y < height; ++y, row += stride) {
        const guint8* in = row;
        for (std::uint32_t& pixel : straight) {
            const std::uint32_t alpha = hasAlpha ? in[3] : 255U;
            pixel = (alpha << 24) | (std::uint32_t{in[0]} << 16) | (std::uint32_t{in[1]} << 8) | in[2];
            in += step;
        }
        PremultiplyRow(surface->Row(y), straight.data(), straight.size());
    }
    surface->Touch();
    return surface;
}

}  // namespace

std::shared_ptr<Surface> DecodeStill(PictureKind kind, std::span<const std::uint8_t> bytes,
                                     Gdiplus::Status& status) {
    status = Gdiplus::UnknownImageFormat;
    const char* name = LibraryName(kind);
    if (name == nullptr) return nullptr;
    if (kind == PictureKind::Jpeg && IsArithmeticJpeg(bytes)) return nullptr;
    std::optional<BitmapParts> bitmap;
    if (kind == PictureKind::Bmp) {
        bitmap = PartsOfBitmap(bytes);
        if (!bitmap) return nullptr;
    }
    GError* error = nullptr;
    const LoaderPtr loader(gdk_pixbuf_loader_new_with_type(name, &error));
    TakeError(error);
    if (!loader) return nullptr;

    Watch watch{kind, bytes.size(), CountPasses(kind, bytes)};
    watch.Follow(loader.get());
    Feeder feeder(loader.get(), watch);
    if (bitmap && bitmap->tableAt < bitmap->tableEnd && bitmap->tableEnd < bitmap->rowsAt) {
        WriteWithoutGap(feeder, bytes, *bitmap);
    } else {
        feeder.Write(bytes);
    }
    // Many files lack it, and the library keeps the last rows back until it has seen it.
    static constexpr std::uint8_t kEndOfJpeg[] = {0xFF, 0xD9};
    if (kind == PictureKind::Jpeg) feeder.Write(kEndOfJpeg);
    feeder.Close();
    if (feeder.LacksMemory() && !watch.refused) status = Gdiplus::OutOfMemory;
    // A header alone is no picture, however content the decoder is with it.
    if (watch.refused || feeder.LacksMemory() || !watch.sawPixels) return nullptr;

    const GdkPixbuf* pixels = gdk_pixbuf_loader_get_pixbuf(loader.get());
    // Not every decoder asks about the size first.
    if (pixels == nullptr ||
        !IsBelievableSize(kind, gdk_pixbuf_get_width(pixels), gdk_pixbuf_get_height(pixels), bytes.size())) {
        return nullptr;
    }
    std::shared_ptr<Surface> surface = ToSurface(pixels);
    status = surface ? Gdiplus::Ok : Gdiplus::OutOfMemory;
    return surface;
}

std::unique_ptr<EncodedPicture> StillPicture::Open(PictureKind kind, std::vector<std::uint8_t> bytes,
                                                   Decoder decode, Gdiplus::Status& status) {
    std::unique_ptr<StillPicture> picture(new StillPicture);
    picture->kind_ = kind;
    picture->bytes_ = std::move(bytes);
    picture->decode_ = decode;
    picture->first_ = decode(kind, picture->bytes_, status);
    if (!picture->first_) return nullptr;
    ++Gdiplus::Counters().decodedFrames;
    picture->width_ = picture->first_->Width();
    picture->height_ = picture->first_->Height();
    return picture;
}

std::shared_ptr<Surface> StillPicture::Frame(int index) {
    if (index != 0) return nullptr;
    if (first_) return std::exchange(first_, nullptr);
    Gdiplus::Status status = Gdiplus::Ok;
    std::shared_ptr<Surface> surface = decode_(kind_, bytes_, status);
    if (surface) ++Gdiplus::Counters().decodedFrames;
    return surface;
}

}  // namespace platform
