// A partial repaint gives what a full one gives, whatever is drawn.
#include <array>

#include "graphics/gdiplus_kit.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::MakeBitmap;
using kit::Pixels;
using kit::Random;
using platform::Region;

constexpr int kWidth = 90;
constexpr int kHeight = 70;

// A list of random operations that can be replayed.
class Scene {
  public:
    explicit Scene(std::uint32_t seed) : seed_(seed) {
        Random random(seed);
        for (std::unique_ptr<Bitmap>& image : images_) {
            const int side = random.Between(1, 40);
            image = MakeBitmap(random.Scattered(side, side, !images_[0]));
        }
    }

    void Draw(HDC context) const {
        Random random(seed_ + 77);
        Graphics graphics(context);
        graphics.Clear(Color(0xFF, 0x20, 0x40, 0x60));
        for (int i = 0; i < 14; ++i) {
            graphics.SetSmoothingMode(random.Between(0, 1) ? SmoothingModeAntiAlias : SmoothingModeNone);
            graphics.SetInterpolationMode(random.Between(0, 2) ? InterpolationModeDefault
                                                               : InterpolationModeHighQualityBicubic);
            if (random.Between(0, 3) == 0) {
                const Matrix matrix(0.8F, random.Between(0, 1) ? 0.3F : 0, random.Between(0, 1) ? -0.2F : 0,
                                    1.1F, 3.3F, -2.7F);
                graphics.SetTransform(&matrix);
            } else {
                graphics.ResetTransform();
            }
            DrawOne(graphics, random);
        }
    }

  private:
    static RectF AnyRect(Random& random) {
        const auto coordinate = [&](int low, int high) {
            return static_cast<REAL>(random.Between(low * 4, high * 4)) / 4;
        };
        return RectF(coordinate(-20, kWidth), coordinate(-20, kHeight), coordinate(0, 80), coordinate(0, 80));
    }

    void DrawOne(Graphics& graphics, Random& random) const {
        const RectF rect = AnyRect(random);
        const Color color(random.Next());
        const SolidBrush brush(color);
        const Pen pen(color, static_cast<REAL>(random.Between(0, 5)));
        Image* const image = images_[static_cast<std::size_t>(random.Between(0, 2))].get();
        GraphicsPath path(random.Between(0, 1) ? FillModeAlternate : FillModeWinding);
        path.AddEllipse(rect);
        switch (random.Between(0, 9)) {
            case 0:
                return (void)graphics.FillRectangle(&brush, rect);
            case 1:
                return (void)graphics.DrawRectangle(&pen, rect);
            case 2:
                return (void)graphics.FillEllipse(&brush, rect);
            case 3:
                return (void)graphics.DrawLine(&pen, rect.X, rect.Y, rect.Width, rect.Height);
            case 4:
                path.AddRectangle(AnyRect(random));
                return (void)graphics.FillPath(&brush, &path);
            case 5:
                return (void)graphics.DrawPath(&pen, &path);
            case 6:
                return (void)graphics.DrawImage(image, static_cast<INT>(rect.X), static_cast<INT>(rect.Y));
            default:
                const RectF from = AnyRect(random);
                graphics.DrawImage(image, rect, from.X / 5, from.Y / 5, from.Width / 2 + 1,
                                   from.Height / 2 + 1, UnitPixel);
        }
    }

    std::uint32_t seed_;
    std::array<std::unique_ptr<Bitmap>, 3> images_;
};

TEST(Scenes, PartialRepaintEqualsFullRepaint) {
    for (std::uint32_t seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        const Scene scene(seed);
        Canvas full(kWidth, kHeight);
        scene.Draw(full.Context());

        Random random(seed);
        Region clip;
        for (int i = random.Between(1, 4); i > 0; --i)
            clip.Add(random.Rect(-5, 60));
        Canvas partial(kWidth, kHeight);
        partial.Clip(clip);
        scene.Draw(partial.Context());
        Pixels expected(kWidth, kHeight);
        const Pixels all = full.Get();
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                if (clip.Contains(x, y)) expected.At(x, y) = all.At(x, y);
        ASSERT_TRUE(Same(partial.Get(), expected));

        // The same through a window's context with an origin of its own, and onto an image.
        const auto surface = platform::Surface::Create(kWidth + 7, kHeight + 9);
        Region shifted = clip;
        shifted.Offset(7, 9);
        shifted.Intersect(CRect(7, 9, kWidth + 7, kHeight + 9));
        const HDC window = platform::MakeDeviceContext(surface, {7, 9}, shifted);
        scene.Draw(window);
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                ASSERT_EQ(expected.At(x, y), surface->Row(y + 9)[x + 7]) << x << " " << y;
        Region missed = shifted;
        missed.Subtract(platform::DrawnRegion(window));
        EXPECT_TRUE(missed.IsEmpty()) << "all that was drawn is reported";
        platform::DeleteDeviceContext(window);
    }
}

}  // namespace
}  // namespace Gdiplus
