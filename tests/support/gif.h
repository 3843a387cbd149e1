// Animated pictures as a test describes them: the file, and what its frames show.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "support/bytes.h"

namespace kit {

struct GifImage {
    int left = 0, top = 0, width = 1, height = 1;
    Bytes indices;                       // rows from the top
    std::vector<std::uint32_t> palette;  // 0xRRGGBB; empty for the common one
    bool interlaced = false;
    int transparent = -1;
    int disposal = 0;
    int delay = -1;         // hundredths of a second
    bool damaged = false;   // half of the pixels are missing
    unsigned codeBits = 4;  // of a pixel; without compression where the format knows no such codes
    unsigned codeStyle = 0;
    Bytes before;   // blocks of other kinds, in front of the control block
    Bytes between;  // and behind it

    // Without any of the three no control block is written.
    bool HasControl() const { return delay >= 0 || transparent >= 0 || disposal != 0; }
};

struct GifFile {
    int width = 0, height = 0;
    std::vector<std::uint32_t> palette;
    int loops = -1;
    std::vector<GifImage> images;
    bool trailer = true;
};

// Compresses as the format wants it, except where `style` has the writer clear its table early, late, at
// first not at all, or leave out the end.
class GifCodes {
  public:
    enum Style : unsigned { NoFirstClear = 1, NoEnd = 2, EarlyClears = 4, LateClears = 8 };

    GifCodes(unsigned bits, unsigned style) : clear_(1U << bits), style_(style) { Forget(); }

    Bytes Write(const Bytes& pixels) {
        if ((style_ & NoFirstClear) == 0) Clear();
        std::optional<unsigned> run;
        unsigned sinceClear = 0;
        for (const std::uint8_t pixel : pixels) {
            if (!run) {
                run = pixel;
                continue;
            }
            const auto longer = table_.find({*run, pixel});
            if (longer != table_.end()) {
                run = longer->second;
                continue;
            }
            Emit(*run, {*run, pixel});
            run = pixel;
            const bool isFull = next_ == kCodes && (style_ & LateClears) == 0;
            if (isFull || ((style_ & EarlyClears) != 0 && ++sinceClear % 5 == 0)) Clear();
        }
        if (run) Emit(*run, {kCodes, 0});
        if ((style_ & NoEnd) == 0) Put(clear_ + 1);
        if (held_ > 0) out_.push_back(static_cast<std::uint8_t>(bits_));
        return std::move(out_);
    }

  private:
    static constexpr unsigned kCodes = 4096;

    void Forget() {
        table_.clear();
        next_ = clear_ + 2;
        for (width_ = 2; (1U << width_) <= clear_; ++width_) {
        }
    }
    void Clear() {
        Put(clear_);
        Forget();
    }
    void Put(unsigned code) {
        bits_ |= code << held_;
        for (held_ += width_; held_ >= 8; held_ -= 8, bits_ >>= 8)
            out_.push_back(static_cast<std::uint8_t>(bits_));
    }
    void Emit(unsigned code, std::pair<unsigned, std::uint8_t> longer) {
        Put(code);
        if (next_ == kCodes) return;
        table_[longer] = next_;
        if (next_++ == 1U << width_ && width_ < 12) ++width_;
    }

    const unsigned clear_;
    const unsigned style_;
    std::map<std::pair<unsigned, std::uint8_t>, unsigned> table_;
    unsigned next_ = 0;
    unsigned width_ = 0;
    unsigned bits_ = 0;
    unsigned held_ = 0;
    Bytes out_;
};

inline Bytes GifControl(const GifImage& image) {
    const unsigned flags = static_cast<unsigned>(image.disposal) << 2 | (image.transparent >= 0 ? 1U : 0U);
    return ByteWriter()
        .Text("\x21\xF9\x04")
        .Byte(flags)
        .Word(static_cast<unsigned>(std::max(image.delay, 0)))
        .Byte(static_cast<unsigned>(std::max(image.transparent, 0)))
        .Byte(0)
        .Take();
}

class GifWriter {
  public:
    Bytes Write(const GifFile& file) {
        out_.Text("GIF89a").Word(static_cast<unsigned>(file.width)).Word(static_cast<unsigned>(file.height));
        out_.Byte(TableFlags(file.palette)).Word(0);
        PutTable(file.palette);
        if (file.loops >= 0)
            out_.Text("\x21\xFF\x0BNETSCAPE2.0\x03\x01").Word(static_cast<unsigned>(file.loops)).Byte(0);
        for (const GifImage& image : file.images)
            PutImage(image);
        if (file.trailer) out_.Byte(0x3B);
        return out_.Take();
    }

  private:
    // Tables have a power of two of colours, at least two.
    static unsigned TableBits(const std::vector<std::uint32_t>& palette) {
        return std::max(1U, static_cast<unsigned>(std::bit_width(palette.size() - 1)));
    }
    static unsigned TableFlags(const std::vector<std::uint32_t>& palette) {
        return palette.empty() ? 0 : 0x80 | (TableBits(palette) - 1);
    }
    void PutTable(const std::vector<std::uint32_t>& palette) {
        if (palette.empty()) return;
        for (const std::uint32_t colour : palette)
            out_.Byte(colour >> 16).Byte((colour >> 8) & 0xFF).Byte(colour & 0xFF);
        out_.Fill(3 * ((std::size_t{1} << TableBits(palette)) - palette.size()), 0);
    }
    void PutImage(const GifImage& image) {
        out_.Append(image.before);
        if (image.HasControl()) out_.Append(GifControl(image));
        out_.Append(image.between).Byte(0x2C);
        for (const int value : {image.left, image.top, image.width, image.height})
            out_.Word(static_cast<unsigned>(value));
        out_.Byte(TableFlags(image.palette) | (image.interlaced ? 0x40U : 0U));
        PutTable(image.palette);
        Bytes pixels = InStoredOrder(image);
        if (image.damaged) pixels.resize(pixels.size() / 2);
        PutPixels(pixels, image);
    }
    static Bytes InStoredOrder(const GifImage& image) {
        if (!image.interlaced) return image.indices;
        Bytes pixels;
        for (const auto& [first, step] : {std::pair(0, 8), {4, 8}, {2, 4}, {1, 2}})
            for (int y = first; y < image.height; y += step) {
                const auto row = image.indices.begin() + static_cast<std::ptrdiff_t>(y) * image.width;
                pixels.insert(pixels.end(), row, row + image.width);
            }
        return pixels;
    }
    void PutPixels(const Bytes& pixels, const GifImage& image) {
        const bool compresses = image.codeBits >= 1 && image.codeBits <= 8;
        const Bytes codes = compresses ? GifCodes(image.codeBits, image.codeStyle).Write(pixels) : pixels;
        out_.Byte(image.codeBits);
        for (std::size_t at = 0; at < codes.size(); at += 255) {
            const std::size_t size = std::min<std::size_t>(255, codes.size() - at);
            const auto first = codes.begin() + static_cast<std::ptrdiff_t>(at);
            out_.Byte(static_cast<unsigned>(size))
                .Append(Bytes(first, first + static_cast<std::ptrdiff_t>(size)));
        }
        out_.Byte(0);
    }
    ByteWriter out_;
};

inline Bytes Gif(const GifFile& file) {
    return GifWriter().Write(file);
}

inline GifImage SolidGifImage(int left, int top, int width, int height, std::uint8_t index) {
    GifImage image;
    image.left = left;
    image.top = top;
    image.width = width;
    image.height = height;
    image.indices.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), index);
    return image;
}

// Premultiplied ARGB, top-down.
using Screen = std::vector<std::uint32_t>;

// What each frame shows, composed the plain way from the first on; nothing for a damaged frame.
inline std::vector<std::optional<Screen>> ScreensOf(const GifFile& file) {
    std::vector<std::optional<Screen>> screens;
    Screen screen(static_cast<std::size_t>(file.width) * static_cast<std::size_t>(file.height));
    for (const GifImage& image : file.images) {
        const Screen before = screen;
        const auto& palette = image.palette.empty() ? file.palette : image.palette;
        const auto eachPixel = [&](const auto& set) {
            for (int y = 0; y < image.height && image.top + y < file.height; ++y)
                for (int x = 0; x < image.width && image.left + x < file.width; ++x)
                    set(screen[static_cast<std::size_t>((image.top + y) * file.width + image.left + x)],
                        image.indices[static_cast<std::size_t>(y * image.width + x)]);
        };
        screens.emplace_back();
        if (!image.damaged) {
            eachPixel([&](std::uint32_t& pixel, std::uint8_t index) {
                if (index != image.transparent)
                    pixel = 0xFF000000U | (index < palette.size() ? palette[index] : 0);
            });
            screens.back() = screen;
        }
        if (image.disposal == 2) eachPixel([](std::uint32_t& pixel, std::uint8_t) { pixel = 0; });
        if (image.disposal == 3) screen = before;
    }
    return screens;
}

// As a reader reports them: none where no frame has a control block.
inline std::vector<std::uint32_t> DelaysOf(const GifFile& file) {
    std::vector<std::uint32_t> delays;
    if (std::none_of(file.images.begin(), file.images.end(), [](auto& image) { return image.HasControl(); }))
        return delays;
    for (const GifImage& image : file.images)
        delays.push_back(static_cast<std::uint32_t>(std::max(image.delay, 0)));
    return delays;
}

}  // namespace kit
