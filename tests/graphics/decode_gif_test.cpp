// Animated pictures: composition, order of access, timing and damage.
#include <chrono>
#include <numeric>

#include "graphics/decode_kit.h"
#include "platform/graphics/counters.h"
#include "platform/graphics/pixel_memory.h"
#include "support/random_gif.h"

namespace {

using kit::Bytes;
using kit::GifFile;
using kit::GifImage;
using kit::Pixels;

const std::vector<std::uint32_t> kColours = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00,
                                             0x00FFFF, 0xFF00FF, 0xFFFFFF, 0x102030};

void ExpectFrame(platform::EncodedPicture& picture, const std::vector<std::optional<kit::Screen>>& expected,
                 int index) {
    SCOPED_TRACE("frame " + std::to_string(index));
    const auto frame = picture.Frame(index);
    const auto& wanted = expected[static_cast<std::size_t>(index)];
    ASSERT_EQ(frame != nullptr, wanted.has_value());
    if (frame) {
        EXPECT_TRUE(kit::PixelsOf(*frame).words == *wanted);
    }
}

// Every size of code, early and late clears, none at first, no end; every disposal, the reserved ones too;
// extensions of all kinds between the frames, and tables of all sizes. As the fuzz target's; every other file
// with its frames twice, and some of those damaged or as large as the screen.
TEST(DecodeGif, FramesAreTheSameInEveryOrderOfAccess) {
    int sound = 0;
    for (std::uint32_t seed = 1; seed <= 1500 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        kit::Random random(seed);
        Bytes recipe(150);
        for (std::uint8_t& byte : recipe)
            byte = static_cast<std::uint8_t>(random.Between(0, 255));
        recipe[0] = static_cast<std::uint8_t>((recipe[0] & 0x7F) | 0x10);  // colours; no damage
        recipe[3] %= 5;
        kit::RandomInput input(recipe.data(), recipe.size());
        const kit::RandomGif made(input);
        kit::Opened opened = kit::Open(made.Written());
        if (!made.IsSound()) continue;
        ++sound;
        GifFile file = made.Description();
        if (seed % 2 == 0) {
            const std::vector<GifImage> images = file.images;
            file.images.insert(file.images.end(), images.begin(), images.end());
            for (std::size_t i = 1; i < file.images.size(); ++i) {
                GifImage& image = file.images[i];
                image.damaged = random.Between(0, 4) == 0;
                image.disposal = random.Between(0, 3);
                image.before.clear();
                image.between.clear();
                if (random.Between(0, 2) != 0) continue;
                image.left = image.top = 0;
                image.width = file.width;
                image.height = file.height;
                image.indices.resize(static_cast<std::size_t>(file.width) *
                                     static_cast<std::size_t>(file.height));
            }
            opened = kit::Open(kit::Gif(file));
        }
        ASSERT_NE(opened.picture, nullptr);
        EXPECT_EQ(opened.picture->Delays(), kit::DelaysOf(file));
        const auto expected = kit::ScreensOf(file);
        const int last = opened.picture->FrameCount() - 1;
        ASSERT_EQ(last + 1, static_cast<int>(expected.size()));
        if (seed % 4 != 1)
            for (int i = last; i >= 0; --i)
                ExpectFrame(*opened.picture, expected, i);
        for (int i = 0; i <= last; ++i)
            ExpectFrame(*opened.picture, expected, i);
        for (int i = 0; i < 30; ++i)
            ExpectFrame(*opened.picture, expected, random.Between(0, last));
        EXPECT_EQ(opened.picture->Frame(-1), nullptr);
        EXPECT_EQ(opened.picture->Frame(last + 1), nullptr);
    }
    EXPECT_GT(sound, 200);
}

TEST(DecodeGif, DelaysAndLoopsReachTheirLimits) {
    for (const int limit : {-1, 0, 1, 65535}) {
        GifFile file{1, 1, kColours, limit, {kit::SolidGifImage(0, 0, 1, 1, 1)}, true};
        file.images[0].delay = limit;
        const kit::Opened opened = kit::Open(kit::Gif(file));
        ASSERT_NE(opened.picture, nullptr);
        EXPECT_EQ(opened.picture->LoopCount(), limit);
        EXPECT_EQ(opened.picture->Delays(), kit::DelaysOf(file));
    }
}

// What stands between two frames, the second of which has a delay of its own.
TEST(DecodeGif, WhatStandsBetweenFramesIsReadAsLongAsItMakesSense) {
    GifFile file{2, 2, kColours, -1, {kit::SolidGifImage(0, 0, 2, 2, 1)}, false};
    const Bytes first = kit::Gif(file);
    file.images.push_back(kit::SolidGifImage(0, 0, 2, 2, 2));
    file.images[1].delay = 9;
    Bytes second = kit::Gif(file);
    second.erase(second.begin(), second.begin() + static_cast<std::ptrdiff_t>(first.size()));
    const std::vector<std::uint32_t> kBoth = {0, 9};
    struct Case {
        const char* what;
        Bytes between;
        int frames;
        std::vector<std::uint32_t> delays;
        bool endsThere = false;
    };
    for (const Case& c :
         {Case{"nothing", {}, 2, kBoth}, Case{"a comment without a block", {0x21, 0xFE, 0}, 2, kBoth},
          Case{"a control without a block", {0x21, 0xF9, 0}, 2, kBoth},
          Case{"an application without a name", {0x21, 0xFF, 0}, 2, kBoth},
          Case{"a short control", {0x21, 0xF9, 2, 0, 0, 0}, 2, kBoth},
          Case{"a long control", {0x21, 0xF9, 6, 0, 7, 0, 0, 1, 2, 0}, 2, kBoth},
          Case{"two controls", {0x21, 0xF9, 4, 4, 7, 0, 0, 0, 0x21, 0xF9, 4, 8, 8, 0, 0, 0}, 2, kBoth},
          Case{"padding", Bytes(40, 0), 2, kBoth},
          Case{"a control without a frame", {0x21, 0xF9, 4, 0, 7, 0, 0, 0}, 1, {}, true},
          Case{"a broken control", {0x21, 0xF9, 4, 0}, 1, {}, true}, Case{"the end", {0x3B}, 1, {}},
          Case{"garbage", {0x99}, 1, {}}}) {
        SCOPED_TRACE(c.what);
        Bytes bytes = first;
        bytes.insert(bytes.end(), c.between.begin(), c.between.end());
        if (!c.endsThere) bytes.insert(bytes.end(), second.begin(), second.end());
        const kit::Opened opened = kit::Open(bytes);
        ASSERT_NE(opened.picture, nullptr);
        EXPECT_EQ(opened.picture->FrameCount(), c.frames);
        EXPECT_EQ(opened.picture->Delays(), c.delays);
    }
}

// Two frames of 10 x 10 with a delay each, cut after every byte: a frame plays once all of it is there.
TEST(DecodeGif, ATruncatedFilePlaysItsWholeFrames) {
    GifFile file{10, 10, kColours, 0, {}, true};
    for (std::uint8_t i = 0; i < 3; ++i) {
        file.images.push_back(kit::SolidGifImage(0, 0, 10, 10, i + 1U));
        file.images.back().delay = 5;
    }
    const Bytes whole = kit::Gif(file);
    file.trailer = false;
    std::vector<std::size_t> ends;
    GifFile part = file;
    for (std::size_t i = 1; i <= 3; ++i) {
        part.images.assign(file.images.begin(), file.images.begin() + static_cast<std::ptrdiff_t>(i));
        ends.push_back(kit::Gif(part).size());
    }
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        const auto complete =
            std::count_if(ends.begin(), ends.end(), [&](std::size_t end) { return end <= size; });
        const kit::Opened opened =
            kit::Open(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        ASSERT_EQ(opened.picture != nullptr, complete > 0);
        if (!opened.picture) {
            EXPECT_EQ(opened.status, Gdiplus::UnknownImageFormat);
            continue;
        }
        ASSERT_EQ(opened.picture->FrameCount(), complete);
        EXPECT_EQ(opened.picture->Delays().size(), static_cast<std::size_t>(complete));
        const auto frame = opened.picture->Frame(static_cast<int>(complete) - 1);
        ASSERT_NE(frame, nullptr);
        EXPECT_EQ(frame->Row(9)[9], 0xFF000000U | kColours[static_cast<std::size_t>(complete)]);
    }
}

TEST(DecodeGif, FilesWithoutAFirstFrameAreRefused) {
    using kit::SolidGifImage;
    GifFile damaged{2, 2, kColours, -1, {SolidGifImage(0, 0, 2, 2, 1), SolidGifImage(0, 0, 2, 2, 2)}, true};
    damaged.images[0].damaged = true;
    for (const GifFile& file : {damaged, GifFile{2, 2, {}, -1, {SolidGifImage(0, 0, 2, 2, 1)}, true},
                                GifFile{2, 2, kColours, -1, {SolidGifImage(0, 0, 0, 0, 1)}, true}})
        EXPECT_TRUE(kit::IsRefused(kit::Gif(file)));
    // One beside the screen shows nothing and is no fault.
    const GifFile beside{4, 4, kColours, -1, {SolidGifImage(60000, 60000, 3, 2, 1)}, true};
    EXPECT_TRUE(kit::Shows(kit::Open(kit::Gif(beside)), 0, Pixels(4, 4)));
}

// 600 frames of which none starts anew, on a screen small enough to keep every one and on a large one.
TEST(DecodeGif, FramesAreDecodedOnDemandAndKeptWithinBounds) {
    for (const int side : {16, 200}) {
        SCOPED_TRACE(side);
        GifFile file{side, side, kColours, 0, {}, true};
        file.images.push_back(kit::SolidGifImage(0, 0, side, side, 0));
        for (int i = 1; i < 600; ++i)
            file.images.push_back(kit::SolidGifImage(i % side, 0, 1, side, static_cast<std::uint8_t>(i % 9)));
        const std::uint64_t before = Gdiplus::Counters().decodedFrames;
        const auto decoded = [before] { return Gdiplus::Counters().decodedFrames - before; };
        const kit::Opened opened = kit::Open(kit::Gif(file));
        ASSERT_NE(opened.picture, nullptr);
        EXPECT_EQ(opened.picture->FrameCount(), 600);
        EXPECT_EQ(decoded(), 1U);
        for (int i = 0; i < 600; ++i)
            ASSERT_NE(opened.picture->Frame(i), nullptr);
        EXPECT_EQ(decoded(), 600U) << "in order, each once";
        EXPECT_NE(opened.picture->Frame(599), nullptr);
        EXPECT_EQ(decoded(), 600U) << "the shown frame again";
        // Back by one, from everywhere: at most the distance between two kept screens.
        const std::uint64_t most = side == 16 ? 2 : 13;
        for (int i = 598; i > 0; i -= 7) {
            const std::uint64_t start = decoded();
            ASSERT_NE(opened.picture->Frame(i), nullptr);
            EXPECT_LE(decoded() - start, most) << i;
        }
    }
}

// Thousands of frames that claim the whole of a large screen and hold next to nothing: going to the last one
// cost as much as clearing the screen for each, and as looking through all of them for each.
TEST(DecodeGif, EmptyFramesCostNothing) {
    constexpr int kSide = 2000;
    constexpr std::size_t kFrames = 20'000;
    GifFile file{kSide, kSide, kColours, -1, {kit::SolidGifImage(0, 0, 1, 1, 1)}, false};
    Bytes bytes = kit::Gif(file);
    for (const unsigned disposal : {0U, 2U, 3U})
        for (std::size_t i = 0; i < kFrames; ++i) {
            kit::ByteWriter writer;
            writer.Long(0x0004F921 | disposal << 26).Long(0).Byte(0x2C).Long(0);
            const Bytes frame = writer.Word(kSide).Word(kSide - i % 2).Long(0x00000104).Take();
            bytes.insert(bytes.end(), frame.begin(), frame.end());
        }
    const kit::Opened opened = kit::Open(bytes);
    ASSERT_NE(opened.picture, nullptr);
    ASSERT_EQ(opened.picture->FrameCount(), static_cast<int>(3 * kFrames + 1));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(opened.picture->Frame(opened.picture->FrameCount() - 1), nullptr);
    EXPECT_NE(opened.picture->Frame(0), nullptr);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

// Each of these once asked for memory or time beyond its worth.
TEST(DecodeGif, LyingSizesCostNothing) {
    const std::size_t allocations = platform::PixelMemory::SystemAllocations();
    struct Case {
        const char* what;
        int width, height, frameWidth, frameHeight;
    };
    for (const Case& c :
         {Case{"largest screen", 65535, 65535, 1, 1}, Case{"wide screen", 32768, 1, 1, 1},
          Case{"many pixels", 16384, 16384, 1, 1}, Case{"few bytes", 8000, 8000, 1, 1},
          Case{"largest frame", 4, 4, 65535, 65535}, Case{"large frame", 4, 4, 16384, 4096}}) {
        SCOPED_TRACE(c.what);
        GifFile file{c.width, c.height, kColours, -1, {kit::SolidGifImage(0, 0, 1, 1, 1)}, true};
        Bytes bytes = kit::Gif(file);
        const std::size_t frameAt = 13 + 48 + 5;
        for (std::size_t i = 0; i < 4; ++i) {
            const int value = i < 2 ? c.frameWidth : c.frameHeight;
            bytes[frameAt + i] = static_cast<std::uint8_t>(i % 2 == 0 ? value & 0xFF : value >> 8);
        }
        EXPECT_TRUE(kit::IsRefused(bytes));
    }
    EXPECT_EQ(platform::PixelMemory::SystemAllocations(), allocations);
}

}  // namespace
