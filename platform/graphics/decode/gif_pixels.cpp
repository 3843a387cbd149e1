#include "platform/graphics/decode/gif_pixels.h"

#include <gif_lib.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "platform/graphics/decode/signature.h"

namespace platform {
namespace {

// Hands the library the screen description and then, as if it followed at once, a single frame.
struct Source {
    std::span<const std::uint8_t> bytes;
    std::size_t screenEnd;
    std::size_t frameBegin;
    std::size_t at = 0;

    static int Read(GifFileType* file, GifByteType* out, int count) {
        auto* source = static_cast<Source*>(file->UserData);
        if (source->at == source->screenEnd) source->at = source->frameBegin;
        const std::size_t end = source->at < source->screenEnd ? source->screenEnd : source->bytes.size();
        const std::size_t size = std::min(static_cast<std::size_t>(std::max(count, 0)), end - source->at);
        if (size != 0) std::memcpy(out, source->bytes.data() + source->at, size);
        source->at += size;
        return static_cast<int>(size);
    }
};

struct CloseFile {
    void operator()(GifFileType* file) const {
        int error = 0;
        DGifCloseFile(file, &error);
    }
};

bool ReadColours(const ColorMapObject* map, int transparent, std::array<std::uint32_t, 256>& colours) {
    if (map == nullptr || map->Colors == nullptr) return false;
    colours.fill(0xFF000000U);
    const int count = std::clamp(map->ColorCount, 0, 256);
    for (int i = 0; i < count; ++i) {
        const GifColorType& colour = map->Colors[i];
        colours[static_cast<std::size_t>(i)] = 0xFF000000U | (std::uint32_t{colour.Red} << 16) |
                                               (std::uint32_t{colour.Green} << 8) | colour.Blue;
    }
    if (transparent >= 0) colours[static_cast<std::size_t>(transparent)] = 0;
    return true;
}

bool ReadRows(GifFileType* file, bool interlaced, std::vector<std::uint8_t>& indices) {
    const int width = file->Image.Width;
    const int height = file->Image.Height;
    const auto read = [&](int first, int step) {
        for (int y = first; y < height; y += step) {
            std::uint8_t* row =
                indices.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
            if (DGifGetLine(file, row, width) != GIF_OK) return false;
        }
        return true;
    };
    if (!interlaced) return read(0, 1);
    return read(0, 8) && read(4, 8) && read(2, 4) && read(1, 2);
}

}  // namespace

std::optional<GifPixels> UnpackGifFrame(std::span<const std::uint8_t> bytes, std::size_t screenEnd,
                                        const GifFrame& frame) {
    if (!IsBelievableSize(PictureKind::Gif, frame.width, frame.height, frame.end - frame.begin)) {
        return std::nullopt;
    }
    Source source{bytes.first(frame.end), screenEnd, frame.begin};
    int error = 0;
    const std::unique_ptr<GifFileType, CloseFile> file(DGifOpen(&source, &Source::Read, &error));
    if (!file) return std::nullopt;
    GifRecordType record = UNDEFINED_RECORD_TYPE;
    if (DGifGetRecordType(file.get(), &record) != GIF_OK || record != IMAGE_DESC_RECORD_TYPE ||
        DGifGetImageDesc(file.get()) != GIF_OK || file->Image.Width != frame.width ||
        file->Image.Height != frame.height) {
        return std::nullopt;
    }
    GifPixels pixels;
    const ColorMapObject* map = file->Image.ColorMap != nullptr ? file->Image.ColorMap : file->SColorMap;
    if (!ReadColours(map, frame.transparent, pixels.colours)) return std::nullopt;
    pixels.indices.resize(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
    if (!ReadRows(file.get(), file->Image.Interlace, pixels.indices)) return std::nullopt;
    return pixels;
}

}  // namespace platform
