// Progress bars and scroll bars: the arithmetic in tables, the pictures, and the drag.
#include <limits>

#include "support/test_dialog.h"

namespace {

using kit::Line;
using kit::Solid;
using kit::Strip;
using kit::TestDialog;

class Bars : public kit::HeadlessTest {};

TEST_F(Bars, AProgressBarFillsItsShare) {
    constexpr unsigned kMost = std::numeric_limits<unsigned>::max();
    const struct {
        const char* name;
        unsigned minimum, maximum, position;
        int border;
        CRect filled;  // of an item at (10, 20), 200 by 20
    } cases[] = {
        {"half", 0, 100, 50, 1, CRect(11, 21, 110, 39)},
        {"full", 0, 100, 100, 1, CRect(11, 21, 209, 39)},
        {"truncated", 0, 3, 1, 0, CRect(10, 20, 76, 40)},
        {"from a minimum", 40, 60, 45, 0, CRect(10, 20, 60, 40)},
        {"thick", 0, 4, 3, 5, CRect(15, 25, 157, 35)},
        {"empty", 0, 100, 0, 1, CRect(11, 21, 11, 39)},
        {"below", 10, 100, 9, 1, CRect()},
        {"above", 0, 100, 101, 1, CRect()},
        {"no range", 7, 7, 7, 1, CRect()},
        {"turned round", 100, 0, 50, 1, CRect()},
        {"the product wraps", 0, kMost, kMost, 0, CRect(10, 20, 10, 40)},
        {"thicker than the item", 0, 100, 100, 15, CRect(25, 35, 195, 25)},
    };
    for (const auto& [name, minimum, maximum, position, border, filled] : cases) {
        QKProgress progress;
        progress.SetRect(10, 20, 200, 20);
        progress.SetMinMax(minimum, maximum);
        progress.SetPos(position);
        progress.SetBackBordThick(border);
        EXPECT_EQ(progress.GetFilledRect(), filled) << name;
    }
}

TEST_F(Bars, TheBarIsSqueezedIntoItsTrack) {
    constexpr std::uint32_t kTrack = 0xFF404040, kRed = 0xFFFF0000, kBlue = 0xFF0000FF;
    QKProgress progress;
    progress.SetBarImage(Solid("track", kTrack, 2, 2), Strip("bar", {kRed, kBlue}, 4, 4, false));
    progress.SetRect(10, 20, 102, 20);
    progress.SetPos(40);
    TestDialog dialog({&progress});
    dialog.Open();
    // 40 of 100 pixels: the bar's left half ends before 31, its right half at 51.
    dialog.ExpectPixels({{10, 20, kTrack}, {11, 21, kRed}, {26, 38, kRed}, {36, 30, kBlue}});
    dialog.ExpectPixels({{50, 30, kBlue}, {51, 30, kTrack}, {20, 39, kTrack}, {111, 30, kTrack}});
    progress.SetPos(101);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(11, 21), kTrack);
}

// Caps of 10 pixels, as high as the frames of the middle.
struct Bar : QKVScrollBar {
    Bar() {
        SetRect(20, 10, 16, 120);
        LoadThumb(12);
        const QKVScrollCallbacks callbacks = {nullptr, this, nullptr, [](int position, LPVOID bar) {
                                                  static_cast<Bar*>(bar)->reported.push_back(position);
                                              }};
        SetVBarCallBack(&callbacks);
    }
    void LoadThumb(int width) {
        SetBarImage(Strip("top", {0xFF100000, 0xFF200000, 0xFF300000}, width, 10, true),
                    Strip("middle", {0xFF001000, 0xFF002000, 0xFF003000}, width, 10, true),
                    Strip("bottom", {0xFF000010, 0xFF000020, 0xFF000030}, width, 10, true));
    }
    std::vector<int> reported;
};

TEST_F(Bars, TheThumbTravelsOverWhatIsNotVisible) {
    const struct {
        const char* name;
        bool caps;
        int height, visible, total, set;
        const char* wanted;  // the travel and the thumb's height; its place and that of the content
    } cases[] = {
        {"end", true, 200, 50, 200, 200, "135 45; 135 150"},
        {"beginning", true, 200, 50, 200, -5, "135 45; 0 0"},
        {"truncated", true, 200, 50, 200, 1, "135 45; 1 1"},
        {"without caps", false, 200, 50, 200, 75, "150 50; 75 75"},
        {"all visible", true, 200, 200, 200, 5, "0 180; 0 0"},
        {"more visible than there is", true, 200, 300, 200, 5, "-90 270; 0 0"},
        {"long content", true, 200, 1000, 1000000, 179, "179 1; 179 999000"},
        {"the product wraps", false, 1000, 0, 5000000, 141, "141 859; 141 5000000"},
    };
    for (const auto& c : cases) {
        Bar bar;
        if (!c.caps) bar.DestroyImag();
        bar.SetRect(0, 0, 16, c.height);
        bar.SetBarLength(c.visible, c.total);
        const auto travel = [&bar] { return Line(bar.GetMax(), bar.GetBarHeight()) + "; "; };
        const std::string before = travel();
        bar.SetBarPos(c.set);
        EXPECT_EQ(before + Line(bar.GetBarPos(), bar.GetPos()), c.wanted) << c.name;
        bar.SetBarLength(c.visible, 0);  // no length leaves the thumb
        EXPECT_EQ(travel(), before) << c.name;
    }
}

TEST_F(Bars, TheThumbTakesThePointerTwentyPixelsBelowItsMiddle) {
    Bar bar;
    bar.SetBarLength(50, 100);  // travel 50, middle 50
    bar.SetBarPos(7);
    for (const auto& [x, y, inside] :
         {std::tuple(20, 17, 1), {35, 86, 1}, {36, 50, 0}, {19, 50, 0}, {25, 16, 0}, {25, 87, 0}})
        EXPECT_EQ(bar.ptOnBar(POINT{x, y}), inside) << x << ", " << y;
}

TEST_F(Bars, TheThumbIsCapsAndAStretchedMiddle) {
    Bar bar;
    bar.SetBarLength(50, 100);
    bar.SetBarPos(20);
    TestDialog dialog({&bar});
    dialog.Open();
    const auto expect = [&](const char* name, int frame, bool drawn = true) {
        SCOPED_TRACE(name);
        dialog.Refresh();
        const auto part = [=](unsigned shift) {
            return drawn ? 0xFF000000U | static_cast<unsigned>(0x10 * (frame + 1)) << shift : 0xFF000000U;
        };
        // 20 below the bar's top: 10 of cap, 50 of middle, 10 of cap; 12 wide, in the middle of 16. The
        // middle's last row shows nothing of the next frame.
        for (const auto& [x, y] : {std::pair(22, 29), {22, 100}, {21, 60}, {34, 60}})
            dialog.ExpectPixels({{x, y, 0xFF000000}});
        dialog.ExpectPixels({{22, 30, part(16)}, {33, 39, part(16)}, {22, 40, part(8)}});
        dialog.ExpectPixels({{33, 89, part(8)}, {22, 90, part(0)}, {22, 99, part(0)}});
    };
    expect("at rest", 0);
    dialog.Move(25, 15);  // anywhere over the bar
    expect("over", 1);
    dialog.Press(25, 15);  // beside the thumb
    expect("over", 1);
    EXPECT_EQ(dialog.m_pDownItem, &bar);
    dialog.Release(25, 15);
    dialog.Press(25, 60);
    expect("pressed", 2);
    dialog.Release(25, 60);
    dialog.Move(150, 150);
    expect("at rest again", 0);
    bar.SetBarLength(100, 100);
    expect("nothing to scroll", 0, false);
    bar.SetBarLength(50, 100);
    bar.SetBarPos(20);
    bar.LoadThumb(17);
    expect("wider than the bar", 0, false);
    bar.SetBarImage(u"none", u"none", u"none");
    EXPECT_EQ(bar.SetTrackImage(Solid("scroll_track", 0xFFABCDEF, 3, 3)), 1);
    dialog.Refresh();
    dialog.ExpectPixels({{20, 10, 0xFFABCDEF}, {35, 129, 0xFFABCDEF}});
}

TEST_F(Bars, ADragFollowsThePointerBetweenBothEnds) {
    Bar bar;
    bar.SetBarLength(50, 100);  // travel 50
    bar.SetBarPos(45);
    TestDialog dialog({&bar});
    dialog.Open();
    dialog.Press(25, 100);
    const struct {
        const char* name;
        int x, y;
        std::vector<int> reported;
    } cases[] = {
        {"sideways", 60, 100, {}},       {"beyond the end", 60, 140, {50}},   {"further", 60, 145, {50}},
        {"back at once", 25, 140, {45}}, {"beyond the beginning", 0, 5, {0}}, {"further up", 0, 2, {0}},
        {"down", 0, 12, {10}},
    };
    for (const auto& [name, x, y, reported] : cases) {
        bar.reported.clear();
        dialog.Move(x, y);
        EXPECT_EQ(bar.reported, reported) << name;
        EXPECT_EQ(bar.GetStatus(), QKItemBase::QK_MOUSEDOWN);
    }
    dialog.Release(0, 12);
    EXPECT_EQ(bar.GetStatus(), QKItemBase::QK_NORMAL);
    bar.reported.clear();
    dialog.Move(25, 60);
    EXPECT_TRUE(bar.reported.empty());
    // The pointer leaving the window does not end the look of a scroll bar.
    dialog.OnMouseLeave();
    EXPECT_EQ(bar.GetStatus(), QKItemBase::QK_MOUSEON);
    // The second press of a double click does not take the thumb.
    dialog.OnLbuttonDbClkDown(0, CPoint(25, 60));
    EXPECT_EQ(bar.GetStatus(), QKItemBase::QK_MOUSEON);
    Headless::ButtonUp();
}

}  // namespace
