// What a Graphics draws on: contexts and images that go away, contexts given out, clips.
#include <functional>

#include "graphics/gdiplus_kit.h"
#include "platform/graphics/graphics_data.h"

namespace Gdiplus {
namespace {

using kit::Canvas;
using kit::MakeBitmap;
using kit::Pixels;

// Every drawing call, to be made on targets that are gone.
std::vector<std::pair<const char*, std::function<Status(Graphics&)>>> EveryCall() {
    static const SolidBrush brush(Color(1, 2, 3));
    static const Pen pen(Color(1, 2, 3));
    static Bitmap picture(4, 4);
    static const Font font(u"DejaVu Sans", 12);
    static GraphicsPath path;
    path.AddEllipse(RectF(0, 0, 4, 4));
    return {
        {"Clear", [](Graphics& g) { return g.Clear(Color()); }},
        {"FillRectangle", [](Graphics& g) { return g.FillRectangle(&brush, 0, 0, 4, 4); }},
        {"FillEllipse", [](Graphics& g) { return g.FillEllipse(&brush, RectF(0, 0, 4, 4)); }},
        {"DrawRectangle", [](Graphics& g) { return g.DrawRectangle(&pen, 0, 0, 4, 4); }},
        {"DrawLine", [](Graphics& g) { return g.DrawLine(&pen, 0, 0, 4, 4); }},
        {"FillPath", [](Graphics& g) { return g.FillPath(&brush, &path); }},
        {"DrawPath", [](Graphics& g) { return g.DrawPath(&pen, &path); }},
        {"DrawString",
         [](Graphics& g) { return g.DrawString(u"a", -1, &font, RectF(0, 0, 9, 9), nullptr, &brush); }},
        {"DrawImage", [](Graphics& g) { return g.DrawImage(&picture, 0, 0); }},
        {"DrawImage scaled", [](Graphics& g) { return g.DrawImage(&picture, 0, 0, 9, 9); }},
        {"GetHDC",
         [](Graphics& g) {
             EXPECT_FALSE(g.GetHDC());
             return g.GetLastStatus();
         }},
    };
}

void ExpectAllFail(Graphics& graphics, Status status) {
    for (const auto& [name, call] : EveryCall())
        EXPECT_EQ(status, call(graphics)) << name;
}

TEST(Graphics, OnWhatIsGoneFailsWithAStatus) {
    auto canvas = std::make_unique<Canvas>(8, 8);
    Graphics onContext(canvas->Context());
    EXPECT_EQ(Ok, onContext.GetLastStatus());
    SelectObject(canvas->Context(), nullptr);
    ExpectAllFail(onContext, Win32Error);
    SelectObject(canvas->Context(), canvas->Bitmap());
    EXPECT_EQ(Ok, onContext.Clear(Color(1, 2, 3))) << "the bitmap is back";
    const HDC stale = canvas->Context();
    canvas.reset();
    const Canvas another(8, 8);
    ExpectAllFail(onContext, Win32Error);
    EXPECT_EQ(Win32Error, onContext.GetLastStatus());
    EXPECT_EQ(Win32Error, onContext.GetLastStatus()) << "lasting";
    EXPECT_TRUE(Same(another.Get(), Pixels(8, 8)));

    auto image = std::make_unique<Bitmap>(8, 8);
    Graphics onImage(image.get());
    EXPECT_EQ(Ok, onImage.Clear(Color()));
    image.reset();
    ExpectAllFail(onImage, Win32Error);
    const Font font(u"DejaVu Sans", 12);
    RectF measured;
    EXPECT_NE(Ok, onImage.MeasureString(u"a", -1, &font, RectF(), nullptr, &measured));

    Graphics onStale(stale);
    ExpectAllFail(onStale, Win32Error);
    Graphics onNothing(static_cast<Image*>(nullptr));
    ExpectAllFail(onNothing, InvalidParameter);
    Bitmap bad(0, 0);
    Graphics onBad(&bad);
    ExpectAllFail(onBad, InvalidParameter);
    const Canvas target(8, 8);
    EXPECT_EQ(InvalidParameter, Graphics(target.Context()).DrawImage(&bad, 0, 0));
}

TEST(Graphics, GivesOutAContextOnItsSurface) {
    Bitmap bitmap(6, 6);
    HDC lent;
    {
        Graphics graphics(&bitmap);
        EXPECT_EQ(InvalidParameter, graphics.ReleaseHDC(HDC())) << "none was acquired";
        lent = graphics.GetHDC();
        ASSERT_TRUE(lent);
        ExpectAllFail(graphics, ObjectBusy);
        const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
        const RECT rect{1, 1, 3, 3};
        EXPECT_EQ(1, FillRect(lent, &rect, brush));
        DeleteObject(brush);
        const Canvas other(2, 2);
        EXPECT_EQ(InvalidParameter, graphics.ReleaseHDC(other.Context()));
        EXPECT_EQ(Ok, graphics.ReleaseHDC(lent));
        EXPECT_FALSE(platform::SurfaceOf(lent));
        EXPECT_EQ(InvalidParameter, graphics.ReleaseHDC(lent));
        EXPECT_EQ(Ok, graphics.SetClip(Rect(0, 0, 1, 1)));
        lent = graphics.GetHDC();
    }
    EXPECT_FALSE(platform::SurfaceOf(lent)) << "released with the graphics";
    Pixels expected(6, 6);
    expected.Fill(CRect(1, 1, 3, 3), 0xFF010203);
    EXPECT_TRUE(Same(kit::PixelsOf(bitmap), expected));

    const Canvas canvas(4, 4);
    Graphics graphics(canvas.Context());
    EXPECT_EQ(InvalidParameter, graphics.ReleaseHDC(canvas.Context())) << "no acquire precedes it";
    EXPECT_EQ(Ok, graphics.Clear(Color()));
    const HDC same = graphics.GetHDC();
    EXPECT_EQ(platform::SurfaceOf(canvas.Context()), platform::SurfaceOf(same));
    ExpectAllFail(graphics, ObjectBusy);
    EXPECT_EQ(Ok, graphics.ReleaseHDC(same));
    EXPECT_TRUE(platform::SurfaceOf(canvas.Context())) << "the caller's own stays";
}

TEST(Graphics, ClipsBesidesTheContextsClip) {
    Canvas canvas(12, 12);
    IntersectClipRect(canvas.Context(), 0, 0, 8, 12);
    Graphics graphics(canvas.Context());
    const Matrix doubled(2, 0, 0, 2, 1, 0);
    graphics.SetTransform(&doubled);
    EXPECT_EQ(Ok, graphics.SetClip(Rect(1, 1, 4, 4)));  // pixels (3, 2) to (11, 10)
    graphics.ResetTransform();
    EXPECT_EQ(Ok, graphics.SetClip(Rect(0, 0, 12, 6), CombineModeIntersect));
    graphics.Clear(Color(1, 2, 3));
    Pixels expected(12, 12);
    expected.Fill(CRect(3, 2, 8, 6), 0xFF010203);
    EXPECT_TRUE(Same(canvas.Get(), expected));
    EXPECT_EQ(Ok, graphics.SetClip(Rect(5, 5, 0, 3)));
    graphics.Clear(Color(9, 9, 9));
    EXPECT_TRUE(Same(canvas.Get(), expected));
    EXPECT_EQ(Ok, graphics.SetClip(Rect(10, 10, 1, 1)));
    EXPECT_EQ(Ok, graphics.ResetClip());
    graphics.Clear(Color(9, 9, 9));
    EXPECT_EQ(0xFF090909, canvas.At(0, 11));
    EXPECT_EQ(0U, canvas.At(8, 0)) << "the context's own clip stays";
}

TEST(Graphics, ClearReplacesAlphaToo) {
    Canvas canvas(4, 4);
    Graphics graphics(canvas.Context());
    graphics.Clear(Color(0xFF, 1, 2, 3));
    graphics.Clear(Color(0x80, 0xFF, 0, 0));
    EXPECT_TRUE(Same(canvas.Get(), Pixels(4, 4, 0x80800000)));
    graphics.Clear(Color(0, 0xFF, 0xFF, 0xFF));
    EXPECT_TRUE(Same(canvas.Get(), Pixels(4, 4)));
}

}  // namespace
}  // namespace Gdiplus
