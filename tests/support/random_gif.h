// Animated pictures of every make, sound and damaged, as a row of random bytes describes them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "support/gif.h"

namespace kit {

class RandomInput {
  public:
    RandomInput(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    bool IsEmpty() const { return left_ == 0; }
    unsigned Byte() {
        if (left_ == 0) return 0;
        --left_;
        return *data_++;
    }
    unsigned Word() {
        const unsigned low = Byte();
        return low | Byte() << 8;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};

class RandomGif {
  public:
    explicit RandomGif(RandomInput& input) : input_(input) {
        const unsigned kinds = input_.Byte();
        file_.width = static_cast<int>(input_.Byte() % 72);
        file_.height = static_cast<int>(input_.Byte() % 72);
        file_.palette = Palette(kinds >> 1 & 15);
        file_.trailer = (kinds & 0x20) == 0;
        for (unsigned count = 1 + input_.Byte() % 12; count > 0; --count)
            file_.images.push_back(Frame());
        bytes_ = Gif(file_);
        if ((kinds & 1) != 0) bytes_[4] = '7';
        bytes_[11] = static_cast<std::uint8_t>(kinds >> 4);  // a background, which nobody shows
        if ((kinds & 0x40) != 0) bytes_ = ByteWriter().Append(bytes_).Text("behind the end").Take();
        if ((kinds & 0x80) != 0) Damage();
        constexpr int kMostSide = 256;  // of a screen that is worth following
        if (file_.width == 0 || file_.height == 0) {
            file_.width = file_.images[0].left + file_.images[0].width;
            file_.height = file_.images[0].top + file_.images[0].height;
        }
        if (std::max(file_.width, file_.height) > kMostSide) isSound_ = false;
    }

    const Bytes& Written() const { return bytes_; }
    // Whether a reader has to show what the description says. Its screen has the size that it takes.
    bool IsSound() const { return isSound_; }
    const GifFile& Description() const { return file_; }

  private:
    static std::vector<std::uint32_t> Palette(unsigned kind) {
        std::vector<std::uint32_t> palette(kind < 8 ? 0 : std::size_t{2} << (kind & 7));
        for (std::size_t i = 0; i < palette.size(); ++i)
            palette[i] = static_cast<std::uint32_t>(i + 1) * 0x9E3779U & 0xFFFFFFU;
        return palette;
    }
    static constexpr unsigned kPlainText = 2;  // takes the control before it
    static Bytes Extension(unsigned kind) {
        constexpr std::string_view kKinds[] = {
            {"", 0},
            {"\x21\xFE\x03yes\x02no\0", 10},
            {"\x21\x01\x0C\0\0\0\0\1\0\1\0\1\1\0\1\x01x\0", 18},
            {"\x21\xFF\x0BNETSCAPE2.0\x03\x01\x07\0\0", 19},
            {"\x21\x77\x01\x2C\0", 5},
            {"\0\0", 2},
            {"\x21\xF9\0", 3},
            {"\x21\xFF\0", 3},
        };
        return BytesOf(kKinds[kind]);
    }
    void TakeControl(GifImage& image) {
        const unsigned kind = input_.Byte();
        image.disposal = static_cast<int>(kind >> 1 & 7);
        image.delay = static_cast<int>((kind & 0x40) != 0 ? input_.Word() : kind >> 4 & 3);
        const unsigned transparent = input_.Byte();
        if ((kind & 1) != 0) image.transparent = static_cast<int>(transparent);
    }
    GifImage Frame() {
        const unsigned blocks = input_.Byte();
        GifImage image;
        if ((blocks & 0x80) != 0) TakeControl(image);
        image.before = Extension(blocks & 7);
        image.between = Extension(blocks >> 3 & 7);
        if ((blocks >> 3 & 7) == kPlainText && image.HasControl()) {
            image.before = ByteWriter().Append(image.before).Append(GifControl(image)).Take();
            image.disposal = 0;
            image.delay = image.transparent = -1;
        }
        const unsigned kind = input_.Byte();
        TakePlace(kind, image);
        image.interlaced = (kind & 4) != 0;
        if ((kind & 8) != 0) image.palette = Palette(8 | kind >> 4);
        const unsigned bits = input_.Byte();
        image.codeBits = bits % 16;
        image.codeStyle = bits >> 4;
        TakeIndices(image);
        if (image.indices.empty() || (image.palette.empty() && file_.palette.empty()) || image.codeBits < 1 ||
            image.codeBits > 8)
            isSound_ = false;
        return image;
    }
    void TakePlace(unsigned kind, GifImage& image) {
        image.width = file_.width;
        image.height = file_.height;
        if ((kind & 1) != 0) return;
        const int far = (kind & 2) != 0 && input_.Byte() == 0xFF ? 60'000 : 0;
        image.left = far + static_cast<int>(input_.Byte() % 80);
        for (int* const value : {&image.top, &image.width, &image.height})
            *value = static_cast<int>(input_.Byte() % 80);
    }
    void TakeIndices(GifImage& image) {
        const unsigned pattern = input_.Byte();
        std::uint32_t random = pattern * 2654435761U;
        image.indices.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
        for (std::size_t i = 0; i < image.indices.size(); ++i) {
            random = random * 1664525U + 1013904223U;
            const std::size_t value = (pattern & 3) == 0   ? pattern >> 2
                                      : (pattern & 3) == 1 ? i / ((pattern >> 2) + 1)
                                      : (pattern & 3) == 2 ? (i & pattern) != 0
                                                           : random >> 24;
            image.indices[i] = static_cast<std::uint8_t>(value & ((1U << std::min(image.codeBits, 8U)) - 1));
        }
    }
    void Damage() {
        const unsigned kind = input_.Byte();
        for (unsigned flips = kind & 7; flips > 0; --flips) {
            const std::size_t at = input_.Word() % bytes_.size();
            bytes_[at] ^= static_cast<std::uint8_t>(input_.Byte());
        }
        if ((kind & 8) != 0) bytes_.resize(input_.Word() % (bytes_.size() + 1));
        if (kind != 0) isSound_ = false;
    }

    RandomInput& input_;
    GifFile file_;
    Bytes bytes_;
    bool isSound_ = true;
};

}  // namespace kit
