// Pictures written byte by byte, so that a test can tell any lie in them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/picture_kit.h"
#include "platform/graphics/decode/picture.h"

namespace kit {

using Bytes = std::vector<std::uint8_t>;

class ByteWriter {
  public:
    ByteWriter& Byte(unsigned value) {
        bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    ByteWriter& Word(unsigned value) { return Byte(value & 0xFF).Byte((value >> 8) & 0xFF); }
    ByteWriter& Long(std::uint32_t value) { return Word(value & 0xFFFF).Word(value >> 16); }
    ByteWriter& BigLong(std::uint32_t value) {
        return Byte(value >> 24).Byte((value >> 16) & 0xFF).Byte((value >> 8) & 0xFF).Byte(value & 0xFF);
    }
    ByteWriter& Text(const std::string& text) {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        return *this;
    }
    ByteWriter& Append(const Bytes& more) {
        bytes_.insert(bytes_.end(), more.begin(), more.end());
        return *this;
    }
    ByteWriter& Fill(std::size_t count, unsigned value) {
        bytes_.insert(bytes_.end(), count, static_cast<std::uint8_t>(value));
        return *this;
    }
    std::size_t Size() const { return bytes_.size(); }
    Bytes Take() { return std::move(bytes_); }

  private:
    Bytes bytes_;
};

inline std::uint32_t Crc(const Bytes& bytes) {
    std::uint32_t crc = ~0U;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

inline Bytes PngChunk(const std::string& name, const Bytes& data) {
    const Bytes checked = ByteWriter().Text(name).Append(data).Take();
    return ByteWriter()
        .BigLong(static_cast<std::uint32_t>(data.size()))
        .Append(checked)
        .BigLong(Crc(checked))
        .Take();
}

// A sound PNG as far as its header goes; the pixels are what the caller says they are.
inline Bytes PngClaiming(std::uint32_t width, std::uint32_t height, const Bytes& packedPixels) {
    const Bytes header = ByteWriter().BigLong(width).BigLong(height).Byte(8).Byte(6).Fill(3, 0).Take();
    return ByteWriter()
        .Text("\x89PNG\r\n\x1a\n")
        .Append(PngChunk("IHDR", header))
        .Append(PngChunk("IDAT", packedPixels))
        .Append(PngChunk("IEND", {}))
        .Take();
}

inline Bytes BitmapHeader(std::uint32_t width, std::uint32_t height, unsigned depth, unsigned compression,
                          unsigned colours) {
    return ByteWriter()
        .Long(40)
        .Long(width)
        .Long(height)
        .Word(1)
        .Word(depth)
        .Long(compression)
        .Fill(12, 0)
        .Long(colours)
        .Long(0)
        .Take();
}

// `height` as the header counts it: negative for rows from the top.
inline Bytes Bmp(int width, int height, unsigned depth, const Bytes& table, const Bytes& rows,
                 unsigned compression = 0) {
    const auto at = static_cast<std::uint32_t>(54 + table.size());
    return ByteWriter()
        .Text("BM")
        .Long(at + static_cast<std::uint32_t>(rows.size()))
        .Long(0)
        .Long(at)
        .Append(BitmapHeader(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), depth,
                             compression, static_cast<unsigned>(table.size() / 4)))
        .Append(table)
        .Append(rows)
        .Take();
}

struct IconImage {
    unsigned listedWidth, listedHeight;  // in the directory
    Bytes data;
    std::optional<std::uint32_t> listedOffset = std::nullopt;
    std::optional<std::uint32_t> listedLength = std::nullopt;
};

inline Bytes Icon(const std::vector<IconImage>& images, unsigned type = 1) {
    ByteWriter writer;
    writer.Word(0).Word(type).Word(static_cast<unsigned>(images.size()));
    auto offset = static_cast<std::uint32_t>(6 + 16 * images.size());
    for (const IconImage& image : images) {
        const auto length = static_cast<std::uint32_t>(image.data.size());
        writer.Byte(image.listedWidth).Byte(image.listedHeight).Word(0).Word(1).Word(32);
        writer.Long(image.listedLength.value_or(length)).Long(image.listedOffset.value_or(offset));
        offset += length;
    }
    for (const IconImage& image : images)
        writer.Append(image.data);
    return writer.Take();
}

struct GifImage {
    int left = 0, top = 0, width = 1, height = 1;
    std::vector<std::uint8_t> indices;   // rows from the top
    std::vector<std::uint32_t> palette;  // 0xRRGGBB; empty for the common one
    bool interlaced = false;
    int transparent = -1;
    int disposal = 0;
    int delay = -1;  // without one, and neither transparency nor disposal, no control block is written
    bool damaged = false;
};

struct GifFile {
    int width = 0, height = 0;
    std::vector<std::uint32_t> palette;
    int loops = -1;
    std::vector<GifImage> images;
    bool trailer = true;
};

// 16 colours, whatever the palette holds.
constexpr unsigned kGifBits = 4;

// Codes of one size: the table is cleared before it could grow beyond them.
inline Bytes GifCodes(const std::vector<std::uint8_t>& pixels, bool damaged) {
    constexpr unsigned kClear = 1U << kGifBits;
    constexpr unsigned kCodeBits = kGifBits + 1;
    Bytes packed;
    unsigned held = 0;
    unsigned bits = 0;
    const auto put = [&](unsigned code) {
        held |= code << bits;
        for (bits += kCodeBits; bits >= 8; bits -= 8, held >>= 8)
            packed.push_back(held & 0xFF);
    };
    const std::size_t count = damaged ? pixels.size() / 2 : pixels.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i % (kClear - 2) == 0) put(kClear);
        put(pixels[i]);
    }
    put(kClear + 1);
    if (bits > 0) packed.push_back(held & 0xFF);
    ByteWriter blocks;
    blocks.Byte(kGifBits);
    for (std::size_t at = 0; at < packed.size(); at += 255) {
        const std::size_t size = std::min<std::size_t>(255, packed.size() - at);
        blocks.Byte(static_cast<unsigned>(size));
        for (std::size_t i = 0; i < size; ++i)
            blocks.Byte(packed[at + i]);
    }
    return blocks.Byte(0).Take();
}

inline void PutColours(ByteWriter& writer, const std::vector<std::uint32_t>& palette) {
    for (std::size_t i = 0; i < (1U << kGifBits); ++i) {
        const std::uint32_t colour = i < palette.size() ? palette[i] : 0;
        writer.Byte(colour >> 16).Byte((colour >> 8) & 0xFF).Byte(colour & 0xFF);
    }
}

inline Bytes Gif(const GifFile& file) {
    constexpr unsigned kTable = 0x80 | (kGifBits - 1);
    ByteWriter writer;
    writer.Text("GIF89a").Word(static_cast<unsigned>(file.width)).Word(static_cast<unsigned>(file.height));
    writer.Byte(file.palette.empty() ? 0 : kTable).Byte(0).Byte(0);
    if (!file.palette.empty()) PutColours(writer, file.palette);
    if (file.loops >= 0) {
        writer.Byte(0x21).Byte(0xFF).Byte(11).Text("NETSCAPE2.0").Byte(3).Byte(1);
        writer.Word(static_cast<unsigned>(file.loops)).Byte(0);
    }
    for (const GifImage& image : file.images) {
        if (image.delay >= 0 || image.transparent >= 0 || image.disposal != 0) {
            const unsigned flags =
                (static_cast<unsigned>(image.disposal) << 2) | (image.transparent >= 0 ? 1U : 0U);
            writer.Byte(0x21).Byte(0xF9).Byte(4).Byte(flags);
            writer.Word(static_cast<unsigned>(std::max(image.delay, 0)));
            writer.Byte(static_cast<unsigned>(std::max(image.transparent, 0))).Byte(0);
        }
        writer.Byte(0x2C);
        for (const int value : {image.left, image.top, image.width, image.height})
            writer.Word(static_cast<unsigned>(value));
        writer.Byte((image.palette.empty() ? 0 : kTable) | (image.interlaced ? 0x40U : 0U));
        if (!image.palette.empty()) PutColours(writer, image.palette);
        std::vector<std::uint8_t> pixels;
        const auto take = [&](int first, int step) {
            for (int y = first; y < image.height; y += step) {
                const auto row = image.indices.begin() + static_cast<std::ptrdiff_t>(y) * image.width;
                pixels.insert(pixels.end(), row, row + image.width);
            }
        };
        if (image.interlaced) {
            take(0, 8);
            take(4, 8);
            take(2, 4);
            take(1, 2);
        } else {
            take(0, 1);
        }
        writer.Append(GifCodes(pixels, image.damaged));
    }
    if (file.trailer) writer.Byte(0x3B);
    return writer.Take();
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

inline Bytes ReadData(const std::string& name) {
    std::ifstream file(std::string(QKUI_TEST_DATA) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

struct Opened {
    std::unique_ptr<platform::EncodedPicture> picture;
    Gdiplus::Status status = Gdiplus::Ok;
};

inline Opened Open(Bytes bytes) {
    Opened opened;
    opened.picture = platform::OpenPicture(std::move(bytes), opened.status);
    return opened;
}

// Either a picture with a first frame of its size, or a reason.
inline void ExpectSound(const Opened& opened) {
    if (!opened.picture) {
        EXPECT_NE(opened.status, Gdiplus::Ok);
        return;
    }
    EXPECT_EQ(opened.status, Gdiplus::Ok);
    ASSERT_GT(opened.picture->FrameCount(), 0);
    const auto frame = opened.picture->Frame(0);
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->Width(), opened.picture->Width());
    EXPECT_EQ(frame->Height(), opened.picture->Height());
}

}  // namespace kit
