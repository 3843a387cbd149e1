// Drawing as programs write it, held against pixels.
#include <gdiplus.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

using namespace Gdiplus;

namespace {

constexpr int kSide = 40;

struct Spot {
    int x, y;
    ARGB color;
};

struct Scene {
    const char* name;
    std::function<Status(Graphics&)> draw;
    std::vector<Spot> spots;  // 0: nothing drawn there
};

const SolidBrush kRed(Color::Red);
const Pen kBlue(Color(Color::Blue), 3);

std::vector<Scene> Scenes() {
    const Point corners[] = {{5, 5}, {35, 5}, {5, 35}};
    const Point star[] = {{0, 0},   {40, 0},  {40, 40}, {0, 40},  {0, 0},
                          {10, 10}, {30, 10}, {30, 30}, {10, 30}, {10, 10}};
    return {
        {"FillEllipse",
         [](Graphics& g) { return g.FillEllipse(&kRed, 10, 10, 20, 10); },
         {{20, 15, Color::Red}, {11, 15, Color::Red}, {10, 10, 0}, {20, 21, 0}}},
        {"DrawEllipse",
         [](Graphics& g) { return g.DrawEllipse(&kBlue, Rect(5, 5, 30, 30)); },
         {{20, 5, Color::Blue}, {35, 20, Color::Blue}, {20, 20, 0}, {5, 5, 0}}},
        // From the right, clockwise: the lower right quarter.
        {"FillPie",
         [](Graphics& g) { return g.FillPie(&kRed, Rect(0, 0, 40, 40), 0, 90); },
         {{25, 25, Color::Red}, {15, 25, 0}, {25, 15, 0}, {37, 37, 0}}},
        // Angles are on the ellipse: 45 degrees of a flat one points at its corner's direction.
        {"FillPie, flat",
         [](Graphics& g) { return g.FillPie(&kRed, Rect(0, 10, 40, 20), 0, 45); },
         {{30, 22, Color::Red}, {23, 22, Color::Red}, {21, 25, 0}, {20, 28, 0}}},
        {"DrawArc",
         [](Graphics& g) { return g.DrawArc(&kBlue, 5, 5, 30, 30, 180, 90); },
         {{5, 18, Color::Blue}, {18, 5, Color::Blue}, {35, 20, 0}, {20, 35, 0}}},
        {"DrawArc, backwards",
         [](Graphics& g) { return g.DrawArc(&kBlue, RectF(5, 5, 30, 30), 0, -90); },
         {{35, 19, Color::Blue}, {21, 5, Color::Blue}, {5, 20, 0}, {20, 35, 0}}},
        {"DrawArc, whole",
         [](Graphics& g) { return g.DrawArc(&kBlue, RectF(5, 5, 30, 30), 10, 400); },
         {{35, 20, Color::Blue}, {20, 5, Color::Blue}, {5, 20, Color::Blue}, {20, 35, Color::Blue}}},
        {"FillPolygon",
         [=](Graphics& g) { return g.FillPolygon(&kRed, corners, 3); },
         {{10, 10, Color::Red}, {30, 30, 0}, {3, 10, 0}}},
        {"FillPolygon, alternate",
         [=](Graphics& g) { return g.FillPolygon(&kRed, star, 10); },
         {{5, 20, Color::Red}, {20, 20, 0}}},
        {"FillPolygon, winding",
         [=](Graphics& g) { return g.FillPolygon(&kRed, star, 10, FillModeWinding); },
         {{5, 20, Color::Red}, {20, 20, Color::Red}}},
        {"DrawPolygon",
         [=](Graphics& g) { return g.DrawPolygon(&kBlue, corners, 3); },
         {{20, 5, Color::Blue}, {5, 20, Color::Blue}, {20, 20, Color::Blue}, {10, 10, 0}}},
        {"DrawLines",
         [=](Graphics& g) { return g.DrawLines(&kBlue, corners, 3); },
         {{20, 5, Color::Blue}, {20, 20, Color::Blue}, {5, 15, 0}}},
        {"a closed figure",
         [](Graphics& g) {
             GraphicsPath path;
             path.AddArc(Rect(0, 0, 40, 40), 180, 180);
             path.CloseFigure();
             path.AddLine(0.0F, 30.0F, 40.0F, 30.0F);
             path.AddLine(40.0F, 40.0F, 0.0F, 40.0F);
             return g.FillPath(&kRed, &path);
         },
         {{20, 10, Color::Red}, {20, 25, 0}, {20, 35, Color::Red}}},
        {"DrawBezier",
         [](Graphics& g) {
             return g.DrawBezier(&kBlue, {0, 20}, {13, 20}, {26, 20}, {39, 20});
         },
         {{20, 20, Color::Blue}, {20, 25, 0}}},
        {"a gradient across",
         [](Graphics& g) {
             LinearGradientBrush brush(Rect(0, 0, 40, 40), Color::Black, Color::White,
                                       LinearGradientModeHorizontal);
             return g.FillRectangle(&brush, 0, 0, 40, 40);
         },
         {{0, 9, 0xFF030303}, {20, 30, 0xFF838383}, {39, 20, 0xFFFCFCFC}}},
        {"a gradient with stops, at an angle",
         [](Graphics& g) {
             LinearGradientBrush brush(RectF(0, 0, 40, 40), Color(), Color(), 90.0F);
             const Color colors[] = {Color::Red, Color::Lime, Color::Blue};
             const REAL places[] = {0, 0.5F, 1};
             const REAL wrong[] = {0, 0.5F, 0.4F};
             if (brush.SetInterpolationColors(colors, wrong, 3) == Ok) return GenericError;
             brush.SetInterpolationColors(colors, places, 3);
             return g.FillEllipse(&brush, RectF(0, 0, 40, 40));
         },
         {{20, 1, 0xFFEC1300}, {20, 20, 0xFF00F906}, {20, 38, 0xFF0013EC}, {0, 0, 0}}},
        // The diagonal from corner to corner; beyond it the brush begins again, or turns back.
        {"a diagonal that repeats",
         [](Graphics& g) {
             LinearGradientBrush brush(Rect(0, 0, 20, 20), Color::Black, Color::White,
                                       LinearGradientModeForwardDiagonal);
             return g.FillRectangle(&brush, Rect(0, 0, 40, 40));
         },
         {{10, 10, 0xFF868686}, {0, 0, 0xFF060606}, {30, 30, 0xFF868686}, {20, 20, 0xFF060606}}},
        {"a gradient that turns back",
         [](Graphics& g) {
             LinearGradientBrush brush(PointF(0, 0), PointF(20, 0), Color::Black, Color::White);
             brush.SetWrapMode(WrapModeTileFlipX);
             return g.FillRectangle(&brush, Rect(0, 0, 40, 40));
         },
         {{19, 0, 0xFFF9F9F9}, {20, 0, 0xFFF9F9F9}, {39, 0, 0xFF060606}}},
        {"transforms in order",
         [](Graphics& g) {
             g.TranslateTransform(20, 20);
             g.RotateTransform(90);
             g.ScaleTransform(2, 1);
             return g.FillRectangle(&kRed, 0, -10, 8, 5);  // 5 wide from x 25, 16 high from y 20
         },
         {{27, 21, Color::Red}, {27, 35, Color::Red}, {22, 25, 0}, {27, 37, 0}}},
    };
}

bool IsNear(ARGB a, ARGB b) {
    for (int shift = 0; shift < 32; shift += 8)
        if (std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)) > 2)
            return false;
    return true;
}

TEST(PortingDrawing, ShapesAndGradients) {
    ULONG_PTR token = 0;
    GdiplusStartupInput input;
    ASSERT_EQ(GdiplusStartup(&token, &input, NULL), Ok);
    for (const Scene& scene : Scenes())
        for (const SmoothingMode mode : {SmoothingModeNone, SmoothingModeHighQuality}) {
            SCOPED_TRACE(scene.name);
            Bitmap picture(kSide, kSide);
            Graphics graphics(&picture);
            graphics.SetSmoothingMode(mode);
            EXPECT_EQ(scene.draw(graphics), Ok);
            for (const Spot& spot : scene.spots) {
                Color color;
                picture.GetPixel(spot.x, spot.y, &color);
                EXPECT_TRUE(IsNear(color.GetValue(), spot.color))
                    << spot.x << "," << spot.y << std::hex << " is " << color.GetValue() << ", not "
                    << spot.color;
            }
        }
    GdiplusShutdown(token);
}

TEST(PortingDrawing, BadShapesAreRefused) {
    Bitmap picture(4, 4);
    Graphics graphics(&picture);
    const Point two[] = {{0, 0}, {1, 1}};
    EXPECT_EQ(graphics.FillPolygon(&kRed, two, 2), InvalidParameter);
    EXPECT_EQ(graphics.DrawLines(&kBlue, two, 1), InvalidParameter);
    EXPECT_EQ(graphics.DrawArc(&kBlue, RectF(0, 0, 4, 4), NAN, 5), InvalidParameter);
    const LinearGradientBrush none(PointF(1, 1), PointF(1, 1), Color::Red, Color::Blue);
    EXPECT_EQ(graphics.FillRectangle(&none, 0, 0, 4, 4), InvalidParameter);
    std::unique_ptr<Bitmap> file(Bitmap::FromFile(_T(PORTING_DATA "/pic.png")));
    EXPECT_EQ(file->GetLastStatus(), Ok);
    EXPECT_GT(file->GetWidth(), 0U);
}

// A memory context with a picture of four quarters, and one to draw on.
class PortingBlocks : public testing::Test {
  protected:
    PortingBlocks() {
        SelectObject(from_, fromBitmap_);
        SelectObject(to_, toBitmap_);
        Graphics graphics(from_);
        const ARGB colors[] = {Color::Red, Color::Lime, Color::Blue, Color::White};
        for (int i = 0; i < 4; ++i) {
            const SolidBrush brush(colors[i]);
            graphics.FillRectangle(&brush, i % 2, i / 2, 1, 1);
        }
    }
    ~PortingBlocks() override {
        for (const HDC context : {from_, to_})
            DeleteDC(context);
        DeleteObject(fromBitmap_);
        DeleteObject(toBitmap_);
    }
    ARGB At(int x, int y) const {
        Bitmap picture(toBitmap_);
        Color color;
        picture.GetPixel(x, y, &color);
        return color.GetValue();
    }
    bool HasInk(const CRect& part, ARGB background) const {
        for (int y = part.top; y < part.bottom; ++y)
            for (int x = part.left; x < part.right; ++x)
                if (At(x, y) != background) return true;
        return false;
    }

    HDC from_ = CreateCompatibleDC(HDC()), to_ = CreateCompatibleDC(HDC());
    HBITMAP fromBitmap_ = CreateCompatibleBitmap(from_, 2, 2),
            toBitmap_ = CreateCompatibleBitmap(to_, 120, 60);
};

TEST_F(PortingBlocks, StretchBlt) {
    EXPECT_TRUE(StretchBlt(to_, 10, 10, 20, 10, from_, 0, 0, 2, 2, SRCCOPY));
    EXPECT_EQ(At(19, 14), Color::Red);
    EXPECT_EQ(At(20, 14), Color::Lime);
    EXPECT_EQ(At(19, 15), Color::Blue);
    EXPECT_EQ(At(29, 19), Color::White);
    EXPECT_EQ(At(30, 15), 0U);
    // Turned over in x: leftwards from 60.
    EXPECT_TRUE(StretchBlt(to_, 60, 0, -20, 10, from_, 0, 0, 2, 2, SRCCOPY));
    EXPECT_EQ(At(41, 1), Color::Lime);
    EXPECT_EQ(At(58, 1), Color::Red);
    // The same cut off by the edge: what is left shows what it would show whole.
    EXPECT_TRUE(StretchBlt(to_, 126, 20, -20, 10, from_, 0, 0, 2, 2, SRCCOPY));
    EXPECT_EQ(At(115, 21), Color::Lime);
    EXPECT_EQ(At(119, 21), Color::Red);
    // What lies outside the source leaves the destination alone.
    EXPECT_TRUE(StretchBlt(to_, 0, 30, 40, 20, from_, 1, 1, 2, 2, SRCCOPY));
    EXPECT_EQ(At(10, 35), Color::White);
    EXPECT_EQ(At(30, 35), 0U);
    EXPECT_EQ(SetStretchBltMode(to_, HALFTONE), COLORONCOLOR);
    EXPECT_TRUE(StretchBlt(to_, 100, 0, 1, 1, from_, 0, 0, 2, 1, SRCCOPY));
    EXPECT_TRUE(IsNear(At(100, 0), 0xFF808000)) << std::hex << At(100, 0);
    EXPECT_FALSE(StretchBlt(to_, 0, 0, 1, 2, from_, 0, 0, 1, 1, SRCCOPY + 1));
}

// Within itself, to the right, where the clip has two parts side by side.
TEST_F(PortingBlocks, BitBltReadsBeforeItWrites) {
    std::vector<ARGB> before;
    for (int x = 0; x < 12; ++x) {
        const SolidBrush brush(Color(0xFF, static_cast<BYTE>(20 * x), 0, 0));
        Graphics(to_).FillRectangle(&brush, x, 0, 1, 1);
        before.push_back(At(x, 0));
    }
    const HRGN clip = CreateRectRgn(0, 0, 6, 1), right = CreateRectRgn(7, 0, 12, 1);
    CombineRgn(clip, clip, right, RGN_OR);
    SelectClipRgn(to_, clip);
    EXPECT_TRUE(BitBlt(to_, 3, 0, 9, 1, to_, 0, 0, SRCCOPY));
    for (int x = 3; x < 12; ++x)
        EXPECT_EQ(At(x, 0), before[static_cast<std::size_t>(x == 6 ? x : x - 3)]) << x;
    DeleteObject(clip);
    DeleteObject(right);
}

// A part without a gap says nothing of a larger one from the same corner.
TEST_F(PortingBlocks, PartsOfOnePictureAreBlendedEachAsItIs) {
    Bitmap picture(60, 60);
    const SolidBrush half(Color(0x80, 0xFF, 0, 0));
    Graphics(&picture).FillRectangle(&kRed, 2, 2, 45, 45);
    Graphics(&picture).FillRectangle(&half, 47, 47, 13, 13);
    Graphics graphics(to_);
    graphics.Clear(Color(Color::Blue));
    graphics.DrawImage(&picture, Rect(60, 0, 45, 45), 2, 2, 45, 45, UnitPixel);
    graphics.DrawImage(&picture, Rect(0, 0, 50, 50), 2, 2, 50, 50, UnitPixel);
    EXPECT_TRUE(IsNear(At(48, 48), 0xFF80007F)) << std::hex << At(48, 48);
    EXPECT_EQ(At(48, 2), Color::Blue);
}

TEST_F(PortingBlocks, DrawTextKeepsToItsRectangle) {
    const HFONT font =
        CreateFont(-16, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, 0, 0, 0, 0, 0, _T("DejaVu Sans"));
    EXPECT_FALSE(SelectObject(to_, font));
    SetTextColor(to_, RGB(255, 0, 0));
    EXPECT_EQ(SetBkMode(to_, TRANSPARENT), OPAQUE);
    CRect size(5, 5, 5, 5);
    const int height = DrawText(to_, _T("Hill"), -1, size, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(size.Height(), height);
    EXPECT_GT(size.Width(), 20);
    EXPECT_FALSE(HasInk(CRect(0, 0, 120, 60), 0));
    // In the middle of the right half, and not outside of it.
    CRect half(60, 0, 120, 60);
    const int end = DrawText(to_, _T("&Hill"), -1, half, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    EXPECT_EQ(end, (60 - height) / 2 + height);
    EXPECT_TRUE(HasInk(CRect(60, 20, 120, 40), 0));
    EXPECT_FALSE(HasInk(CRect(0, 0, 60, 60), 0));
    EXPECT_FALSE(HasInk(CRect(60, 0, 120, 15), 0));
    // Wrapped text is higher and not wider.
    CRect wrapped(0, 0, 40, 0);
    DrawText(to_, _T("one two three"), -1, wrapped, DT_CALCRECT | DT_WORDBREAK);
    EXPECT_GE(wrapped.Height(), 2 * height);
    EXPECT_LE(wrapped.Width(), 60);
    // Behind opaque text lies its own colour.
    SetBkMode(to_, OPAQUE);
    SetBkColor(to_, RGB(0, 255, 0));
    SIZE extent;
    EXPECT_TRUE(GetTextExtentPoint32(to_, _T("Hill"), 4, &extent));
    EXPECT_TRUE(TextOut(to_, 2, 2, _T("Hill"), 4));
    EXPECT_EQ(At(2, 2), Color::Lime);
    EXPECT_EQ(At(2 + extent.cx, 2), 0U);
    EXPECT_EQ(DrawText(to_, _T("x"), -1, wrapped, 0x1000000), 0);
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_FALSE(DeleteObject(font));
}

}  // namespace
