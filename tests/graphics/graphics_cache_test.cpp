// Scaled pictures are made once, go with their source, and show what they would show without a cache.
#include "graphics/gdiplus_kit.h"
#include "platform/graphics/counters.h"
#include "platform/graphics/scaled_cache.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::MakeBitmap;
using kit::Pixels;
using kit::Random;

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
    Random random(31);
    const auto bitmap = MakeBitmap(random.Scattered(8, 8));
    Canvas canvas(64, 64);
    Graphics graphics(canvas.Context());
    ImageAttributes mirrored;
    mirrored.SetWrapMode(WrapModeTileFlipXY);
    ImageAttributes tiled;
    tiled.SetWrapMode(WrapModeTile);
    const auto draw = [&](const Rect& to, int source, const ImageAttributes* attributes = nullptr) {
        return Made(
            [&] { graphics.DrawImage(bitmap.get(), to, 0, 0, source, source, UnitPixel, attributes); });
    };
    const Rect there(5, 3, 20, 20);
    EXPECT_EQ(1U, draw(Rect(0, 3, 20, 20), 8));
    EXPECT_EQ(0U, draw(Rect(0, 3, 20, 20), 8));
    EXPECT_EQ(0U, draw(there, 8)) << "elsewhere";
    EXPECT_EQ(0U, draw(Rect(55, 3, 20, 20), 8)) << "partly outside";
    EXPECT_EQ(0U, draw(there, 8, &mirrored)) << "the same pixels";
    EXPECT_EQ(1U, draw(there, 8, &tiled));
    EXPECT_EQ(1U, draw(Rect(5, 3, 21, 21), 8));
    EXPECT_EQ(1U, draw(there, 7));
    EXPECT_EQ(0U, draw(Rect(5, 3, 8, 8), 8)) << "unscaled";
    graphics.SetInterpolationMode(InterpolationModeNearestNeighbor);
    EXPECT_EQ(1U, draw(there, 8));
    graphics.SetInterpolationMode(InterpolationModeBilinear);
    EXPECT_EQ(0U, draw(there, 8));
    IntersectClipRect(canvas.Context(), 9, 9, 11, 11);
    EXPECT_EQ(0U, draw(there, 7));
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
    Random random(35);
    const auto bitmap = MakeBitmap(random.Scattered(40, 30));
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
        Put(canvas.Surface(), random.Scattered(700, 400));
        draw(canvas, CompositingModeSourceCopy);
        EXPECT_EQ(isKept, Kept() > 0 ? 1U : 0U);
        EXPECT_TRUE(Same(canvas.Get(), expected.Get()));
    }
    EXPECT_EQ(0U, Made([&] { draw(canvas, CompositingModeSourceCopy); }));
}

TEST_F(ScaledPictures, StayBelowTheLimit) {
    Random random(32);
    const auto bitmap = MakeBitmap(random.Scattered(16, 16));
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
    Random random(33);
    for (int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        const int side = random.Between(1, 30);
        const auto bitmap = MakeBitmap(random.Scattered(side, side, round % 3 == 0));
        const Pixels background = random.Scattered(50, 40);
        const Rect from = kit::RectOf(random.Rect(-3, 20));
        const Rect to = kit::RectOf(random.Rect(-40, 60));
        ImageAttributes attributes;
        attributes.SetWrapMode(static_cast<WrapMode>(random.Between(0, 4)),
                               Color(round % 2 ? 0x80112233U : 0U));
        const auto draw = [&](Graphics& graphics) {
            graphics.SetInterpolationMode(round % 4 == 0 ? InterpolationModeHighQualityBicubic
                                                         : InterpolationModeDefault);
            graphics.DrawImage(bitmap.get(), to, from.X, from.Y, from.Width, from.Height, UnitPixel,
                               &attributes);
        };
        SetDrawingCacheLimit(0);
        const Pixels uncached = DrawnOn(background, draw);
        SetDrawingCacheLimit(kLimit);
        EXPECT_TRUE(Same(DrawnOn(background, draw), uncached)) << "cold";
        EXPECT_TRUE(Same(DrawnOn(background, draw), uncached)) << "warm";
    }
}

}  // namespace
}  // namespace Gdiplus
