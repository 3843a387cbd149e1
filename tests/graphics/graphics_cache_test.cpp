// Scaled pictures are made once, go with their source, and show what they would show without a cache.
#include "graphics/gdiplus_kit.h"
#include "platform/graphics/counters.h"
#include "platform/graphics/scaled_cache.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::Dice;
using kit::MakeBitmap;
using kit::Pixels;

class ScaledPictures : public testing::Test {
  protected:
    ScaledPictures() { SetDrawingCacheLimit(kLimit); }
    ~ScaledPictures() override { SetDrawingCacheLimit(std::size_t{64} << 20); }
    // How many pictures are resampled while `act` runs.
    template <class Act>
    std::uint64_t Made(Act act) {
        const std::uint64_t before = GetDrawingCounters().scaledImages;
        act();
        return GetDrawingCounters().scaledImages - before;
    }
    static std::size_t Kept() { return platform::ScaledCache::Get().Bytes(); }

    static constexpr std::size_t kLimit = std::size_t{1} << 20;
};

TEST_F(ScaledPictures, AreMadeOncePerWayOfScaling) {
    Dice dice(31);
    const auto bitmap = MakeBitmap(kit::Scattered(dice, 8, 8));
    Canvas canvas(64, 64);
    Graphics graphics(canvas.Context());
    ImageAttributes mirrored;
    mirrored.SetWrapMode(WrapModeTileFlipXY);
    ImageAttributes tiled;
    tiled.SetWrapMode(WrapModeTile);
    const auto draw = [&](int x, int size, int source, const ImageAttributes* attributes) {
        return Made([&] {
            graphics.DrawImage(bitmap.get(), Rect(x, 3, size, size), 0, 0, source, source, UnitPixel,
                               attributes);
        });
    };
    EXPECT_EQ(1U, draw(0, 20, 8, nullptr));
    EXPECT_EQ(0U, draw(0, 20, 8, nullptr));
    EXPECT_EQ(0U, draw(17, 20, 8, nullptr)) << "elsewhere";
    EXPECT_EQ(0U, draw(55, 20, 8, nullptr)) << "partly outside";
    EXPECT_EQ(0U, draw(5, 20, 8, &mirrored)) << "the same pixels";
    EXPECT_EQ(1U, draw(5, 20, 8, &tiled));
    EXPECT_EQ(1U, draw(5, 21, 8, nullptr));
    EXPECT_EQ(1U, draw(5, 20, 7, nullptr));
    EXPECT_EQ(0U, draw(5, 8, 8, nullptr)) << "unscaled";
    graphics.SetInterpolationMode(InterpolationModeNearestNeighbor);
    EXPECT_EQ(1U, draw(5, 20, 8, nullptr));
    graphics.SetInterpolationMode(InterpolationModeBilinear);
    EXPECT_EQ(0U, draw(5, 20, 8, nullptr));
    IntersectClipRect(canvas.Context(), 9, 9, 11, 11);
    EXPECT_EQ(0U, draw(5, 20, 7, nullptr));
    const std::unique_ptr<Bitmap> clone(bitmap->Clone());
    EXPECT_EQ(0U, Made([&] { graphics.DrawImage(clone.get(), 5, 5, 20, 20); })) << "clones share";
}

TEST_F(ScaledPictures, GoWithTheirSource) {
    Canvas canvas(64, 64);
    Graphics graphics(canvas.Context());
    const std::size_t before = Kept();
    auto bitmap = MakeBitmap(Pixels(8, 8, 0xFFFF0000));
    const auto draw = [&](Image& image) { return Made([&] { graphics.DrawImage(&image, 0, 0, 40, 40); }); };
    EXPECT_EQ(1U, draw(*bitmap));
    EXPECT_GT(Kept(), before);
    bitmap->SetPixel(0, 0, Color(0, 0, 255));
    EXPECT_EQ(1U, draw(*bitmap));
    EXPECT_EQ(0xFF0000FF, canvas.At(0, 0)) << "no stale copy";
    EXPECT_LE(Kept(), before + 40 * 40 * 4 + 1000) << "the old one is gone";
    std::unique_ptr<Bitmap> clone(bitmap->Clone());
    bitmap.reset();
    EXPECT_EQ(0U, draw(*clone));
    clone.reset();
    EXPECT_EQ(before, Kept());
}

TEST_F(ScaledPictures, OfAnAnimationAreMadeOncePerFrame) {
    const std::size_t before = Kept();
    {
        kit::MadeUpImage image({Pixels(4, 4, 0xFF000011), Pixels(4, 4, 0xFF000022)}, {1, 1});
        Canvas canvas(30, 30);
        Graphics graphics(canvas.Context());
        const std::uint64_t made = Made([&] {
            for (UINT tick = 0; tick < 10; ++tick) {
                image.SelectActiveFrame(&FrameDimensionTime, tick % 2);
                graphics.DrawImage(&image, 0, 0, 30, 30);
                EXPECT_EQ(tick % 2 ? 0xFF000022 : 0xFF000011, canvas.At(29, 29));
            }
        });
        EXPECT_EQ(2U, made);
    }
    EXPECT_EQ(before, Kept());
}

// One that takes the place of what is there is scaled into it, until that has cost as much as a copy.
TEST_F(ScaledPictures, OfBackgroundsAreKeptWhenTheyAreWantedAgain) {
    SetDrawingCacheLimit(std::size_t{8} << 20);
    Dice dice(35);
    const auto bitmap = MakeBitmap(kit::Scattered(dice, 40, 30));
    const auto draw = [&](Canvas& canvas, CompositingMode mode) {
        Graphics graphics(canvas.Context());
        graphics.SetCompositingMode(mode);
        graphics.DrawImage(bitmap.get(), Rect(-3, -2, 706, 404), 2, 1, 36, 28, UnitPixel);
    };
    Canvas expected(700, 400);
    draw(expected, CompositingModeSourceOver);
    Canvas canvas(700, 400);
    SetDrawingCacheLimit(0);
    SetDrawingCacheLimit(std::size_t{8} << 20);
    for (const std::uint64_t isKept : {0U, 0U, 1U, 1U}) {
        canvas.Scatter(dice);
        draw(canvas, CompositingModeSourceCopy);
        EXPECT_EQ(isKept, Kept() > 0 ? 1U : 0U);
        EXPECT_TRUE(Same(canvas.Get(), expected.Get()));
    }
    EXPECT_EQ(0U, Made([&] { draw(canvas, CompositingModeSourceCopy); }));
}

TEST_F(ScaledPictures, StayBelowTheLimit) {
    Dice dice(32);
    const auto bitmap = MakeBitmap(kit::Scattered(dice, 16, 16));
    Canvas canvas(700, 700);
    Graphics graphics(canvas.Context());
    for (int size = 20; size < 300; ++size) {
        graphics.DrawImage(bitmap.get(), 0, 0, size, size);
        ASSERT_LE(Kept(), kLimit);
    }
    EXPECT_EQ(0U, Made([&] { graphics.DrawImage(bitmap.get(), 0, 0, 299, 299); })) << "used last";
    EXPECT_EQ(1U, Made([&] { graphics.DrawImage(bitmap.get(), 0, 0, 20, 20); })) << "unused for longest";
    // One that cannot be kept at all is drawn all the same.
    EXPECT_EQ(1U, Made([&] { graphics.DrawImage(bitmap.get(), 0, 0, 650, 650); }));
    EXPECT_EQ(1U, Made([&] { graphics.DrawImage(bitmap.get(), 0, 0, 650, 650); }));
    SetDrawingCacheLimit(0);
    EXPECT_EQ(0U, Kept());
    EXPECT_EQ(1U, Made([&] { graphics.DrawImage(bitmap.get(), 0, 0, 20, 20); }));
    EXPECT_EQ(0U, Kept());
}

TEST_F(ScaledPictures, ShowTheSameWithAndWithoutACache) {
    Dice dice(33);
    for (int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        const int side = dice.Between(1, 30);
        const auto bitmap = MakeBitmap(kit::Scattered(dice, side, side, round % 3 == 0));
        const RECT from = dice.Rect(-3, 20);
        const RECT to = dice.Rect(-40, 60);
        ImageAttributes attributes;
        attributes.SetWrapMode(static_cast<WrapMode>(dice.Between(0, 4)),
                               Color(round % 2 ? 0x80112233U : 0U));
        const auto draw = [&] {
            Canvas canvas(50, 40);
            Dice background(static_cast<std::uint32_t>(round));
            canvas.Scatter(background);
            Graphics graphics(canvas.Context());
            graphics.SetInterpolationMode(round % 4 == 0 ? InterpolationModeHighQualityBicubic
                                                         : InterpolationModeDefault);
            graphics.DrawImage(bitmap.get(), Rect(to.left, to.top, to.right - to.left, to.bottom - to.top),
                               from.left, from.top, from.right - from.left, from.bottom - from.top, UnitPixel,
                               &attributes);
            return canvas.Get();
        };
        SetDrawingCacheLimit(0);
        const Pixels uncached = draw();
        SetDrawingCacheLimit(kLimit);
        EXPECT_TRUE(Same(draw(), uncached)) << "cold";
        EXPECT_TRUE(Same(draw(), uncached)) << "warm";
    }
}

}  // namespace
}  // namespace Gdiplus
