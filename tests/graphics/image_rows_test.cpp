// The loops over pixels, held against exact arithmetic.
#include <cmath>
#include <cstring>
#include <vector>

#include "graphics/picture_kit.h"
#include "platform/graphics/pixel_rows.h"

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

TEST(PixelRows, RowsAgreeWithSinglePixelsAtEveryLength) {
    kit::Dice dice(5);
    std::vector<std::uint32_t> from(67);
    std::vector<std::uint32_t> under(67);
    for (int round = 0; round < 300; ++round) {
        const std::size_t count = static_cast<std::size_t>(round) % from.size();
        for (std::size_t i = 0; i < from.size(); ++i) {
            const std::uint32_t kind = dice.Next() % 4;  // runs of opaque and empty pixels included
            from[i] = round % 3 == 0         ? dice.Premultiplied()
                      : (i + kind) % 16 < 6  ? dice.Next() | 0xFF000000
                      : (i + kind) % 16 < 11 ? 0
                                             : dice.Premultiplied();
            under[i] = dice.Premultiplied();
        }
        const std::uint32_t color = dice.Premultiplied();
        std::vector<std::uint32_t> blended = under;
        std::vector<std::uint32_t> tinted = under;
        std::vector<std::uint32_t> straight(count);
        std::vector<std::uint32_t> back(count);
        BlendRow(blended.data(), from.data(), count);
        BlendColorRow(tinted.data(), color, count);
        UnpremultiplyRow(straight.data(), from.data(), count);
        PremultiplyRow(back.data(), straight.data(), count);
        for (std::size_t i = 0; i < under.size(); ++i) {
            ASSERT_EQ(i < count ? OverByTheBook(from[i], under[i]) : under[i], blended[i]) << i;
            ASSERT_EQ(i < count ? OverByTheBook(color, under[i]) : under[i], tinted[i]) << i;
            if (i < count) {
                ASSERT_EQ(Premultiply(Unpremultiply(from[i])), back[i]);
            }
        }
    }
}

TEST(PixelRows, ChannelsAboveTheirAlphaDoNotWrap) {
    std::uint32_t row[5];
    std::uint32_t glare[5];
    for (int i = 0; i < 5; ++i) {
        row[i] = 0xFFFFFFFF;
        glare[i] = 0x10FFFFFF;
    }
    BlendRow(row, glare, 5);
    for (const std::uint32_t pixel : row)
        EXPECT_EQ(0xFFFFFFFF, pixel);
    ClampPremultipliedRow(glare, glare, 5);
    for (const std::uint32_t pixel : glare)
        EXPECT_EQ(0x10101010U, pixel);
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
