// DrawImage: exact copies, scaling, source rectangles, wrap modes.
#include <algorithm>
#include <cmath>
#include <limits>

#include "graphics/gdiplus_kit.h"
#include "platform/graphics/pixel_rows.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::Drawn;
using kit::kInfinity;
using kit::kNan;
using kit::MakeBitmap;
using kit::Pixels;
using kit::Random;
using platform::Region;

std::uint32_t Over(std::uint32_t from, std::uint32_t to) {
    platform::BlendRow(&to, &from, 1);
    return to;
}

TEST(DrawImage, AtItsOwnSizeBlendsEveryPixelExactly) {
    Random random(21);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const Pixels before = random.Scattered(24, 20);
        Canvas canvas(before);
        const int side = round % 5 == 0 ? 40 : 15;  // large ones take the road of known opacity
        const Pixels pixels = random.Scattered(side, side, round % 2 == 0);
        const auto bitmap = MakeBitmap(pixels);
        Region clip(CRect(0, 0, 24, 20));
        if (round % 3 == 0) {
            clip = Region(random.Rect(0, 12));
            clip.Add(random.Rect(0, 18));
            canvas.Clip(clip);
        }
        const RECT to = random.Rect(-10, 14);
        const POINT from{random.Between(-5, side), random.Between(-5, side)};
        Graphics graphics(canvas.Context());
        const bool copies = round % 7 == 0;
        if (copies) graphics.SetCompositingMode(CompositingModeSourceCopy);
        EXPECT_EQ(Ok, graphics.DrawImage(bitmap.get(), kit::RectOf(to), from.x, from.y, to.right - to.left,
                                         to.bottom - to.top, UnitPixel));
        EXPECT_TRUE(Same(canvas.Get(), kit::Copied(before, pixels, clip, to, from, copies ? nullptr : Over)));
    }
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
                    ImageAttributes attributes;
                    attributes.SetWrapMode(wrap, Color(0xFF, 0, 0, 0));
                    const Pixels drawn = Drawn(to + 2, to + 2, [&, from = from, to = to](Graphics& graphics) {
                        graphics.SetInterpolationMode(mode);
                        graphics.DrawImage(MakeBitmap(pixels).get(), Rect(1, 1, to, to), 2, 1, from, from,
                                           UnitPixel, &attributes);
                    });
                    ASSERT_TRUE(Same(drawn, Pixels(to + 2, to + 2, {{CRect(1, 1, to + 1, to + 1), color}})));
                }
}

// Any picture drawn over the whole of another size.
Pixels Scaled(const Pixels& pixels, int width, int height,
              InterpolationMode mode = InterpolationModeDefault) {
    return Drawn(width, height, [&](Graphics& graphics) {
        graphics.SetInterpolationMode(mode);
        EXPECT_EQ(Ok, graphics.DrawImage(MakeBitmap(pixels).get(), 0, 0, width, height));
    });
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
    Random random(22);
    for (const auto& [from, to] : {std::pair(2, 9), {5, 13}, {16, 31}, {9, 8}, {31, 20}}) {
        SCOPED_TRACE(testing::Message() << from << ">" << to);
        const Pixels pixels = random.Scattered(from, from);
        const Pixels scaled = Scaled(pixels, to, to);
        const double scale = static_cast<double>(from) / to;
        for (int y = 0; y < to; ++y)
            for (int x = 0; x < to; ++x) {
                const std::uint32_t pixel = scaled.At(x, y);
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
    Random random(23);
    for (const auto& [from, to] : {std::pair(8, 4), {40, 7}, {100, 3}, {64, 1}}) {
        SCOPED_TRACE(testing::Message() << from << ">" << to);
        const Pixels pixels = random.Scattered(from, from);
        const Pixels scaled = Scaled(pixels, to, to);
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
                EXPECT_NEAR(sum / scale / scale, (scaled.At(cellX, cellY) >> 16) & 0xFF, 0.7);
            }
    }
    // Between whole and half size only the better mode averages.
    Pixels stripes(12, 1, 0xFF000000);
    for (int x = 0; x < 12; x += 3)
        stripes.At(x, 0) = 0xFFFFFFFF;
    const Pixels better = Scaled(stripes, 8, 1, InterpolationModeHighQualityBilinear);
    for (int x = 0; x < 8; ++x)
        EXPECT_NEAR(x % 2 == 0 ? 170 : 0, better.At(x, 0) & 0xFF, 1);
}

TEST(DrawImage, TilingBringsTheOppositeEdgeMirroringDoesNot) {
    const Pixels pixels(2, 2, {{CRect(0, 0, 1, 2), 0xFF000000}, {CRect(1, 0, 2, 2), 0xFFFFFFFF}});
    const auto bitmap = MakeBitmap(pixels);
    for (const WrapMode mode :
         {WrapModeTile, WrapModeTileFlipX, WrapModeTileFlipY, WrapModeTileFlipXY, WrapModeClamp}) {
        SCOPED_TRACE(mode);
        const bool tilesX = mode == WrapModeTile || mode == WrapModeTileFlipY;
        ImageAttributes attributes;
        attributes.SetWrapMode(mode);
        const Pixels drawn = Drawn(8, 2, [&](Graphics& graphics) {
            graphics.DrawImage(bitmap.get(), Rect(0, 0, 8, 2), 0, 0, 2, 2, UnitPixel, &attributes);
        });
        EXPECT_EQ(tilesX, drawn.At(0, 0) != 0xFF000000);
        EXPECT_EQ(tilesX, drawn.At(7, 1) != 0xFFFFFFFF);
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
    Random random(26);
    for (int round = 0; round < 400; ++round) {
        const auto mode = static_cast<WrapMode>(round % 4);
        const int scale = random.Between(1, 3);  // below none: 2 shrinks by it
        const bool shrinks = scale == 2;
        const bool turns = round % 5 == 0;
        SCOPED_TRACE(testing::Message() << round << " mode " << mode << " scale " << scale);
        const Pixels pixels = random.Scattered(random.Between(1, 6), random.Between(1, 6), true);
        const auto bitmap = MakeBitmap(pixels);
        const CRect from(CPoint(random.Between(-20, 20), random.Between(-20, 20)),
                         CSize(2 * random.Between(1, 9), 2 * random.Between(1, 9)));
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
    const auto bitmap = MakeBitmap(random.Scattered(1500, 3, true));
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
        Rect from;
        CRect drawn;  // of 40 x 40
    } cases[] = {
        {Rect(-10, 0, 20, 10), CRect(20, 0, 40, 40)},
        {Rect(0, -10, 10, 20), CRect(0, 20, 40, 40)},
        {Rect(5, 0, 10, 10), CRect(0, 0, 20, 40)},
        {Rect(-5, -5, 20, 20), CRect(10, 10, 30, 30)},
        {Rect(10, 0, 10, 10), CRect()},
        {Rect(0, -10, 10, 10), CRect()},
        {Rect(2, 2, 40, 40), CRect(0, 0, 8, 8)},
        {Rect(-1000, 0, 10, 10), CRect()},
    };
    ImageAttributes black;
    black.SetWrapMode(WrapModeClamp, Color(0xFF, 1, 2, 3));
    for (const auto& c : cases)
        for (const ImageAttributes* const attributes : {static_cast<ImageAttributes*>(nullptr), &black}) {
            SCOPED_TRACE(testing::Message() << &c - cases << (attributes ? " wrapped" : ""));
            const Pixels drawn = Drawn(40, 40, [&](Graphics& graphics) {
                EXPECT_EQ(Ok, graphics.DrawImage(bitmap.get(), Rect(0, 0, 40, 40), c.from.X, c.from.Y,
                                                 c.from.Width, c.from.Height, UnitPixel, attributes));
            });
            Pixels expected(40, 40, attributes ? 0xFF010203 : 0);  // the wrap colour fills the rest
            expected.Fill(c.drawn, 0xFF445566);
            EXPECT_TRUE(Same(drawn, expected));
        }
}

TEST(DrawImage, EmptyNegativeAndEndlessRectanglesDrawNothing) {
    const auto bitmap = MakeBitmap(Pixels(4, 4, 0xFFFF0000));
    Canvas canvas(16, 16);
    Graphics graphics(canvas.Context());
    const struct {
        RectF to, from;
        Status status;
    } cases[] = {
        {{0, 0, 0, 8}, {0, 0, 4, 4}, Ok},
        {{0, 0, 8, -8}, {0, 0, 4, 4}, Ok},
        {{0, 0, 0.25F, 8}, {0, 0, 4, 4}, Ok},
        {{0, 0, 8, 8}, {0, 0, 0, 4}, Ok},
        {{0, 0, 8, 8}, {4, 4, -4, -4}, Ok},
        {{kNan, 0, 8, 8}, {0, 0, 4, 4}, InvalidParameter},
        {{0, 0, kInfinity, 8}, {0, 0, 4, 4}, InvalidParameter},
        {{0, -kInfinity, 8, 8}, {0, 0, 4, 4}, InvalidParameter},
        {{0, 0, 8, 8}, {0, kNan, 4, 4}, InvalidParameter},
        {{0, 0, 8, 8}, {0, 0, kInfinity, 4}, InvalidParameter},
        {{-3e38F, 0, 3e38F, 8}, {0, 0, 4, 4}, InvalidParameter},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.status, graphics.DrawImage(bitmap.get(), c.to, c.from.X, c.from.Y, c.from.Width,
                                               c.from.Height, UnitPixel))
            << &c - cases;
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
    for (const auto& [to, drawn] : {std::pair(RectF(2.25F, 3.5F, 4, 4), CRect(2, 4, 6, 8)),
                                    {RectF(1.5F, 1.5F, 5.1F, 4.9F), CRect(2, 2, 7, 6)},
                                    {RectF(-1.75F, 0, 3.25F, 2.5F), CRect(0, 0, 2, 3)}})
        EXPECT_TRUE(
            Same(Drawn(10, 10, [&, to = to](Graphics& graphics) { graphics.DrawImage(bitmap.get(), to); }),
                 Pixels(10, 10, {{drawn, 0x80402010}})));
    // Neighbours that share an edge leave no gap and no overlap.
    EXPECT_TRUE(Same(Drawn(30, 1,
                           [&](Graphics& graphics) {
                               for (int i = 0; i < 10; ++i)
                                   graphics.DrawImage(bitmap.get(),
                                                      RectF(static_cast<float>(i) * 3.3F, 0, 3.3F, 1));
                           }),
                     Pixels(30, 1, 0x80402010)));
}

TEST(DrawImage, AnImageOntoItselfShowsWhatItWas) {
    Random random(25);
    const Pixels pixels = random.Scattered(12, 12, true);
    const auto bitmap = MakeBitmap(pixels);
    Graphics(bitmap.get()).DrawImage(bitmap.get(), Rect(1, 0, 11, 12), 0, 0, 11, 12, UnitPixel);
    const Pixels shifted = kit::PixelsOf(*bitmap);
    for (int y = 0; y < 12; ++y)
        for (int x = 1; x < 12; ++x)
            ASSERT_EQ(pixels.At(x - 1, y), shifted.At(x, y));
}

TEST(DrawImage, FollowsTheWorldTransform) {
    constexpr std::uint32_t kRed = 0xFFFF0000, kBlue = 0xFF0000FF;
    const auto bitmap = MakeBitmap(Pixels(4, 2, {{CRect(0, 0, 4, 2), kBlue}, {CRect(0, 0, 1, 2), kRed}}));
    const struct {
        Matrix matrix;
        CRect all, first;  // column
    } cases[] = {{Matrix(1, 0, 0, 1, 3, 4), CRect(5, 7, 9, 9), CRect(5, 7, 6, 9)},
                 {Matrix(-1, 0, 0, 1, 10, 0), CRect(4, 3, 8, 5), CRect(7, 3, 8, 5)},
                 {Matrix(0, 1, -1, 0, 6, 0), CRect(1, 2, 3, 6), CRect(1, 2, 3, 3)}};
    for (const auto& c : cases)
        EXPECT_TRUE(Same(Drawn(12, 12,
                               [&](Graphics& graphics) {
                                   graphics.SetTransform(&c.matrix);
                                   graphics.DrawImage(bitmap.get(), 2, 3);
                               }),
                         Pixels(12, 12, {{c.all, kBlue}, {c.first, kRed}})));
}

}  // namespace
}  // namespace Gdiplus
