// Pictures of one frame: formats, exact pixels, lies about sizes, and damage.
#include <malloc.h>
#include <sys/resource.h>

#include <tuple>

#include "graphics/decode_kit.h"
#include "platform/graphics/counters.h"
#include "platform/graphics/pixel_memory.h"
#include "platform/graphics/pixel_rows.h"

namespace {

using kit::Bytes;
using kit::ByteWriter;
using kit::Pixels;

long PeakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST(DecodeStill, PngKeepsEveryPremultipliedPixel) {
    // Every alpha with every value that it allows: rows are alphas, columns values.
    Pixels expected(256, 256);
    for (std::uint32_t a = 0; a < 256; ++a)
        for (std::uint32_t v = 0; v < 256; ++v) {
            const std::uint32_t value = std::min(v, a);
            expected.At(static_cast<int>(v), static_cast<int>(a)) =
                (a << 24) | (value << 16) | ((a - value) << 8) | (value / 2);
        }
    const Bytes png = kit::Png(expected);
    const kit::Opened opened = kit::Open(png);
    ASSERT_NE(opened.picture, nullptr);
    EXPECT_EQ(opened.picture->FrameCount(), 1);
    EXPECT_TRUE(opened.picture->Delays().empty());
    EXPECT_EQ(opened.picture->LoopCount(), -1);
    const std::uint64_t decoded = Gdiplus::Counters().decodedFrames;
    EXPECT_TRUE(kit::Shows(opened, 0, expected));
    EXPECT_EQ(Gdiplus::Counters().decodedFrames, decoded) << "opening has decoded it";
    EXPECT_TRUE(kit::Shows(opened, 0, expected));
    EXPECT_EQ(Gdiplus::Counters().decodedFrames, decoded + 1);
    EXPECT_EQ(opened.picture->Frame(1), nullptr);
}

TEST(DecodeStill, EveryFormatShowsItsColour) {
    constexpr std::uint32_t kRed = 0xFFC8283C;
    for (const auto& [name, colour, tolerance] :
         {std::tuple("red_24x16.jpg", kRed, 2),
          {"red_24x16_progressive.jpg", kRed, 2},
          {"red_24x16.tif", kRed, 0},
          {"red_24x16_interlaced.png", kRed, 0},
          {"red_24x16_palette.png", kRed, 0},
          {"red_24x16_deep.png", kRed, 0},
          {"red_24x16_rle.bmp", kRed, 0},
          {"clear_red_24x16_v5.bmp", platform::Premultiply(0x7FC8283C), 0}}) {
        SCOPED_TRACE(name);
        const kit::Opened opened = kit::Open(kit::ReadData(name));
        ASSERT_NE(opened.picture, nullptr);
        const Pixels pixels = kit::PixelsOf(*opened.picture->Frame(0));
        ASSERT_TRUE(pixels.width == 24 && pixels.height == 16);
        for (const std::uint32_t pixel : pixels.words)
            for (int shift = 0; shift < 32; shift += 8)
                ASSERT_NEAR((pixel >> shift) & 0xFF, (colour >> shift) & 0xFF, tolerance);
    }
}

TEST(DecodeStill, BitmapsOfEveryDepthStandTheRightWayUp) {
    // Two pixels wide, two high: red and green above blue and white.
    Pixels expected(2, 2);
    expected.words = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};
    const Bytes table = ByteWriter().Long(0xFF0000).Long(0x00FF00).Long(0x0000FF).Long(0xFFFFFF).Take();
    const Bytes up24 = {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0};
    const Bytes down24 = {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0};
    const Bytes rows32 = ByteWriter().Long(0x0000FF).Long(0xFFFFFF).Long(0xFF0000).Long(0x00FF00).Take();
    const Bytes rows8 = {2, 3, 0, 0, 0, 1, 0, 0};
    const Bytes rows4 = {0x23, 0, 0, 0, 0x01, 0, 0, 0};
    // Bytes between what stands before the rows and the rows themselves.
    const auto apart = [](Bytes file, std::size_t rowBytes) {
        file.insert(file.end() - static_cast<std::ptrdiff_t>(rowBytes), 6, 0xEE);
        file[10] = static_cast<std::uint8_t>(file[10] + 6);
        return file;
    };
    const Bytes oldHeader =
        ByteWriter().Text("BM").Long(82).Long(0).Long(74).Long(12).Word(2).Word(2).Word(1).Word(4).Take();
    const Bytes oldTable = {0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255};
    const Bytes old = ByteWriter().Append(oldHeader).Append(oldTable).Fill(36, 0).Append(rows4).Take();
    for (const auto& [what, file] : {std::pair("24 bits", kit::Bmp(2, 2, 24, {}, up24)),
                                     {"32 bits", kit::Bmp(2, 2, 32, {}, rows32)},
                                     {"24 bits, apart", apart(kit::Bmp(2, 2, 24, {}, up24), 16)},
                                     {"8 bits", kit::Bmp(2, 2, 8, table, rows8)},
                                     {"4 bits", kit::Bmp(2, 2, 4, table, rows4)},
                                     {"8 bits, apart", apart(kit::Bmp(2, 2, 8, table, rows8), 8)},
                                     {"4 bits, apart", apart(kit::Bmp(2, 2, 4, table, rows4), 8)},
                                     {"old", old},
                                     {"old, apart", apart(old, 8)},
                                     {"from the top", kit::Bmp(2, -2, 24, {}, down24)}})
        EXPECT_TRUE(kit::Shows(kit::Open(file), 0, expected)) << what;
}

TEST(DecodeStill, WhatIsNoPictureIsToldSo) {
    const auto text = [](const std::string& content) { return ByteWriter().Text(content).Take(); };
    Bytes unknownGif = kit::ReadData("three_gradients.gif");
    unknownGif[4] = '8';
    Bytes arithmetic = kit::ReadData("red_24x16_progressive.jpg");
    constexpr std::uint8_t kFrame[] = {0xFF, 0xC2};
    *(std::search(arithmetic.begin(), arithmetic.end(), std::begin(kFrame), std::end(kFrame)) + 1) = 0xCA;
    for (const Bytes& bytes :
         {Bytes{}, Bytes{0x89}, text("BM"), text("GIF89a"), text("\xFF\xD8\xFF"), text("\x89PNG\r\n\x1a\n"),
          unknownGif, arithmetic, text("plain text"), Bytes(5000, 0), Bytes(5000, 0xFF),
          text("P6 1 1 255\nabc"), text("II*"),
          text("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' "
               "height='9'/></svg>"),
          text("/* XPM */\nstatic char *a[] = {\"1 1 1 1\", \"a c red\", \"a\"};")})
        EXPECT_TRUE(kit::IsRefused(bytes));
}

// Start of frame of a JPEG without tables: all that a size needs.
Bytes JpegClaiming(unsigned width, unsigned height) {
    const auto high = [](unsigned value) { return static_cast<std::uint8_t>(value >> 8); };
    const auto low = [](unsigned value) { return static_cast<std::uint8_t>(value); };
    ByteWriter writer;
    writer.Append({0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F', 'I', 'F', 0, 1, 1, 0, 0, 1, 0, 1, 0, 0});
    writer.Append({0xFF, 0xC0, 0, 11, 8, high(height), low(height), high(width), low(width), 1, 1, 0x11, 0});
    return writer.Append({0xFF, 0xDA, 0, 8, 1, 1, 0, 0, 0x3F, 0}).Fill(64, 0).Take();
}

TEST(DecodeStill, LyingSizesCostNothing) {
    // Once over everything that starts lazily, so that it is not counted as a picture's cost.
    kit::Open(kit::ReadData("red_24x16.jpg"));
    kit::Open(kit::Bmp(1, 1, 32, {}, Bytes(4)));
    kit::Open(kit::Png(Pixels(2, 2)));
    testing::internal::CaptureStderr();
    const std::size_t allocations = platform::PixelMemory::SystemAllocations();
    const long peak = PeakKilobytes();
    for (const auto& [width, height] : {std::pair{60000U, 60000U},
                                        {32768U, 1U},
                                        {1U, 32768U},
                                        {16384U, 4097U},
                                        {16000U, 4000U},
                                        {8000U, 8000U},
                                        {0U, 0U},
                                        {0U, 5U},
                                        {65535U, 65535U}}) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
        const int signedWidth = static_cast<int>(width);
        const int signedHeight = static_cast<int>(height);
        for (const Bytes& bytes : {kit::PngClaiming(width, height, Bytes(40, 7)), JpegClaiming(width, height),
                                   kit::Bmp(signedWidth, signedHeight, 24, {}, Bytes(40)),
                                   kit::Bmp(signedWidth, -signedHeight, 32, {}, Bytes(40)),
                                   kit::Bmp(signedWidth, signedHeight, 8, Bytes(1024), {9, 1, 0, 1}, 1),
                                   kit::Icon({{0, 0, kit::PngClaiming(width, height, Bytes(40, 7))}}),
                                   kit::Icon({{0, 0, kit::BitmapHeader(width, height * 2, 32, 0, 0)}})})
            EXPECT_TRUE(kit::IsRefused(bytes)) << "kind " << static_cast<int>(bytes[1]);
    }
    for (const std::uint32_t width : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(kit::IsRefused(kit::PngClaiming(width, 1, Bytes(40, 7))));
        EXPECT_TRUE(kit::IsRefused(kit::Bmp(static_cast<int>(width), 1, 32, {}, Bytes(40))));
        const kit::Opened high = kit::Open(kit::Bmp(1, static_cast<int>(width), 32, {}, Bytes(40)));
        ASSERT_TRUE(high.picture == nullptr || high.picture->Height() == 1);
    }
    // Rows far behind the end, a table of more colours than there are bytes, a header without end.
    for (const std::size_t field : {10U, 14U, 46U}) {
        for (const int top : {0x01, 0x7F, 0xFF}) {
            Bytes bytes = kit::Bmp(2, 2, 8, Bytes(1024), Bytes(8));
            bytes[field + 3] = static_cast<std::uint8_t>(top);
            EXPECT_EQ(kit::Open(bytes).picture, nullptr) << field << " " << top;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_LE(platform::PixelMemory::SystemAllocations(), allocations + 1);
    EXPECT_LT(PeakKilobytes() - peak, 16 * 1024);
}

// Kilobytes that stand for gigapixels take no time, however the rows come: those of an interlaced picture
// cost much and need little data.
TEST(DecodeStill, TooLargePicturesAreNotReadOn) {
    unsigned bits = 0;
    unsigned count = 0;
    ByteWriter packed;
    const auto put = [&](unsigned code, unsigned length) {  // the leading bit of a code goes first
        while (length > 0) {
            bits |= ((code >> --length) & 1U) << count;
            if (++count < 8) continue;
            packed.Byte(bits);
            bits = count = 0;
        }
    };
    packed.Word(0x0178);
    put(0b110, 3);       // the last block, of the fixed codes
    put(0b00110000, 8);  // a zero
    for (int i = 0; i < 38000; ++i)
        put(0b1100010100000, 13);  // 258 times more
    const Bytes header = ByteWriter().BigLong(65535).BigLong(65535).Byte(1).Fill(3, 0).Byte(1).Take();
    ByteWriter writer;
    writer.Text("\x89PNG\r\n\x1a\n").Append(kit::PngChunk("IHDR", header));
    const Bytes png = writer.Append(kit::PngChunk("IDAT", packed.Take())).Take();
    for (int round = 0; round < 200; ++round)  // minutes, if each were read
        EXPECT_EQ(kit::Open(png).picture, nullptr);
}

TEST(DecodeStill, WhatCameBeforeAFaultIsShown) {
    const Pixels sent = kit::Random(11).Scattered(40, 30, true);
    for (const std::size_t fromEnd : {1U, 13U}) {  // in the checksum of the end, and of the pixels
        Bytes bytes = kit::Png(sent);
        bytes[bytes.size() - fromEnd] ^= 0x40;
        EXPECT_TRUE(kit::Shows(kit::Open(bytes), 0, sent)) << fromEnd;
    }
    for (const auto& [name, missing, whole] : {std::tuple{"red_24x16.jpg", 2, true},
                                               {"red_24x16.jpg", 4, false},
                                               {"red_24x16_progressive.jpg", 2, true}}) {
        Bytes bytes = kit::ReadData(name);
        bytes.erase(bytes.end() - missing, bytes.end());
        const kit::Opened opened = kit::Open(bytes);
        ASSERT_NE(opened.picture, nullptr) << name << missing;
        const Pixels pixels = kit::PixelsOf(*opened.picture->Frame(0));
        EXPECT_EQ(pixels.At(0, 15), 0xFFC7283C) << name << missing;
        EXPECT_EQ(pixels.At(23, 15) == 0xFFC7283C, whole) << name << missing;
    }
}

// A large progressive picture whose last pass comes again and again, at a few bytes each.
TEST(DecodeStill, EndlessPassesAreRefused) {
    const Bytes whole = kit::ReadData("red_24x16_progressive.jpg");
    const auto find = [&whole](std::uint8_t marker, std::size_t from) {
        for (std::size_t i = from; i + 1 < whole.size(); ++i)
            if (whole[i] == 0xFF && whole[i + 1] == marker) return i;
        return whole.size();
    };
    std::size_t lastScan = 0;
    for (std::size_t at = find(0xDA, 0); at < whole.size(); at = find(0xDA, at + 2))
        lastScan = at;
    const auto begin = [&whole](std::size_t at) { return whole.begin() + static_cast<std::ptrdiff_t>(at); };
    const Bytes scan(begin(lastScan), whole.end() - 2);
    const auto repeated = [&](int times, unsigned side) {
        Bytes bytes(whole.begin(), whole.end() - 2);
        const std::size_t size = find(0xC2, 0) + 5;
        for (const std::size_t i : {size, size + 2}) {
            bytes[i] = static_cast<std::uint8_t>(side >> 8);
            bytes[i + 1] = static_cast<std::uint8_t>(side & 0xFF);
        }
        for (int i = 0; i < times; ++i)
            bytes.insert(bytes.end(), scan.begin(), scan.end());
        bytes.insert(bytes.end(), {0xFF, 0xD9});
        return bytes;
    };
    EXPECT_EQ(kit::Open(repeated(4000, 4096)).picture, nullptr);
    EXPECT_NE(kit::Open(repeated(20, 64)).picture, nullptr) << "a small one may";
}

TEST(DecodeStill, ThePermittedExtremesOpen) {
    for (const auto& [width, height] : {std::pair{32767, 1}, {1, 32767}, {30000, 16}}) {
        const kit::Opened opened = kit::Open(kit::Png(Pixels(width, height)));
        ASSERT_NE(opened.picture, nullptr);
        EXPECT_TRUE(opened.picture->Width() == width && opened.picture->Height() == height);
    }
}

// Small pictures of every kind that a decoder behind the door handles.
std::vector<Bytes> Samples() {
    std::vector<Bytes> samples;
    for (const char* name : {"red_24x16.jpg", "red_24x16_progressive.jpg", "red_24x16.tif",
                             "red_24x16_interlaced.png", "red_24x16_palette.png", "red_24x16_deep.png",
                             "red_24x16_rle.bmp", "clear_red_24x16_v5.bmp", "three_gradients.gif"})
        samples.push_back(kit::ReadData(name));
    samples.push_back(kit::Bmp(5, 3, 24, {}, Bytes(48, 0x55)));
    const Bytes png = kit::Png(Pixels(3, 3));
    const Bytes dib = ByteWriter().Append(kit::BitmapHeader(4, 8, 8, 0, 4)).Fill(16 + 16 + 16, 1).Take();
    samples.push_back(kit::Icon({{3, 3, png}, {4, 4, dib}}));
    return samples;
}

TEST(DecodeStill, TruncatedFilesNeitherCrashNorShowStrayMemory) {
    testing::internal::CaptureStderr();
    for (const Bytes& whole : Samples()) {
        const std::size_t step = whole.size() > 1000 ? 37 : 1;
        for (std::size_t size = 0; size < whole.size(); size += step) {
            const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            const kit::Opened opened = kit::Open(part);
            kit::ExpectSound(opened);
            if (!opened.picture) continue;
            // What is missing must not be what the allocator happened to hand out.
            const Pixels first = kit::PixelsOf(*opened.picture->Frame(0));
            mallopt(M_PERTURB, 0x5A);
            const kit::Opened again = kit::Open(part);
            mallopt(M_PERTURB, 0);
            ASSERT_NE(again.picture, nullptr);
            EXPECT_TRUE(kit::Same(kit::PixelsOf(*again.picture->Frame(0)), first)) << size;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "bad data is no reason to write to the terminal";
}

TEST(DecodeStill, DamagedFilesNeitherCrashNorHang) {
    testing::internal::CaptureStderr();
    kit::Random random(20240607);
    for (const Bytes& whole : Samples()) {
        for (int round = 0; round < 400; ++round) {
            Bytes bytes = whole;
            for (int flips = random.Between(1, 4); flips > 0; --flips) {
                // Headers decide most, so they are hit more often.
                const auto reach = static_cast<int>(
                    random.Between(0, 1) == 0 ? std::min<std::size_t>(bytes.size(), 64) : bytes.size());
                bytes[static_cast<std::size_t>(random.Between(0, reach - 1))] =
                    static_cast<std::uint8_t>(random.Next());
            }
            kit::ExpectSound(kit::Open(std::move(bytes)));
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
