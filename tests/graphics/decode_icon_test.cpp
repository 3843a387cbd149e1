// Icon and cursor files: which entry is taken, and how masks and lies are met.
#include "graphics/decode_kit.h"

namespace {

using kit::Bytes;
using kit::ByteWriter;
using kit::IconImage;
using kit::Pixels;

// A 32-bit bitmap of one colour, as icons hold it, with `mask` for every mask byte.
Bytes Dib(unsigned side, std::uint32_t pixel, unsigned mask = 0) {
    ByteWriter writer;
    writer.Append(kit::BitmapHeader(side, side * 2, 32, 0, 0));
    for (unsigned i = 0; i < side * side; ++i)
        writer.Long(pixel);
    return writer.Fill((side + 31) / 32 * 4 * side, mask).Take();
}

Bytes Png(int side, std::uint32_t pixel) {
    return kit::Png(Pixels(side, side, pixel));
}

TEST(DecodeIcon, TheLargestSoundEntryIsTaken) {
    const Bytes small = Dib(16, 0xFF0000FF);
    const Bytes large = Dib(32, 0xFF00FF00);
    const Bytes torn(large.begin(), large.begin() + 400);
    ByteWriter writer;
    writer.Append(kit::BitmapHeader(32, 64, 8, 0, 2)).Long(0).Long(0x123456);
    const Bytes palette = writer.Fill(32 * 32, 1).Fill(32 * 4, 0).Take();
    struct Case {
        const char* what;
        std::vector<IconImage> images;
        int side;
        std::uint32_t pixel;
    };
    for (const Case& c : {
             Case{"by size", {{16, 16, small}, {32, 32, large}}, 32, 0xFF00FF00},
             Case{"whatever the order", {{32, 32, large}, {16, 16, small}}, 32, 0xFF00FF00},
             Case{"the directory lies about sizes", {{0, 0, small}, {1, 1, large}}, 32, 0xFF00FF00},
             Case{"more colours among equals", {{32, 32, palette}, {32, 32, large}}, 32, 0xFF00FF00},
             Case{"few colours alone", {{32, 32, palette}, {16, 16, small}}, 32, 0xFF123456},
             Case{"compressed", {{16, 16, small}, {0, 0, Png(256, 0xFF112233)}}, 256, 0xFF112233},
             Case{"the largest is torn", {{32, 32, torn}, {16, 16, small}}, 16, 0xFF0000FF},
             Case{"an offset beyond the file",
                  {{32, 32, large, 0xFFFFFFF0U}, {16, 16, small}},
                  16,
                  0xFF0000FF},
             Case{"a length beyond the file", {{16, 16, small, std::nullopt, 0xFFFFFFFFU}}, 16, 0xFF0000FF},
             Case{"an offset into the directory", {{9, 9, {}, 0, 90}, {16, 16, small}}, 16, 0xFF0000FF},
         }) {
        SCOPED_TRACE(c.what);
        for (const unsigned type : {1U, 2U})  // icons and cursors
            EXPECT_TRUE(kit::Shows(kit::Open(kit::Icon(c.images, type)), 0, Pixels(c.side, c.side, c.pixel)));
    }
}

TEST(DecodeIcon, AlphaComesFromThePixelsOrElseFromTheMask) {
    const auto first = [](const Bytes& image) {
        const kit::Opened opened = kit::Open(kit::Icon({{16, 16, image}}));
        return opened.picture ? opened.picture->Frame(0)->Row(15)[0] : 0xBADBADU;
    };
    EXPECT_EQ(first(Dib(16, 0x80FF0000)), 0x80800000U) << "premultiplied";
    EXPECT_EQ(first(Dib(16, 0x80FF0000, 0xFF)), 0x80800000U) << "the mask does not count beside alpha";
    EXPECT_EQ(first(Dib(16, 0x00FF0000, 0x00)), 0xFFFF0000U) << "no alpha at all: the mask leaves it";
    EXPECT_EQ(first(Dib(16, 0x00FF0000, 0xFF)), 0x00000000U) << "and cuts it";
    const Bytes whole = Dib(16, 0x00FF0000);
    EXPECT_EQ(first(Bytes(whole.begin(), whole.end() - 64)), 0xFFFF0000U) << "without a mask nothing is cut";
}

TEST(DecodeIcon, LowDepthsReadTheirBitsFromTheTop) {
    // One row of eight: alternating colours, of which the mask cuts the last four.
    const auto icon = [](unsigned depth, unsigned colours, const Bytes& row) {
        ByteWriter writer;
        writer.Append(kit::BitmapHeader(8, 2, depth, 0, colours));
        if (depth <= 8) writer.Long(0x0000FF).Long(0xFF0000);
        return kit::Icon({{8, 1, writer.Append(row).Byte(0x0F).Fill(3, 0).Take()}});
    };
    ByteWriter words;
    ByteWriter triples;
    for (int i = 0; i < 8; ++i) {
        words.Word(i % 2 == 0 ? 0x001F : 0x7C00);
        triples.Byte(i % 2 == 0 ? 255 : 0).Byte(0).Byte(i % 2 == 0 ? 0 : 255);
    }
    Pixels expected(8, 1);
    for (int x = 0; x < 4; ++x)
        expected.At(x, 0) = x % 2 == 0 ? 0xFF0000FFU : 0xFFFF0000U;
    for (const auto& [depth, row] : {std::pair(1U, Bytes{0x55, 0, 0, 0}),
                                     {4U, Bytes{0x01, 0x01, 0x01, 0x01}},
                                     {8U, Bytes{0, 1, 0, 1, 0, 1, 0, 1}},
                                     {16U, words.Take()},
                                     {24U, triples.Take()}})
        EXPECT_TRUE(kit::Shows(kit::Open(icon(depth, depth <= 8 ? 2 : 0, row)), 0, expected)) << depth;
}

TEST(DecodeIcon, FilesWithoutASoundEntryAreRefused) {
    std::vector<IconImage> many(3000, IconImage{0, 0, {}, 6 + 16 * 3000, 200});
    many.front().data = kit::PngClaiming(256, 256, Bytes(100, 9));
    for (const Bytes& bytes : {kit::Icon({}), kit::Icon({{16, 16, {}}}), kit::Icon({{16, 16, Bytes(39, 40)}}),
                               kit::Icon({{0, 0, Dib(0, 0)}}), kit::Icon(many),
                               kit::Icon({{16, 16, kit::BitmapHeader(16, 32, 7, 0, 0)}}),
                               kit::Icon({{16, 16, kit::BitmapHeader(16, 32, 32, 1, 0)}})})
        EXPECT_TRUE(kit::IsRefused(bytes)) << bytes.size();
}

}  // namespace
