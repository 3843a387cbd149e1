// Pictures written byte by byte, so that a test can tell any lie in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/picture_kit.h"
#include "platform/graphics/decode/picture.h"
#include "support/gif.h"

namespace kit {

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
    ByteWriter writer;
    return writer.BigLong(static_cast<std::uint32_t>(data.size()))
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
    ByteWriter writer;
    writer.Long(40).Long(width).Long(height).Word(1).Word(depth).Long(compression).Fill(12, 0);
    return writer.Long(colours).Long(0).Take();
}

// `height` as the header counts it: negative for rows from the top.
inline Bytes Bmp(int width, int height, unsigned depth, const Bytes& table, const Bytes& rows,
                 unsigned compression = 0) {
    const auto at = static_cast<std::uint32_t>(54 + table.size());
    ByteWriter writer;
    writer.Text("BM").Long(at + static_cast<std::uint32_t>(rows.size())).Long(0).Long(at);
    writer.Append(BitmapHeader(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), depth,
                               compression, static_cast<unsigned>(table.size() / 4)));
    return writer.Append(table).Append(rows).Take();
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

inline Bytes ReadData(const std::string& name) {
    const Bytes bytes = ReadBytes(std::string(QKUI_TEST_DATA) + "/" + name);
    EXPECT_FALSE(bytes.empty()) << name;
    return bytes;
}

inline Bytes Png(const Pixels& pixels) {
    return platform::EncodePng(*SurfaceOf(pixels));
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

inline testing::AssertionResult Shows(const Opened& opened, int index, const Pixels& expected) {
    const auto frame = opened.picture ? opened.picture->Frame(index) : nullptr;
    return frame ? Same(PixelsOf(*frame), expected) : testing::AssertionFailure() << "no picture";
}
inline testing::AssertionResult IsRefused(const Bytes& bytes) {
    const Opened opened = Open(bytes);
    if (!opened.picture && opened.status == Gdiplus::UnknownImageFormat) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "status " << opened.status << (opened.picture ? ", opened" : "");
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
