#include "platform/graphics/decode/still_picture.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/graphics/counters.h"
#include "platform/graphics/decode/byte_reader.h"
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

// What the loader tells while it reads.
struct Watch {
    PictureKind kind;
    std::size_t bytes;
    std::int64_t passes;
    bool refused = false;
    bool sawPixels = false;

    // Asked before pixel memory is taken; a size of nothing makes the loader give up.
    static void OnSize(GdkPixbufLoader* loader, int width, int height, gpointer self) {
        auto* watch = static_cast<Watch*>(self);
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

// The library takes memory for all that a bitmap's header announces before its rows: none of it may be more
// than the file holds.
bool HasSoundStart(PictureKind kind, std::span<const std::uint8_t> bytes) {
    if (kind != PictureKind::Bmp) return true;
    ByteReader reader(bytes, 10);
    const std::uint32_t rowsAt = reader.DoubleWord();
    const std::uint32_t headerBytes = reader.DoubleWord();
    if (rowsAt > bytes.size() || headerBytes > bytes.size()) return false;
    if (headerBytes < 40) return !reader.Overran();  // an older header counts no colours
    reader.Skip(28);
    const std::uint32_t colours = reader.DoubleWord();
    return !reader.Overran() && colours <= bytes.size() / 3;
}

struct LoadResult {
    bool complete = false;
    bool outOfMemory = false;
};

LoadResult Feed(GdkPixbufLoader* loader, std::span<const std::uint8_t> bytes, const Watch& watch) {
    constexpr std::size_t kChunk = std::size_t{64} << 10;
    LoadResult result{true, false};
    const auto note = [&result](gboolean done, GError* error) {
        const int code = TakeError(error);
        if (done) return;
        result.complete = false;
        if (code == GDK_PIXBUF_ERROR_INSUFFICIENT_MEMORY) result.outOfMemory = true;
    };
    for (std::size_t at = 0; at < bytes.size() && result.complete && !watch.refused; at += kChunk) {
        GError* error = nullptr;
        const gboolean done =
            gdk_pixbuf_loader_write(loader, bytes.data() + at, std::min(kChunk, bytes.size() - at), &error);
        note(done, error);
    }
    GError* error = nullptr;
    const gboolean done = gdk_pixbuf_loader_close(loader, &error);
    note(done, error);
    return result;
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
    if (name == nullptr || !HasSoundStart(kind, bytes)) return nullptr;
    GError* error = nullptr;
    const LoaderPtr loader(gdk_pixbuf_loader_new_with_type(name, &error));
    TakeError(error);
    if (!loader) return nullptr;

    Watch watch{kind, bytes.size(), CountPasses(kind, bytes)};
    watch.Follow(loader.get());
    const LoadResult loaded = Feed(loader.get(), bytes, watch);
    if (loaded.outOfMemory && !watch.refused) status = Gdiplus::OutOfMemory;
    // A header alone is no picture, however content the decoder is with it.
    if (watch.refused || !loaded.complete || !watch.sawPixels) return nullptr;

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
