// DrawImage: exact copies, scaling, source rectangles, wrap modes.
#include <cmath>
#include <limits>

#include "graphics/gdiplus_kit.h"
#include "platform/graphics/pixel_rows.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::Dice;
using kit::MakeBitmap;
using kit::Pixels;
using platform::Region;

std::uint32_t Over(std::uint32_t from, std::uint32_t to) {
    platform::BlendRow(&to, &from, 1);
    return to;
}

TEST(DrawImage, AtItsOwnSizeBlendsEveryPixelExactly) {
    Dice dice(21);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        Canvas canvas(24, 20);
        canvas.Scatter(dice);
        const Pixels before = canvas.Get();
        const int side = round % 5 == 0 ? 40 : 15;  // large ones take the road of known opacity
        const Pixels pixels = kit::Scattered(dice, side, side, round % 2 == 0);
        const auto bitmap = MakeBitmap(pixels);
        Region clip(CRect(0, 0, 24, 20));
        if (round % 3 == 0) {
            clip = Region(dice.Rect(0, 12));
            clip.Add(dice.Rect(0, 18));
            canvas.Clip(clip);
        }
        const RECT to = dice.Rect(-10, 14);
        const int sourceX = dice.Between(-5, side);
        const int sourceY = dice.Between(-5, side);
        Graphics graphics(canvas.Context());
        const bool copies = round % 7 == 0;
        if (copies) graphics.SetCompositingMode(CompositingModeSourceCopy);
        EXPECT_EQ(Ok, graphics.DrawImage(
                          bitmap.get(), Rect(to.left, to.top, to.right - to.left, to.bottom - to.top),
                          sourceX, sourceY, to.right - to.left, to.bottom - to.top, UnitPixel));
        Pixels expected = before;
        for (int y = to.top; y < to.bottom; ++y)
            for (int x = to.left; x < to.right; ++x) {
                const int fromX = x - to.left + sourceX;
                const int fromY = y - to.top + sourceY;
                if (expected.Has(x, y) && pixels.Has(fromX, fromY) && clip.Contains(x, y))
                    expected.At(x, y) = Over(pixels.At(fromX, fromY), copies ? 0 : before.At(x, y));
            }
        EXPECT_TRUE(Same(canvas.Get(), expected));
    }
}

TEST(DrawImage, FramesOfAStripMayReachBeyondIt) {
    Pixels strip(4, 6, 0xFF0000FF);
    strip.Fill(CRect(0, 3, 4, 6), 0xFFFF0000);
    const auto bitmap = MakeBitmap(strip);
    Canvas canvas(4, 10);
    Graphics graphics(canvas.Context());
    graphics.DrawImage(bitmap.get(), Rect(0, 0, 4, 10), 0, 2, 4, 10, UnitPixel);
    Pixels expected(4, 10);
    expected.Fill(CRect(0, 0, 4, 1), 0xFF0000FF);
    expected.Fill(CRect(0, 1, 4, 4), 0xFFFF0000);
    EXPECT_TRUE(Same(canvas.Get(), expected));
}

TEST(DrawImage, APlainColourStaysItselfAtEveryScaleUpToTheEdges) {
    for (const std::uint32_t color : {0xFF123456U, 0x80402010U, 0x01010101U, 0xFFFFFFFFU})
        for (const WrapMode wrap : {WrapModeClamp, WrapModeTile, WrapModeTileFlipX, WrapModeTileFlipXY})
            for (const InterpolationMode mode : {InterpolationModeDefault, InterpolationModeNearestNeighbor,
                                                 InterpolationModeHighQualityBicubic})
                for (const auto& [from, to] :
                     {std::pair(1, 37), {3, 40}, {7, 5}, {40, 39}, {40, 7}, {97, 1}}) {
                    SCOPED_TRACE(testing::Message() << std::hex << color << std::dec << " wrap " << wrap
                                                    << " mode " << mode << " " << from << ">" << to);
                    // Around the source rectangle lies another colour, which must never show.
                    Pixels pixels(from + 4, from + 2, 0xFF00FF00);
                    pixels.Fill(CRect(2, 1, from + 2, from + 1), color);
                    const auto bitmap = MakeBitmap(pixels);
                    Canvas canvas(to + 2, to + 2);
                    Graphics graphics(canvas.Context());
                    graphics.SetInterpolationMode(mode);
                    ImageAttributes attributes;
                    attributes.SetWrapMode(wrap, Color(0xFF, 0, 0, 0));
                    EXPECT_EQ(Ok, graphics.DrawImage(bitmap.get(), Rect(1, 1, to, to), 2, 1, from, from,
                                                     UnitPixel, &attributes));
                    Pixels expected(to + 2, to + 2);
                    expected.Fill(CRect(1, 1, to + 1, to + 1), color);
                    ASSERT_TRUE(Same(canvas.Get(), expected));
                }
}

// Bilinear interpolation between pixel centres in real numbers, edges continued.
double Interpolated(const Pixels& pixels, double x, double y, int shift) {
    const auto at = [&](double px, double py) {
        const int ix = static_cast<int>(std::clamp(px, 0.0, pixels.width - 1.0));
        const int iy = static_cast<int>(std::clamp(py, 0.0, pixels.height - 1.0));
        return static_cast<double>((pixels.At(ix, iy) >> shift) & 0xFF);
    };
    const double left = std::floor(x);
    const double top = std::floor(y);
    const double upper = at(left, top) * (1 - x + left) + at(left + 1, top) * (x - left);
    const double lower = at(left, top + 1) * (1 - x + left) + at(left + 1, top + 1) * (x - left);
    return upper * (1 - y + top) + lower * (y - top);
}

TEST(DrawImage, ScalesBilinearlyOnPremultipliedPixels) {
    Dice dice(22);
    for (const auto& [from, to] : {std::pair(2, 9), {5, 13}, {16, 31}, {9, 8}, {31, 20}}) {
        SCOPED_TRACE(testing::Message() << from << ">" << to);
        const Pixels pixels = kit::Scattered(dice, from, from);
        const auto bitmap = MakeBitmap(pixels);
        Canvas canvas(to, to);
        Graphics(canvas.Context()).DrawImage(bitmap.get(), 0, 0, to, to);
        const double scale = static_cast<double>(from) / to;
        for (int y = 0; y < to; ++y)
            for (int x = 0; x < to; ++x) {
                const std::uint32_t pixel = canvas.At(x, y);
                for (int shift = 0; shift < 32; shift += 8) {
                    const double expected =
                        Interpolated(pixels, (x + 0.5) * scale - 0.5, (y + 0.5) * scale - 0.5, shift);
                    ASSERT_NEAR(expected, (pixel >> shift) & 0xFF, 0.6) << x << " " << y << " " << shift;
                    ASSERT_LE((pixel >> shift) & 0xFF, pixel >> 24) << "still premultiplied";
                }
            }
    }
}

TEST(DrawImage, StrongShrinkingAveragesEveryPixel) {
    Dice dice(23);
    for (const auto& [from, to] : {std::pair(8, 4), {40, 7}, {100, 3}, {64, 1}}) {
        SCOPED_TRACE(testing::Message() << from << ">" << to);
        const Pixels pixels = kit::Scattered(dice, from, from);
        const auto bitmap = MakeBitmap(pixels);
        Canvas canvas(to, to);
        Graphics(canvas.Context()).DrawImage(bitmap.get(), 0, 0, to, to);
        const double scale = static_cast<double>(from) / to;
        const auto share = [&](int pixel, int cell) {
            return std::max(0.0,
                            std::min(pixel + 1.0, (cell + 1) * scale) - std::max(1.0 * pixel, cell * scale));
        };
        for (int cellY = 0; cellY < to; ++cellY)
            for (int cellX = 0; cellX < to; ++cellX) {
                double sum = 0;
                for (int y = 0; y < from; ++y)
                    for (int x = 0; x < from; ++x)
                        sum += share(x, cellX) * share(y, cellY) * ((pixels.At(x, y) >> 16) & 0xFF);
                EXPECT_NEAR(sum / scale / scale, (canvas.At(cellX, cellY) >> 16) & 0xFF, 0.7);
            }
    }
    // Between whole and half size only the better mode averages.
    Pixels stripes(12, 1, 0xFF000000);
    for (int x = 0; x < 12; x += 3)
        stripes.At(x, 0) = 0xFFFFFFFF;
    const auto bitmap = MakeBitmap(stripes);
    Canvas canvas(8, 1);
    Graphics graphics(canvas.Context());
    graphics.SetInterpolationMode(InterpolationModeHighQualityBilinear);
    graphics.DrawImage(bitmap.get(), 0, 0, 8, 1);
    for (int x = 0; x < 8; x += 2) {
        EXPECT_NEAR(170, canvas.At(x, 0) & 0xFF, 1);
        EXPECT_NEAR(0, canvas.At(x + 1, 0) & 0xFF, 1);
    }
}

TEST(DrawImage, NearestNeighbourRepeatsPixels) {
    Dice dice(24);
    const Pixels pixels = kit::Scattered(dice, 3, 2);
    const auto bitmap = MakeBitmap(pixels);
    Canvas canvas(12, 8);
    Graphics graphics(canvas.Context());
    graphics.SetInterpolationMode(InterpolationModeNearestNeighbor);
    graphics.DrawImage(bitmap.get(), 0, 0, 12, 8);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 12; ++x)
            ASSERT_EQ(pixels.At(x / 4, y / 4), canvas.At(x, y));
}

TEST(DrawImage, TilingBringsTheOppositeEdgeMirroringDoesNot) {
    Pixels pixels(2, 2, 0xFF000000);
    pixels.Fill(CRect(1, 0, 2, 2), 0xFFFFFFFF);  // black left, white right
    const auto bitmap = MakeBitmap(pixels);
    const struct {
        WrapMode mode;
        bool tilesX;
    } cases[] = {{WrapModeTile, true},
                 {WrapModeTileFlipX, false},
                 {WrapModeTileFlipY, true},
                 {WrapModeTileFlipXY, false},
                 {WrapModeClamp, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        Canvas canvas(8, 2);
        ImageAttributes attributes;
        attributes.SetWrapMode(c.mode);
        Graphics(canvas.Context())
            .DrawImage(bitmap.get(), Rect(0, 0, 8, 2), 0, 0, 2, 2, UnitPixel, &attributes);
        EXPECT_EQ(c.tilesX, canvas.At(0, 0) != 0xFF000000);
        EXPECT_EQ(c.tilesX, canvas.At(7, 1) != 0xFFFFFFFF);
    }
    EXPECT_EQ(InvalidParameter, ImageAttributes().SetWrapMode(static_cast<WrapMode>(7)));
}

// What the tiles of a picture show at a place, in steps from its first pixel.
std::uint32_t Tiled(const Pixels& pixels, WrapMode mode, int x, int y) {
    const auto fold = [](int at, int size, bool turns) {
        const int tile = static_cast<int>(std::floor(1.0 * at / size));
        const int inside = at - tile * size;
        return turns && tile % 2 != 0 ? size - 1 - inside : inside;
    };
    return pixels.At(fold(x, pixels.width, mode == WrapModeTileFlipX || mode == WrapModeTileFlipXY),
                     fold(y, pixels.height, mode == WrapModeTileFlipY || mode == WrapModeTileFlipXY));
}

TEST(DrawImage, TilesShowBeyondThePictureAtEveryScaleAndTurned) {
    Dice dice(26);
    for (int round = 0; round < 400; ++round) {
        const auto mode = static_cast<WrapMode>(round % 4);
        const int scale = dice.Between(1, 3);  // below none: 2 shrinks by it
        const bool shrinks = scale == 2;
        const bool turns = round % 5 == 0;
        SCOPED_TRACE(testing::Message() << round << " mode " << mode << " scale " << scale);
        const Pixels pixels = kit::Scattered(dice, dice.Between(1, 6), dice.Between(1, 6), true);
        const auto bitmap = MakeBitmap(pixels);
        const CRect from(CPoint(dice.Between(-20, 20), dice.Between(-20, 20)),
                         CSize(2 * dice.Between(1, 9), 2 * dice.Between(1, 9)));
        const CSize to = shrinks ? CSize(from.Width() / 2, from.Height() / 2)
                                 : CSize(from.Width() * scale, from.Height() * scale);
        Canvas canvas(60, 60);
        Graphics graphics(canvas.Context());
        if (!shrinks) graphics.SetInterpolationMode(InterpolationModeNearestNeighbor);
        const Matrix mirrored(-1, 0, 0, 1, 60, 0);
        if (turns) graphics.SetTransform(&mirrored);
        ImageAttributes attributes;
        attributes.SetWrapMode(mode);
        ASSERT_EQ(Ok, graphics.DrawImage(bitmap.get(), Rect(2, 3, to.cx, to.cy), from.left, from.top,
                                         from.Width(), from.Height(), UnitPixel, &attributes));
        const bool inside =
            from.left >= 0 && from.top >= 0 && from.right <= pixels.width && from.bottom <= pixels.height;
        if (turns && inside && shrinks) continue;  // another library's way of shrinking
        for (int y = 0; y < to.cy; ++y)
            for (int x = 0; x < to.cx; ++x) {
                const std::uint32_t drawn = canvas.At(turns ? 57 - x : x + 2, y + 3);
                for (int shift = 0; shift < 32; shift += 8) {
                    double wanted = 0;
                    const int side = shrinks ? 2 : 1;
                    for (int i = 0; i < side * side; ++i)
                        wanted += (Tiled(pixels, mode, from.left + (shrinks ? x * 2 : x / scale) + i % side,
                                         from.top + (shrinks ? y * 2 : y / scale) + i / side) >>
                                   shift) &
                                  0xFF;
                    ASSERT_NEAR(wanted / side / side, (drawn >> shift) & 0xFF, shrinks ? 0.8 : 0)
                        << x << " " << y;
                }
            }
    }
    // However many tiles there are: their mean, and soon.
    Canvas canvas(40, 40);
    const auto bitmap = MakeBitmap(kit::Scattered(dice, 1500, 3, true));
    ImageAttributes attributes;
    attributes.SetWrapMode(WrapModeTileFlipXY);
    const Matrix upright;
    const Matrix quarter(0, 1, -1, 0, 40, 0);
    for (const Matrix* const matrix : {&upright, &quarter}) {
        Graphics graphics(canvas.Context());
        graphics.SetTransform(matrix);
        EXPECT_EQ(Ok, graphics.DrawImage(bitmap.get(), Rect(0, 0, 40, 40), -400000000, 7, 800000000,
                                         900000000, UnitPixel, &attributes));
        EXPECT_NEAR(127, canvas.At(20, 20) & 0xFF, 8);
    }
}

TEST(DrawImage, PartsOutsideTheImageDrawNothingAndKeepTheScale) {
    const auto bitmap = MakeBitmap(Pixels(10, 10, 0xFF445566));
    const struct {
        int x, y, width, height;  // of the source
        CRect drawn;              // of 40 x 40
    } cases[] = {
        {-10, 0, 20, 10, CRect(20, 0, 40, 40)},
        {0, -10, 10, 20, CRect(0, 20, 40, 40)},
        {5, 0, 10, 10, CRect(0, 0, 20, 40)},
        {-5, -5, 20, 20, CRect(10, 10, 30, 30)},
        {10, 0, 10, 10, CRect()},
        {0, -10, 10, 10, CRect()},
        {2, 2, 40, 40, CRect(0, 0, 8, 8)},
        {-1000, 0, 10, 10, CRect()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.x << " " << c.y << " " << c.width << " " << c.height);
        Canvas canvas(40, 40);
        Graphics graphics(canvas.Context());
        EXPECT_EQ(
            Ok, graphics.DrawImage(bitmap.get(), Rect(0, 0, 40, 40), c.x, c.y, c.width, c.height, UnitPixel));
        Pixels expected(40, 40);
        expected.Fill(c.drawn, 0xFF445566);
        EXPECT_TRUE(Same(canvas.Get(), expected));

        ImageAttributes attributes;
        attributes.SetWrapMode(WrapModeClamp, Color(0xFF, 1, 2, 3));
        graphics.Clear(Color(0, 0, 0, 0));
        graphics.DrawImage(bitmap.get(), Rect(0, 0, 40, 40), c.x, c.y, c.width, c.height, UnitPixel,
                           &attributes);
        expected = Pixels(40, 40, 0xFF010203);
        expected.Fill(c.drawn, 0xFF445566);
        EXPECT_TRUE(Same(canvas.Get(), expected)) << "the wrap colour fills the rest";
    }
}

TEST(DrawImage, EmptyNegativeAndEndlessRectanglesDrawNothing) {
    const auto bitmap = MakeBitmap(Pixels(4, 4, 0xFFFF0000));
    Canvas canvas(16, 16);
    Graphics graphics(canvas.Context());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const struct {
        RectF to;
        RectF from;
        Status status;
    } cases[] = {
        {{0, 0, 0, 8}, {0, 0, 4, 4}, Ok},
        {{0, 0, 8, -8}, {0, 0, 4, 4}, Ok},
        {{0, 0, 0.25F, 8}, {0, 0, 4, 4}, Ok},
        {{0, 0, 8, 8}, {0, 0, 0, 4}, Ok},
        {{0, 0, 8, 8}, {4, 4, -4, -4}, Ok},
        {{nan, 0, 8, 8}, {0, 0, 4, 4}, InvalidParameter},
        {{0, 0, infinity, 8}, {0, 0, 4, 4}, InvalidParameter},
        {{0, -infinity, 8, 8}, {0, 0, 4, 4}, InvalidParameter},
        {{0, 0, 8, 8}, {0, nan, 4, 4}, InvalidParameter},
        {{0, 0, 8, 8}, {0, 0, infinity, 4}, InvalidParameter},
        {{-3e38F, 0, 3e38F, 8}, {0, 0, 4, 4}, InvalidParameter},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.to.X << " " << c.to.Y << " " << c.to.Width << " " << c.to.Height);
        EXPECT_EQ(c.status, graphics.DrawImage(bitmap.get(), c.to, c.from.X, c.from.Y, c.from.Width,
                                               c.from.Height, UnitPixel));
    }
    EXPECT_EQ(InvalidParameter, graphics.DrawImage(nullptr, 0, 0));
    EXPECT_EQ(InvalidParameter, graphics.DrawImage(bitmap.get(), Rect(0, 0, 4, 4), 0, 0, 4, 4, UnitPoint));
    const int high = std::numeric_limits<int>::max();
    graphics.DrawImage(bitmap.get(), high, high);
    graphics.DrawImage(bitmap.get(), Rect(-high - 1, -high - 1, high, high), high, high, high, high,
                       UnitPixel);
    EXPECT_TRUE(Same(canvas.Get(), Pixels(16, 16)));
    EXPECT_EQ(Ok, graphics.DrawImage(bitmap.get(), -500000000, -500000000, 1000000000, 1000000000));
    EXPECT_TRUE(Same(canvas.Get(), Pixels(16, 16, 0xFFFF0000))) << "huge, but finite";
}

TEST(DrawImage, FractionalDestinationsGoToTheNearestPixelsEdgeByEdge) {
    const auto bitmap = MakeBitmap(Pixels(4, 4, 0x80402010));
    const struct {
        RectF to;
        CRect drawn;
    } cases[] = {{{2.25F, 3.5F, 4, 4}, CRect(2, 4, 6, 8)},
                 {{1.5F, 1.5F, 5.1F, 4.9F}, CRect(2, 2, 7, 6)},
                 {{-1.75F, 0, 3.25F, 2.5F}, CRect(0, 0, 2, 3)}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.to.X << " " << c.to.Y);
        Canvas canvas(10, 10);
        Graphics(canvas.Context()).DrawImage(bitmap.get(), c.to);
        Pixels expected(10, 10);
        expected.Fill(c.drawn, 0x80402010);
        EXPECT_TRUE(Same(canvas.Get(), expected));
    }
    // Neighbours that share an edge leave no gap and no overlap.
    Canvas canvas(30, 1);
    Graphics graphics(canvas.Context());
    for (int i = 0; i < 9; ++i)
        graphics.DrawImage(bitmap.get(), RectF(static_cast<float>(i) * 3.3F, 0, 3.3F, 1));
    for (int x = 0; x < 30; ++x)
        EXPECT_EQ(0x80402010, canvas.At(x, 0)) << x;
}

TEST(DrawImage, AnImageOntoItselfShowsWhatItWas) {
    Dice dice(25);
    const Pixels pixels = kit::Scattered(dice, 12, 12, true);
    const auto bitmap = MakeBitmap(pixels);
    Graphics(bitmap.get()).DrawImage(bitmap.get(), Rect(1, 0, 11, 12), 0, 0, 11, 12, UnitPixel);
    const Pixels shifted = kit::PixelsOf(*bitmap);
    for (int y = 0; y < 12; ++y)
        for (int x = 1; x < 12; ++x)
            ASSERT_EQ(pixels.At(x - 1, y), shifted.At(x, y));
}

TEST(DrawImage, FollowsTheWorldTransform) {
    Pixels pixels(4, 2, 0xFF0000FF);
    pixels.Fill(CRect(0, 0, 1, 2), 0xFFFF0000);
    const auto bitmap = MakeBitmap(pixels);
    Canvas canvas(12, 12);
    Graphics graphics(canvas.Context());
    const Matrix shifted(1, 0, 0, 1, 3, 4);
    graphics.SetTransform(&shifted);
    graphics.DrawImage(bitmap.get(), 1, 1);
    EXPECT_EQ(0xFFFF0000, canvas.At(4, 5));
    EXPECT_EQ(0xFF0000FF, canvas.At(7, 6));
    EXPECT_EQ(0U, canvas.At(8, 6));
    graphics.Clear(Color(0, 0, 0, 0));
    const Matrix mirrored(-1, 0, 0, 1, 10, 0);
    graphics.SetTransform(&mirrored);
    graphics.DrawImage(bitmap.get(), 2, 3);
    Pixels expected(12, 12);
    expected.Fill(CRect(4, 3, 8, 5), 0xFF0000FF);
    expected.Fill(CRect(7, 3, 8, 5), 0xFFFF0000);
    EXPECT_TRUE(Same(canvas.Get(), expected));
    graphics.Clear(Color(0, 0, 0, 0));
    const Matrix quarter(0, 1, -1, 0, 6, 0);
    graphics.SetTransform(&quarter);
    graphics.DrawImage(bitmap.get(), 1, 2);
    expected = Pixels(12, 12);
    expected.Fill(CRect(2, 1, 4, 5), 0xFF0000FF);
    expected.Fill(CRect(2, 1, 4, 2), 0xFFFF0000);
    EXPECT_TRUE(Same(canvas.Get(), expected));
}

}  // namespace
}  // namespace Gdiplus
