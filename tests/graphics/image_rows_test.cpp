// The loops over pixels, held against exact arithmetic.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "graphics/picture_kit.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/row_blends.h"
#include "platform/graphics/row_scales.h"

namespace platform {
namespace {

std::uint32_t Exactly(double value) {
    return static_cast<std::uint32_t>(std::floor(value + 0.5));
}

std::uint32_t OverByTheBook(std::uint32_t from, std::uint32_t to) {
    const std::uint32_t rest = 255 - (from >> 24);
    std::uint32_t pixel = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const std::uint32_t under = Exactly(((to >> shift) & 0xFF) * rest / 255.0);
        pixel |= (((from >> shift) & 0xFF) + under) << shift;
    }
    return pixel;
}

TEST(PixelRows, EveryPremultipliedPairSurvivesTheStraightForm) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha)
        for (std::uint32_t channel = 0; channel <= alpha; ++channel) {
            const std::uint32_t pixel = (alpha << 24) | (channel << 16) | (channel << 8) | channel;
            const std::uint32_t straight = Unpremultiply(pixel);
            ASSERT_EQ(pixel, Premultiply(straight)) << alpha << " " << channel;
            ASSERT_EQ(alpha, straight >> 24);
            if (alpha > 0) {
                ASSERT_LE(std::abs((straight & 0xFF) - channel * 255.0 / alpha), 0.5);
            }
        }
    // What no drawing makes: channels above their alpha.
    EXPECT_EQ(0x40FFFF00U, Unpremultiply(0x40FF4000));
    EXPECT_EQ(0U, Unpremultiply(0x00123456));
}

TEST(PixelRows, PremultiplyingRoundsExactly) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha)
        for (std::uint32_t channel = 0; channel < 256; ++channel) {
            const std::uint32_t pixel = Premultiply((alpha << 24) | (channel << 16) | channel);
            const std::uint32_t expected = Exactly(channel * alpha / 255.0);
            ASSERT_EQ((alpha << 24) | (expected << 16) | expected, pixel);
        }
}

// Whatever the processor, wherever a row starts and ends, and with pixels that no drawing makes.
TEST(PixelRows, RowsAgreeWithSinglePixelsAtEveryLength) {
    kit::Random random(5);
    std::vector<std::uint32_t> from(75);
    std::vector<std::uint32_t> under(from.size());
    std::vector<std::uint8_t> cover(from.size());
    for (int round = 0; round < 600; ++round) {
        const std::size_t first = static_cast<std::size_t>(round) % 8;
        const std::size_t end = first + static_cast<std::size_t>(round) % (from.size() - 7);
        for (std::size_t i = 0; i < from.size(); ++i) {
            const std::uint32_t kind =
                (i + random.Next() % 4) % 16;  // runs of opaque and empty pixels included
            from[i] = round % 3 == 0 ? random.Premultiplied()
                      : kind < 6     ? random.Next() | 0xFF000000
                      : kind < 11    ? 0
                                     : random.Premultiplied();
            cover[i] = static_cast<std::uint8_t>(kind < 6 ? 0 : kind < 9 ? 255 : random.Next());
            under[i] = round % 5 == 0 ? random.Next() : random.Premultiplied();
        }
        const std::uint32_t color = random.Premultiplied();
        for (const RowBlends* blends : {&kPlainRowBlends, Sse2RowBlends(), Avx2RowBlends()}) {
            if (!blends) continue;
            std::vector<std::uint32_t> blended = under;
            std::vector<std::uint32_t> tinted = under;
            std::vector<std::uint32_t> covered = under;
            blends->pixels(blended.data() + first, from.data() + first, end - first);
            blends->color(tinted.data() + first, color, end - first);
            blends->coverage(covered.data() + first, color, cover.data() + first, end - first);
            for (std::size_t i = 0; i < under.size(); ++i) {
                const bool inside = first <= i && i < end;
                ASSERT_EQ(inside ? OverByTheBook(from[i], under[i]) : under[i], blended[i]) << i;
                ASSERT_EQ(inside ? OverByTheBook(color, under[i]) : under[i], tinted[i]) << i;
                const std::uint32_t part = ScalePixel(color, cover[i]);
                ASSERT_EQ(inside ? OverByTheBook(part, under[i]) : under[i], covered[i]) << i;
            }
        }
        std::vector<std::uint32_t> back(end);
        UnpremultiplyRow(back.data(), from.data(), end);
        PremultiplyRow(back.data(), back.data(), end);
        for (std::size_t i = 0; i < end; ++i)
            ASSERT_EQ(Premultiply(Unpremultiply(from[i])), back[i]);
    }
}

TEST(PixelRows, ChannelsAboveTheirAlphaDoNotWrap) {
    std::vector<std::uint32_t> glare(15, 0x10FFFFFF);
    for (const RowBlends* blends : {&kPlainRowBlends, Sse2RowBlends(), Avx2RowBlends()}) {
        if (!blends) continue;
        std::vector<std::uint32_t> row(glare.size(), 0xFFFFFFFF);
        blends->pixels(row.data(), glare.data(), row.size());
        blends->color(row.data(), glare[0], row.size());
        EXPECT_EQ(std::vector<std::uint32_t>(glare.size(), 0xFFFFFFFF), row);
    }
    ClampPremultipliedRow(glare.data(), glare.data(), glare.size());
    EXPECT_EQ(std::vector<std::uint32_t>(glare.size(), 0x10101010), glare);
}

TEST(PixelRows, ScalingIsExactOnEveryProcessor) {
    const RowScales* const scales = Avx2RowScales();
    if (!scales) GTEST_SKIP() << "no such processor";
    kit::Random random(6);
    std::vector<std::uint32_t> row(40);
    for (std::size_t count = 0; count < 30; ++count) {
        std::vector<TapPair> taps(count + 1);
        for (TapPair& pair : taps) {
            pair.first = random.Between(0, 38);
            pair.second = pair.first + 1;
            pair.firstWeight = static_cast<std::int16_t>(random.Between(0, kWeightSum));
            pair.secondWeight = static_cast<std::int16_t>(kWeightSum - pair.firstWeight);
        }
        std::generate(row.begin(), row.end(), [&] { return random.Next() % 3 ? random.Next() : 0xFFFFFFFF; });
        std::vector<std::int16_t> across(count * 4), below(count * 4);
        const std::size_t done = scales->across(across.data(), row.data(), taps.data(), count);
        ASSERT_EQ(count / 4 * 4, done);
        for (std::size_t i = 0; i < done * 4; ++i) {
            const TapPair& pair = taps[i / 4];
            const auto channel = [&](int at) {
                return static_cast<int>(row[static_cast<std::size_t>(at)] >> (i % 4 * 8) & 0xFF);
            };
            ASSERT_EQ((channel(pair.first) * pair.firstWeight + channel(pair.second) * pair.secondWeight +
                       (1 << (kAcrossShift - 1))) >>
                          kAcrossShift,
                      across[i]);
            below[i] = static_cast<std::int16_t>(random.Between(0, 255 << kMiddleBits));
        }
        std::vector<std::uint32_t> pixels(count);
        const TapPair& rows = taps[count];
        const std::size_t finished = scales->down(pixels.data(), across.data(), below.data(), rows, count);
        ASSERT_EQ(count / 8 * 8, finished);
        for (std::size_t i = 0; i < finished * 4; ++i)
            ASSERT_EQ(static_cast<std::uint32_t>((across[i] * rows.firstWeight +
                                                  below[i] * rows.secondWeight + (1 << (kDownShift - 1))) >>
                                                 kDownShift),
                      pixels[i / 4] >> (i % 4 * 8) & 0xFF);
    }
}

TEST(PixelRows, OneTransparentPixelIsFound) {
    std::vector<std::uint32_t> row(41, 0xFF123456);
    EXPECT_TRUE(IsOpaqueRow(row.data(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = 0xFE123456;
        EXPECT_FALSE(IsOpaqueRow(row.data(), row.size())) << i;
        row[i] = 0xFF123456;
    }
}

}  // namespace
}  // namespace platform
