// Rectangles, lines, ellipses and paths.
#include <cmath>

#include "graphics/gdiplus_kit.h"
#include "platform/graphics/pixel_rows.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::Drawn;
using kit::kInfinity;
using kit::kNan;
using kit::Pixels;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kHalf = 0x80008000;  // premultiplied
const Color kHalfGreen(0x80, 0, 0xFF, 0);

const SolidBrush kRedBrush(Color(0xFF, 0xFF, 0, 0));
const SolidBrush kGreenBrush(kHalfGreen);

Pixels Framed(int side, const CRect& outer, const CRect& inner, std::uint32_t pixel) {
    return Pixels(side, side, {{outer, pixel}, {inner, 0}});
}

TEST(FillRectangle, OnWholePixelsIsExactWithAndWithoutSmoothing) {
    for (const SmoothingMode mode : {SmoothingModeDefault, SmoothingModeAntiAlias}) {
        const Pixels drawn = Drawn(12, 12, [&](Graphics& graphics) {
            graphics.SetSmoothingMode(mode);
            EXPECT_EQ(Ok, graphics.FillRectangle(&kGreenBrush, 2, 3, 5, 4));
            EXPECT_EQ(Ok, graphics.FillRectangle(&kGreenBrush, RectF(7, 3, 100, 4)));
            EXPECT_EQ(Ok, graphics.FillRectangle(&kGreenBrush, Rect(2, 3, 1, 1)));
        });
        std::uint32_t twice = kHalf;
        platform::BlendColorRow(&twice, kHalf, 1);  // over, not instead
        EXPECT_TRUE(Same(drawn, Pixels(12, 12, {{CRect(2, 3, 12, 7), kHalf}, {CRect(2, 3, 3, 4), twice}})));
    }
}

TEST(FillRectangle, FractionsAreRoundedOrSmoothed) {
    EXPECT_TRUE(Same(
        Drawn(8, 8, [](Graphics& graphics) { graphics.FillRectangle(&kRedBrush, RectF(1.4F, 1.5F, 3, 3)); }),
        Pixels(8, 8, {{CRect(1, 2, 4, 5), kRed}})));
    const Pixels smooth = Drawn(8, 8, [](Graphics& graphics) {
        graphics.SetSmoothingMode(SmoothingModeAntiAlias);
        graphics.FillRectangle(&kRedBrush, RectF(1.5F, 1, 3, 3));
    });
    EXPECT_NEAR(0x80, smooth.At(1, 1) >> 24, 1);
    EXPECT_EQ(kRed, smooth.At(2, 1));
    EXPECT_NEAR(0x80, smooth.At(4, 3) >> 24, 1);
    EXPECT_EQ(0U, smooth.At(5, 1));
    EXPECT_EQ(0U, smooth.At(2, 4));
}

TEST(Shapes, RefuseWhatIsNone) {
    const SolidBrush* const brush = &kGreenBrush;
    const Pen pen(kHalfGreen);
    const Pixels drawn = Drawn(8, 8, [&](Graphics& graphics) {
        EXPECT_EQ(Ok, graphics.FillRectangle(brush, 1, 1, 0, 5));
        EXPECT_EQ(Ok, graphics.FillRectangle(brush, 4, 4, -2, -2));
        EXPECT_EQ(Ok, graphics.FillEllipse(brush, RectF(4, 4, -3, 2)));
        EXPECT_EQ(Ok, graphics.DrawRectangle(&pen, 3, 3, -1, 2));
        for (const Status status :
             {graphics.FillRectangle(nullptr, 1, 1, 2, 2),
              graphics.FillRectangle(brush, kNan, 1.0F, 2.0F, 2.0F),
              graphics.FillRectangle(brush, 0.0F, 0.0F, kInfinity, 2.0F),
              graphics.FillEllipse(brush, RectF(0, 0, kNan, 2)),
              graphics.FillEllipse(brush, RectF(0, 0, 5e8F, 5e8F)),
              graphics.DrawRectangle(nullptr, 1, 1, 2, 2),
              graphics.DrawRectangle(&pen, 0.0F, kNan, 2.0F, 2.0F),
              graphics.DrawLine(&pen, 0.0F, 0.0F, kInfinity, 0.0F), graphics.DrawLine(nullptr, 0, 0, 1, 0),
              graphics.FillPath(brush, nullptr), graphics.DrawPath(&pen, nullptr)})
            EXPECT_EQ(InvalidParameter, status);
    });
    EXPECT_TRUE(Same(drawn, Pixels(8, 8)));
}

TEST(DrawRectangle, CoversEveryPixelOfItsFrameOnce) {
    const struct {
        RectF rect;
        REAL width;
        CRect outer, inner;
        SmoothingMode mode = SmoothingModeDefault;
    } cases[] = {
        {{2, 3, 6, 5}, 1, CRect(2, 3, 9, 9), CRect(3, 4, 8, 8)},
        {{2, 3, 6, 5}, 0, CRect(2, 3, 9, 9), CRect(3, 4, 8, 8)},
        {{2.3F, 3.4F, 6, 5}, 1, CRect(2, 3, 9, 9), CRect(3, 4, 8, 8)},
        {{2.5F, 3.6F, 6, 5}, 1, CRect(2, 4, 9, 10), CRect(3, 5, 8, 9)},
        {{4, 4, 6, 6}, 2, CRect(3, 3, 11, 11), CRect(5, 5, 9, 9)},
        {{4, 4, 6, 6}, 3, CRect(3, 3, 12, 12), CRect(6, 6, 9, 9)},
        {{4, 4, 1, 1}, 1, CRect(4, 4, 6, 6), CRect()},
        {{4, 4, 2, 2}, 5, CRect(2, 2, 9, 9), CRect()},
        {{-3, -3, 40, 8}, 1, CRect(-3, -3, 38, 6), CRect(-2, -2, 37, 5)},
        // On both sides of its edge.
        {{4, 4, 4, 4}, 2, CRect(3, 3, 9, 9), CRect(5, 5, 7, 7), SmoothingModeAntiAlias},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.rect.X << " " << c.rect.Y << " width " << c.width);
        const Pen pen(kHalfGreen, c.width);
        const Pixels drawn = Drawn(14, 14, [&](Graphics& graphics) {
            graphics.SetSmoothingMode(c.mode);
            EXPECT_EQ(Ok, graphics.DrawRectangle(&pen, c.rect));
        });
        EXPECT_TRUE(Same(drawn, Framed(14, c.outer, c.inner, kHalf)));
    }
}

TEST(DrawLine, ThinLinesHoldBothEndsAndOnePixelPerStep) {
    const Pen thin(kHalfGreen);
    const struct {
        int x1, y1, x2, y2;
        int pixels;
    } cases[] = {{1, 1, 8, 1, 8},  {8, 1, 1, 1, 8},  {3, 2, 3, 9, 8}, {1, 1, 8, 8, 8},
                 {0, 0, 9, 3, 10}, {9, 9, 2, 0, 10}, {4, 4, 4, 4, 1}, {-5, 5, 30, 5, 10}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Pixels drawn = Drawn(10, 10, [&](Graphics& graphics) {
            EXPECT_EQ(Ok, graphics.DrawLine(&thin, REAL(c.x1), REAL(c.y1), REAL(c.x2), REAL(c.y2)));
        });
        int count = 0;
        for (int y = 0; y < 10; ++y)
            for (int x = 0; x < 10; ++x) {
                if (drawn.At(x, y) == 0) continue;
                ++count;
                EXPECT_EQ(kHalf, drawn.At(x, y));
                const double length = std::hypot(c.x2 - c.x1, c.y2 - c.y1);
                const double off = (c.x2 - c.x1) * (y - c.y1) - (c.y2 - c.y1) * (x - c.x1);
                EXPECT_LE(std::abs(off), 0.71 * length);
            }
        EXPECT_EQ(c.pixels, count);
        EXPECT_TRUE(!drawn.Has(c.x1, c.y1) || drawn.At(c.x1, c.y1) == kHalf);
    }
    const Pen wide(kHalfGreen, 3);
    EXPECT_TRUE(Same(Drawn(10, 10, [&](Graphics& graphics) { graphics.DrawLine(&wide, 2, 5, 8, 5); }),
                     Pixels(10, 10, {{CRect(2, 4, 8, 7), kHalf}})));
    const Canvas canvas(10, 10);
    EXPECT_EQ(Ok, Graphics(canvas.Context()).DrawLine(&thin, -9e8F, -9e8F, 9e8F, 9e8F)) << "and soon";
}

TEST(FillEllipse, HoldsThePixelsWhoseCentresAreInside) {
    const Pixels drawn =
        Drawn(22, 16, [](Graphics& graphics) { graphics.FillEllipse(&kGreenBrush, RectF(1, 2, 20, 12)); });
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 22; ++x) {
            const double distance = std::hypot((x + 0.5 - 11) / 10, (y + 0.5 - 8) / 6);
            if (std::abs(distance - 1) < 0.01) continue;
            EXPECT_EQ(distance < 1 ? kHalf : 0U, drawn.At(x, y)) << x << " " << y;
        }
}

TEST(Path, FillsByItsModeAndMeasuresItself) {
    for (const FillMode mode : {FillModeAlternate, FillModeWinding}) {
        GraphicsPath path(mode);
        RectF bounds;
        EXPECT_EQ(Ok, path.GetBounds(&bounds));
        EXPECT_EQ(0.0F, bounds.Width);
        EXPECT_EQ(Ok, path.AddRectangle(RectF(1, 1, 8, 8)));
        EXPECT_EQ(Ok, path.AddRectangle(RectF(3, 3, 4, 4)));
        EXPECT_EQ(Ok, path.AddRectangle(RectF(50, 50, 0, 4)));
        EXPECT_EQ(Ok, path.GetBounds(&bounds));
        EXPECT_EQ(1.0F, bounds.X);
        EXPECT_EQ(9.0F, bounds.GetBottom());
        EXPECT_TRUE(Same(
            Drawn(10, 10, [&](Graphics& graphics) { graphics.FillPath(&kRedBrush, &path); }),
            Framed(10, CRect(1, 1, 9, 9), mode == FillModeAlternate ? CRect(3, 3, 7, 7) : CRect(), kRed)));
    }
    GraphicsPath path;
    EXPECT_EQ(InvalidParameter, path.AddEllipse(RectF(0, 0, kInfinity, 1)));
    EXPECT_EQ(InvalidParameter, path.AddRectangle(RectF(9e6F, 0, 1, 1)));
    EXPECT_EQ(InvalidParameter, path.GetBounds(nullptr));
    EXPECT_EQ(Ok, path.AddEllipse(RectF(2, 4, 6, 3)));
    RectF bounds;
    path.GetBounds(&bounds);
    EXPECT_NEAR(2, bounds.X, 0.02);
    EXPECT_NEAR(3, bounds.Height, 0.02);
}

TEST(Path, IsScaledByTheWorldTransformAndStrokedInWorldUnits) {
    const Pen pen(Color(0xFF, 0xFF, 0, 0), 6);
    GraphicsPath path;
    path.AddRectangle(RectF(12, 12, 18, 18));
    Canvas canvas(16, 16);
    Graphics graphics(canvas.Context());
    graphics.SetSmoothingMode(SmoothingModeAntiAlias);
    const Matrix third(1 / 3.0F, 0, 0, 1 / 3.0F, 1, 0);
    EXPECT_EQ(Ok, graphics.SetTransform(&third));
    EXPECT_EQ(Ok, graphics.DrawPath(&pen, &path));
    EXPECT_EQ(kRed, canvas.At(4, 3));
    EXPECT_EQ(kRed, canvas.At(11, 10));
    EXPECT_NEAR(0, canvas.At(8, 7) >> 24, 3);
    EXPECT_NEAR(0, canvas.At(3, 7) >> 24, 3);
    EXPECT_EQ(Ok, graphics.ResetTransform());
    const Matrix flat(1, 1, 1, 1, 0, 0);
    EXPECT_EQ(InvalidParameter, graphics.SetTransform(&flat));
    EXPECT_EQ(InvalidParameter, graphics.SetTransform(nullptr));
}

TEST(Shapes, ThroughCairoHaveTheSameColourAsThroughOurLoops) {
    kit::Random random(41);
    for (int round = 0; round < 400; ++round) {
        const Color color(random.Next());
        const SolidBrush brush(color);
        const Pixels drawn = Drawn(9, 9, [&](Graphics& graphics) {
            graphics.SetSmoothingMode(SmoothingModeAntiAlias);
            graphics.FillEllipse(&brush, RectF(0, 0, 9, 9));
        });
        ASSERT_EQ(platform::Premultiply(color.GetValue()), drawn.At(4, 4)) << std::hex << color.GetValue();
    }
}

}  // namespace
}  // namespace Gdiplus
