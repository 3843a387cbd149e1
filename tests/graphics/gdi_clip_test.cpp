// Clips, window contexts with an origin and bounds, and the record of what was drawn through them.
#include "graphics/picture_kit.h"

namespace {

using kit::Canvas;
using kit::Pixels;
using platform::Region;

class WindowContext : public testing::Test {
  protected:
    WindowContext()
        : surface_(platform::Surface::Create(40, 30)),
          context_(platform::MakeDeviceContext(surface_, {10, 5}, Bounds())),
          brush_(CreateSolidBrush(RGB(255, 0, 0))),
          region_(CreateRectRgn(0, 0, 0, 0)) {}
    ~WindowContext() override {
        platform::DeleteDeviceContext(context_);
        DeleteObject(brush_);
        DeleteObject(region_);
    }
    // An update region of two parts, in surface coordinates; the second reaches beyond the surface.
    static Region Bounds() {
        Region bounds(CRect(10, 5, 20, 10));
        bounds.Add(CRect(15, 20, 60, 50));
        return bounds;
    }
    void Fill(const RECT& rect) { EXPECT_EQ(1, FillRect(context_, &rect, brush_)); }

    std::shared_ptr<platform::Surface> surface_;
    HDC context_;
    HBRUSH brush_;
    HRGN region_;
};

TEST_F(WindowContext, DrawsOnlyInsideItsBoundsFromItsOrigin) {
    Fill(CRect(-100, -100, 100, 100));
    Pixels expected(40, 30);
    expected.Fill(CRect(10, 5, 20, 10), 0xFFFF0000);
    expected.Fill(CRect(15, 20, 40, 30), 0xFFFF0000);
    EXPECT_TRUE(Same(kit::PixelsOf(*surface_), expected));
}

TEST_F(WindowContext, ReportsTheDrawableSetInItsOwnCoordinates) {
    RECT box;
    EXPECT_EQ(COMPLEXREGION, GetClipBox(context_, &box));
    EXPECT_EQ(CRect(0, 0, 30, 25), CRect(box));
    EXPECT_EQ(COMPLEXREGION, GetDrawableRgn(context_, region_));
    EXPECT_EQ(2, GetRgnRectCount(region_));
    EXPECT_TRUE(PtInRegion(region_, 0, 0));
    EXPECT_FALSE(PtInRegion(region_, 0, 5));
    EXPECT_TRUE(PtInRegion(region_, 5, 15));

    EXPECT_EQ(SIMPLEREGION, IntersectClipRect(context_, 2, 1, 8, 12));
    EXPECT_EQ(SIMPLEREGION, GetClipBox(context_, &box));
    EXPECT_EQ(CRect(2, 1, 8, 5), CRect(box));
    EXPECT_EQ(NULLREGION, IntersectClipRect(context_, 20, 1, 30, 12));
    Fill(CRect(0, 0, 100, 100));
    EXPECT_TRUE(Same(kit::PixelsOf(*surface_), Pixels(40, 30)));
    EXPECT_EQ(COMPLEXREGION, SelectClipRgn(context_, HRGN())) << "the update region stays";
}

TEST_F(WindowContext, AClipIsCopied) {
    SetRectRgn(region_, 0, 0, 3, 3);
    EXPECT_EQ(SIMPLEREGION, SelectClipRgn(context_, region_));
    SetRectRgn(region_, 0, 0, 0, 0);
    RECT box;
    GetClipBox(context_, &box);
    EXPECT_EQ(CRect(0, 0, 3, 3), CRect(box));
}

TEST_F(WindowContext, RemembersACoverOfWhatWasDrawn) {
    EXPECT_TRUE(platform::DrawnRegion(context_).IsEmpty());
    Fill(CRect(1, 1, 3, 3));
    EXPECT_TRUE(platform::DrawnRegion(context_).Covers(CRect(11, 6, 13, 8)));
    EXPECT_FALSE(platform::DrawnRegion(context_).Intersects(CRect(15, 20, 60, 50)));
    platform::NoteDrawn(context_, CRect(16, 22, 17, 23));
    EXPECT_TRUE(platform::DrawnRegion(context_).Contains(16, 22));
}

TEST(DrawnRegion, StaysSmallWhenDrawingIsScattered) {
    const auto surface = platform::Surface::Create(400, 400);
    const HDC context = platform::MakeDeviceContext(surface, {0, 0}, Region(CRect(0, 0, 400, 400)));
    const HBRUSH brush = CreateSolidBrush(0);
    Region all;
    for (int i = 0; i < 2000; ++i) {
        const RECT rect{(i * 37) % 398, (i * 91) % 398, (i * 37) % 398 + 1, (i * 91) % 398 + 1};
        all.Add(rect);
        FillRect(context, &rect, brush);
        ASSERT_LE(platform::DrawnRegion(context).Count(), 64);
    }
    Region missed = all;
    missed.Subtract(platform::DrawnRegion(context));
    EXPECT_TRUE(missed.IsEmpty());
    DeleteObject(brush);
    platform::DeleteDeviceContext(context);
}

TEST(Clip, OfAMemoryContextSurvivesItsBitmap) {
    Canvas canvas(10, 10);
    EXPECT_EQ(SIMPLEREGION, IntersectClipRect(canvas.Context(), 2, 2, 50, 50));
    SelectObject(canvas.Context(), nullptr);
    RECT box;
    EXPECT_EQ(NULLREGION, GetClipBox(canvas.Context(), &box));
    SelectObject(canvas.Context(), canvas.Bitmap());
    EXPECT_EQ(SIMPLEREGION, GetClipBox(canvas.Context(), &box));
    EXPECT_EQ(CRect(2, 2, 10, 10), CRect(box));
}

}  // namespace
