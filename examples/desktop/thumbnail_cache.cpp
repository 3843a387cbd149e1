#include "examples/desktop/thumbnail_cache.h"

#include <glib/gstdio.h>

#include <algorithm>

namespace desktop {
namespace {

constexpr int kCachedSide = 128;  // of the size that is called "normal"

struct Names {
    std::string uri;
    std::string folder;
    std::string file;
};

Names NamesFor(const std::string& path) {
    Names names;
    const Owned<GFile> file(g_file_new_for_path(path.c_str()));
    names.uri = Owned<char>(g_file_get_uri(file.get())).get();
    const Owned<char> sum(g_compute_checksum_for_string(G_CHECKSUM_MD5, names.uri.c_str(), -1));
    names.folder = std::string(g_get_user_cache_dir()) + "/thumbnails/normal";
    names.file = names.folder + "/" + sum.get() + ".png";
    return names;
}

std::string Seconds(std::int64_t microseconds) {
    return std::to_string(microseconds / 1'000'000);
}

bool Says(GdkPixbuf* pixels, const char* key, const std::string& value) {
    const char* option = gdk_pixbuf_get_option(pixels, key);
    return option && value == option;
}

Pixels Shrunk(Pixels pixels, int side) {
    const int width = gdk_pixbuf_get_width(pixels.get());
    const int height = gdk_pixbuf_get_height(pixels.get());
    const int longer = std::max(width, height);
    if (longer <= side) return pixels;
    return Pixels(gdk_pixbuf_scale_simple(pixels.get(), std::max(1, width * side / longer),
                                          std::max(1, height * side / longer), GDK_INTERP_BILINEAR));
}

Pixels Cached(const Names& names, std::int64_t modified) {
    Pixels pixels(gdk_pixbuf_new_from_file(names.file.c_str(), nullptr));
    const bool fresh = pixels && Says(pixels.get(), "tEXt::Thumb::URI", names.uri) &&
                       Says(pixels.get(), "tEXt::Thumb::MTime", Seconds(modified));
    return fresh ? std::move(pixels) : Pixels();
}

// Readers see all of it or nothing. A cache that cannot be written is none.
void Store(const Names& names, std::int64_t modified, GdkPixbuf* pixels) {
    if (g_mkdir_with_parents(names.folder.c_str(), 0700) != 0) return;
    std::string partial = names.file + ".XXXXXX";
    const int file = g_mkstemp_full(partial.data(), 0, 0600);
    if (file < 0) return;
    g_close(file, nullptr);
    const bool written = gdk_pixbuf_save(pixels, partial.c_str(), "png", nullptr, "tEXt::Thumb::URI",
                                         names.uri.c_str(), "tEXt::Thumb::MTime", Seconds(modified).c_str(),
                                         "tEXt::Software", "qk-desktop", nullptr) != FALSE;
    if (!written || g_rename(partial.c_str(), names.file.c_str()) != 0) g_unlink(partial.c_str());
}

}  // namespace

Pixels LoadThumbnail(const std::string& path, std::int64_t modified, int side) {
    const Names names = NamesFor(path);
    Pixels pixels = Cached(names, modified);
    if (!pixels) {
        pixels = LoadPixels(path, kCachedSide);
        if (!pixels) return {};
        Store(names, modified, pixels.get());
    }
    return Shrunk(std::move(pixels), side);
}

}  // namespace desktop
