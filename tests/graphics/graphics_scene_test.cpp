// A partial repaint gives what a full one gives, whatever is drawn.
#include <vector>

#include "graphics/gdiplus_kit.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::Dice;
using kit::MakeBitmap;
using kit::Pixels;
using platform::Region;

constexpr int kWidth = 90;
constexpr int kHeight = 70;

// A list of random operations that can be replayed.
class Scene {
  public:
    explicit Scene(std::uint32_t seed) : seed_(seed) {
        Dice dice(seed);
        for (int i = 0; i < 3; ++i) {
            const int side = dice.Between(1, 40);
            images_.push_back(MakeBitmap(kit::Scattered(dice, side, side, i == 0)));
        }
    }

    void Draw(HDC context) const {
        Dice dice(seed_ + 77);
        Graphics graphics(context);
        graphics.Clear(Color(0xFF, 0x20, 0x40, 0x60));
        for (int i = 0; i < 14; ++i) {
            graphics.SetSmoothingMode(dice.Between(0, 1) ? SmoothingModeAntiAlias : SmoothingModeNone);
            graphics.SetInterpolationMode(dice.Between(0, 2) ? InterpolationModeDefault
                                                             : InterpolationModeHighQualityBicubic);
            if (dice.Between(0, 3) == 0) {
                const Matrix matrix(0.8F, dice.Between(0, 1) ? 0.3F : 0, dice.Between(0, 1) ? -0.2F : 0, 1.1F,
                                    3.3F, -2.7F);
                graphics.SetTransform(&matrix);
            } else {
                graphics.ResetTransform();
            }
            DrawOne(graphics, dice);
        }
    }

  private:
    static RectF AnyRect(Dice& dice) {
        const auto coordinate = [&](int low, int high) {
            return static_cast<REAL>(dice.Between(low * 4, high * 4)) / 4;
        };
        const REAL x = coordinate(-20, kWidth);
        const REAL y = coordinate(-20, kHeight);
        return RectF(x, y, coordinate(0, 80), coordinate(0, 80));
    }

    void DrawOne(Graphics& graphics, Dice& dice) const {
        const RectF rect = AnyRect(dice);
        const Color color(dice.Next());
        const SolidBrush brush(color);
        const Pen pen(color, static_cast<REAL>(dice.Between(0, 5)));
        Image* const image = images_[static_cast<std::size_t>(dice.Between(0, 2))].get();
        GraphicsPath path(dice.Between(0, 1) ? FillModeAlternate : FillModeWinding);
        switch (dice.Between(0, 9)) {
            case 0:
                graphics.FillRectangle(&brush, rect);
                break;
            case 1:
                graphics.DrawRectangle(&pen, rect);
                break;
            case 2:
                graphics.FillEllipse(&brush, rect);
                break;
            case 3:
                graphics.DrawLine(&pen, rect.X, rect.Y, rect.Width, rect.Height);
                break;
            case 4:
                path.AddEllipse(rect);
                path.AddRectangle(AnyRect(dice));
                graphics.FillPath(&brush, &path);
                break;
            case 5:
                path.AddEllipse(rect);
                graphics.DrawPath(&pen, &path);
                break;
            case 6:
                graphics.DrawImage(image, static_cast<INT>(rect.X), static_cast<INT>(rect.Y));
                break;
            default:
                graphics.DrawImage(image, rect, static_cast<REAL>(dice.Between(-4, 20)),
                                   static_cast<REAL>(dice.Between(-4, 20)),
                                   static_cast<REAL>(dice.Between(1, 40)),
                                   static_cast<REAL>(dice.Between(1, 40)), UnitPixel);
                break;
        }
    }

    std::uint32_t seed_;
    std::vector<std::unique_ptr<Bitmap>> images_;
};

TEST(Scenes, PartialRepaintEqualsFullRepaint) {
    for (std::uint32_t seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        const Scene scene(seed);
        Canvas full(kWidth, kHeight);
        scene.Draw(full.Context());

        Dice dice(seed);
        Region clip;
        for (int i = dice.Between(1, 4); i > 0; --i)
            clip.Add(dice.Rect(-5, 60));
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
