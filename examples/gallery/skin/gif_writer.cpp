#include "examples/gallery/skin/gif_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gif_lib.h>

namespace skin {
namespace {

constexpr int kClear = 0;                // index of the transparent colour
constexpr std::size_t kMost = 255;       // other colours
constexpr std::uint32_t kFaintest = 40;  // alpha below this is nothing

using Pixel = std::array<int, 3>;

// A pixel as it stands before the matte; nothing where the picture is clear.
struct Flat {
    bool shown = false;
    Pixel colour{};
};

Flat Flatten(std::uint32_t premultiplied, Colour matte) {
    const std::uint32_t alpha = premultiplied >> 24;
    if (alpha < kFaintest) return {};
    const double rest = 1 - alpha / 255.0;
    const auto channel = [&](int shift, double behind) {
        const double value = (premultiplied >> shift & 255) + behind * rest * 255;
        return std::clamp(static_cast<int>(std::lround(value)), 0, 255);
    };
    return {true, {channel(16, matte.red), channel(8, matte.green), channel(0, matte.blue)}};
}

// Splits the box of colours with the widest channel at its median until there are enough.
std::vector<Pixel> ChooseColours(std::vector<Pixel> all) {
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    struct Share {
        std::span<Pixel> colours;
        std::size_t channel = 0;
        int width = 0;
    };
    const auto measured = [](std::span<Pixel> colours) {
        Share share{colours};
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const auto [low, high] = std::minmax_element(
                colours.begin(), colours.end(),
                [channel](const Pixel& a, const Pixel& b) { return a[channel] < b[channel]; });
            const int width = (*high)[channel] - (*low)[channel];
            if (width > share.width) share = {colours, channel, width};
        }
        return share;
    };
    std::vector<Share> shares{measured(all)};
    while (shares.size() < kMost) {
        const auto widest = std::max_element(
            shares.begin(), shares.end(), [](const Share& a, const Share& b) { return a.width < b.width; });
        if (widest->width == 0) break;
        const Share split = *widest;
        std::sort(split.colours.begin(), split.colours.end(),
                  [&split](const Pixel& a, const Pixel& b) { return a[split.channel] < b[split.channel]; });
        const std::size_t half = split.colours.size() / 2;
        *widest = measured(split.colours.first(half));
        shares.push_back(measured(split.colours.subspan(half)));
    }
    std::vector<Pixel> chosen;
    for (const Share& share : shares) {
        Pixel mean{};
        for (std::size_t channel = 0; channel < 3; ++channel) {
            int sum = 0;
            for (const Pixel& colour : share.colours)
                sum += colour[channel];
            mean[channel] = sum / static_cast<int>(share.colours.size());
        }
        chosen.push_back(mean);
    }
    return chosen;
}

int Nearest(const std::vector<Pixel>& colours, const Pixel& wanted) {
    const auto distance = [&wanted](const Pixel& colour) {
        int sum = 0;
        for (std::size_t channel = 0; channel < 3; ++channel)
            sum += (colour[channel] - wanted[channel]) * (colour[channel] - wanted[channel]);
        return sum;
    };
    const auto nearest =
        std::min_element(colours.begin(), colours.end(),
                         [&](const Pixel& a, const Pixel& b) { return distance(a) < distance(b); });
    return static_cast<int>(nearest - colours.begin());
}

struct Part {
    int left = 0, top = 0, right = 0, bottom = 0;
};

Part DrawnPart(const Canvas& picture) {
    Part part{picture.Width(), picture.Height(), 0, 0};
    for (int y = 0; y < picture.Height(); ++y) {
        const auto row = picture.Row(y);
        for (int x = 0; x < picture.Width(); ++x) {
            if (row[static_cast<std::size_t>(x)] >> 24 < kFaintest) continue;
            part = {std::min(part.left, x), std::min(part.top, y), std::max(part.right, x + 1),
                    std::max(part.bottom, y + 1)};
        }
    }
    // Something must be stored, also of a frame that draws nothing.
    return part.right > 0 ? part : Part{0, 0, 1, 1};
}

class GifFile {
  public:
    explicit GifFile(const std::filesystem::path& file)
        : name_(file.string()), stream_(file, std::ios::binary | std::ios::trunc) {
        const auto write = [](GifFileType* to, const GifByteType* bytes, int count) {
            static_cast<std::ofstream*>(to->UserData)->write(reinterpret_cast<const char*>(bytes), count);
            return count;
        };
        int error = 0;
        file_ = EGifOpen(&stream_, write, &error);
        Check(file_ != nullptr);
        EGifSetGifVersion(file_, true);
    }
    ~GifFile() {
        int error = 0;
        if (file_) EGifCloseFile(file_, &error);
    }
    GifFile(const GifFile&) = delete;
    GifFile& operator=(const GifFile&) = delete;

    void Begin(const Canvas& size, const std::vector<Pixel>& colours) {
        const std::unique_ptr<ColorMapObject, decltype(&GifFreeMapObject)> map(GifMakeMapObject(256, nullptr),
                                                                               GifFreeMapObject);
        Check(map != nullptr);
        for (std::size_t i = 0; i < colours.size(); ++i) {
            map->Colors[i + 1] = {static_cast<GifByteType>(colours[i][0]),
                                  static_cast<GifByteType>(colours[i][1]),
                                  static_cast<GifByteType>(colours[i][2])};
        }
        Check(EGifPutScreenDesc(file_, size.Width(), size.Height(), 8, kClear, map.get()) == GIF_OK);
        // For ever.
        constexpr GifByteType kLoop[] = {1, 0, 0};
        Check(EGifPutExtensionLeader(file_, APPLICATION_EXT_FUNC_CODE) == GIF_OK);
        Check(EGifPutExtensionBlock(file_, 11, "NETSCAPE2.0") == GIF_OK);
        Check(EGifPutExtensionBlock(file_, sizeof kLoop, kLoop) == GIF_OK);
        Check(EGifPutExtensionTrailer(file_) == GIF_OK);
    }

    void Put(const MovingFrame& frame, const std::vector<Pixel>& colours, Colour matte) {
        GraphicsControlBlock control{};
        control.DisposalMode = frame.after == After::Stays ? DISPOSE_DO_NOT : DISPOSE_PREVIOUS;
        control.DelayTime = frame.delay;
        control.TransparentColor = kClear;
        std::array<GifByteType, 4> block{};
        EGifGCBToExtension(&control, block.data());
        Check(EGifPutExtension(file_, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(block.size()), block.data()) ==
              GIF_OK);
        const Part part = DrawnPart(frame.drawn);
        Check(EGifPutImageDesc(file_, part.left, part.top, part.right - part.left, part.bottom - part.top,
                               false, nullptr) == GIF_OK);
        std::vector<GifByteType> line;
        for (int y = part.top; y < part.bottom; ++y) {
            line.clear();
            for (int x = part.left; x < part.right; ++x) {
                const Flat flat = Flatten(frame.drawn.Row(y)[static_cast<std::size_t>(x)], matte);
                line.push_back(
                    static_cast<GifByteType>(flat.shown ? Nearest(colours, flat.colour) + 1 : kClear));
            }
            Check(EGifPutLine(file_, line.data(), static_cast<int>(line.size())) == GIF_OK);
        }
    }

    void End() {
        Check(EGifCloseFile(std::exchange(file_, nullptr), nullptr) == GIF_OK);
        stream_.close();
        Check(stream_.good());
    }

  private:
    void Check(bool good) const {
        if (!good) throw std::runtime_error("cannot write " + name_);
    }

    std::string name_;
    std::ofstream stream_;
    GifFileType* file_ = nullptr;
};

}  // namespace

void WriteGif(std::span<const MovingFrame> frames, Colour matte, const std::filesystem::path& file) {
    std::vector<Pixel> all;
    for (const MovingFrame& frame : frames) {
        for (int y = 0; y < frame.drawn.Height(); ++y) {
            for (const std::uint32_t pixel : frame.drawn.Row(y)) {
                const Flat flat = Flatten(pixel, matte);
                if (flat.shown) all.push_back(flat.colour);
            }
        }
    }
    if (all.empty()) throw std::runtime_error("nothing to write to " + file.string());
    const std::vector<Pixel> colours = ChooseColours(std::move(all));
    GifFile gif(file);
    gif.Begin(frames.front().drawn, colours);
    for (const MovingFrame& frame : frames)
        gif.Put(frame, colours, matte);
    gif.End();
}

}  // namespace skin
