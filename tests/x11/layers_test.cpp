// Layered and shaped windows: what is seen of them, and where they let the pointer through.
#include <gtest/gtest.h>
#include <xcb/shape.h>

#include <optional>

#include "x11/recorder.h"

namespace {

using namespace platform;
using namespace xtest;
using Mode = Compositing::Mode;

constexpr std::uint32_t kBehind = 0x0000C0;
const CRect kRect(100, 100, 300, 200);

Compositing PerPixel(std::uint8_t alpha = 255) {
    return {Mode::PerPixel, 0, alpha, false};
}

class Layers : public xtest::X11Test {
  protected:
    // A click at a point of the screen goes to the window (`caught`), or to what lies behind.
    void ExpectClick(bool caught, ForeignWindow& behind, HWND window, int x, int y) {
        SCOPED_TRACE(testing::Message() << "click at " << x << ", " << y);
        // A window manager passes shapes on in its own time.
        EXPECT_TRUE(Until([&] {
            const auto under = session->WindowsAt(x, y);
            return (system->WindowAt({x, y}) == window) == caught &&
                   (!under.empty() && under.front() == behind.Id()) != caught;
        }));
        const int ours = seen.Count(Pointer::Button);
        const int theirs = behind.Presses();
        EXPECT_TRUE(session->Click(x, y));
        int theirsNow = theirs;
        EXPECT_TRUE(Until([&] {
            theirsNow = behind.Presses();
            return seen.Count(Pointer::Button) >= ours + 2 || theirsNow > theirs;
        }));
        EXPECT_EQ(seen.Count(Pointer::Button) > ours, caught);
        EXPECT_EQ(theirsNow > theirs, !caught);
        EXPECT_TRUE(!caught || seen.Last(Pointer::Button).window == window);
    }
    // Four fields of 50 pixels: alpha 0, alpha 1 (at its end less than half), half of white, opaque green.
    void FillFields(Surface& surface) {
        const std::uint32_t fields[] = {0x00000000, 0x01010101, 0x80808080, 0xFF00C000};
        for (int i = 0; i < 4; ++i)
            FillRect(surface, CRect(i * 50, 0, i * 50 + 50, 100), fields[i]);
        FillRect(surface, CRect(90, 0, 100, 100), 0x7F7F7F7F);
    }
    HWND NewLayered(const Compositing& compositing) {
        const HWND window = NewWindow(kRect);
        system->SetCompositing(window, {Mode::Nothing});
        auto surface = system->NewSurface(window, 200, 100);
        EXPECT_TRUE(surface);
        if (surface) FillFields(*surface);
        system->Present(window, Region(CRect(0, 0, 200, 100)));
        system->SetCompositing(window, compositing);
        return window;
    }
};

struct Setting {
    const char* name;
    bool manager;
    bool compositor;
    bool alphaVisual;
};
// A window manager and a compositor together are the window suite's.
constexpr Setting kSettings[] = {
    {"BareServer", false, false, true},
    {"Openbox", true, false, true},
    {"Picom", false, true, true},
    {"NoAlphaVisual", false, false, false},
};

// A session of each kind, with another client's window behind what a test shows.
class LayersEverywhere : public Layers, public testing::WithParamInterface<Setting> {
  protected:
    void SetUp() override {
        const Setting& setting = GetParam();
        Open({.windowManager = setting.manager,
              .compositor = setting.compositor,
              .alphaVisual = setting.alphaVisual});
        behind_.emplace(*session, 0, 0, 600, 400, kBehind);
    }
    std::optional<ForeignWindow> behind_;
};
INSTANTIATE_TEST_SUITE_P(Sessions, LayersEverywhere, testing::ValuesIn(kSettings),
                         [](const auto& setting) { return std::string(setting.param.name); });

TEST_P(LayersEverywhere, AlphaDecidesWhatIsSeenAndCaught) {
    const HWND window = NewLayered(PerPixel());
    ShowAndWait(window);
    EXPECT_TRUE(ScreenShows(275, 150, 0x00C000));
    EXPECT_TRUE(ScreenShows(125, 150, kBehind));
    // Blended, or from half on taken for there.
    EXPECT_TRUE(ScreenShows(225, 150, GetParam().compositor ? 0x8080E0 : 0xFFFFFF));
    ExpectClick(false, *behind_, window, 125, 150);
    for (const int x : {175, 195})
        ExpectClick(GetParam().compositor, *behind_, window, x, 150);
    ExpectClick(true, *behind_, window, 225, 150);
    ExpectClick(true, *behind_, window, 275, 150);
    // A part of it changes.
    auto surface = system->NewSurface(window, 200, 100);
    FillFields(*surface);
    system->Present(window, Region(CRect(0, 0, 200, 100)));
    system->BeginWrite(window);
    FillRect(*surface, CRect(0, 0, 50, 50), 0xFFC00000);
    FillRect(*surface, CRect(150, 0, 200, 50), 0);
    system->Present(window, Region(CRect(0, 0, 200, 50)));
    EXPECT_TRUE(ScreenShows(125, 110, 0xC00000));
    EXPECT_TRUE(ScreenShows(275, 110, kBehind));
    EXPECT_TRUE(ScreenShows(275, 190, 0x00C000));
    ExpectClick(true, *behind_, window, 125, 110);
    ExpectClick(false, *behind_, window, 275, 110);
    ExpectClick(false, *behind_, window, 125, 190);
}

TEST_P(LayersEverywhere, KeyColourIsLeftOut) {
    const HWND window = NewWindow(kRect);
    system->SetCompositing(window, {Mode::Constant, 0xFF00FF, 255, true});
    auto surface = system->NewSurface(window, 200, 100);
    FillRect(*surface, CRect(0, 0, 200, 100), 0x00FF00FF);  // whatever its alpha
    FillRect(*surface, CRect(50, 0, 100, 100), 0x0000C000);
    system->Present(window, Region(CRect(0, 0, 200, 100)));
    ShowAndWait(window);
    EXPECT_TRUE(ScreenShows(175, 150, 0x00C000));
    EXPECT_TRUE(ScreenShows(125, 150, kBehind));
    ExpectClick(true, *behind_, window, 175, 150);
    ExpectClick(false, *behind_, window, 125, 150);
}

TEST_P(LayersEverywhere, ARegionClipsWindowAndInput) {
    const HWND window = NewWindow(kRect);
    const Region round = Region::RoundRect(CRect(0, 0, 200, 100), 60, 60);
    system->SetShape(window, &round);
    Fill(window, kRect.Size(), 0xFF00C000);
    ShowAndWait(window);
    EXPECT_TRUE(ScreenShows(200, 150, 0x00C000));
    for (int y = 0; y < 100; y += 7)
        for (int x = 0; x < 200; x += 9)
            ASSERT_TRUE(ScreenShows(100 + x, 100 + y, round.Contains(x, y) ? 0x00C000 : kBehind))
                << x << ", " << y;
    ExpectClick(false, *behind_, window, 102, 102);
    ExpectClick(true, *behind_, window, 200, 150);
    // Together with alpha, both must let a pixel stand.
    system->SetCompositing(window, PerPixel());
    auto surface = system->NewSurface(window, 200, 100);
    FillRect(*surface, CRect(0, 0, 200, 50), 0xFF00C000);
    system->Present(window, Region(CRect(0, 0, 200, 100)));
    EXPECT_TRUE(ScreenShows(200, 110, 0x00C000));
    EXPECT_TRUE(ScreenShows(102, 102, kBehind));
    EXPECT_TRUE(ScreenShows(200, 180, kBehind));
    ExpectClick(false, *behind_, window, 200, 180);
    ExpectClick(false, *behind_, window, 102, 102);
    system->SetShape(window, nullptr);
    EXPECT_TRUE(ScreenShows(101, 101, 0x00C000));
    ExpectClick(true, *behind_, window, 101, 101);
}

TEST_F(Layers, AFrameThatNobodyShapesIsShapedAsTheWindow) {
    for (const bool compositor : {false, true}) {
        SCOPED_TRACE(compositor);
        Open({.compositor = compositor});
        ForeignWindow behind(*session, 0, 0, 600, 400, kBehind);
        const HWND window = NewLayered(PerPixel());
        system->SetTraits(window, Titled(u"framed"));
        ShowAndWait(window);
        xcb_connection_t* c = session->Connection();
        const xcb_window_t frame = session->NewWindow(100, 100, 200, 100, 0);
        xcb_reparent_window(c, session->FindByTitle("framed"), frame, 0, 0);
        xcb_map_window(c, frame);
        xcb_flush(c);
        ExpectClick(false, behind, window, 125, 150);
        ExpectClick(true, behind, window, 275, 150);
        // Some window managers take shapes away again.
        xcb_shape_mask(c, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, frame, 0, 0, XCB_PIXMAP_NONE);
        xcb_shape_mask(c, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, frame, 0, 0, XCB_PIXMAP_NONE);
        xcb_flush(c);
        ExpectClick(false, behind, window, 125, 150);
        const Region left(CRect(0, 0, 160, 100));
        system->SetShape(window, &left);
        ExpectClick(false, behind, window, 275, 150);
        ExpectClick(true, behind, window, 255, 150);
        system.reset();
    }
}

TEST_F(Layers, NothingIsShownOfAWindowThatWasNotFed) {
    for (const bool compositor : {false, true}) {
        SCOPED_TRACE(compositor);
        Open({.windowManager = true, .compositor = compositor});
        ForeignWindow behind(*session, 0, 0, 600, 400, kBehind);
        const HWND window = NewWindow(kRect);
        system->SetCompositing(window, {Mode::Nothing});
        system->Show(window, Visibility::Shown);
        ASSERT_TRUE(Until([&] { return seen.IsFocused(window); }));
        EXPECT_TRUE(ScreenShows(200, 150, kBehind));
        ExpectClick(false, behind, window, 200, 150);
        Fill(window, kRect.Size(), 0xFF00C000);
        system->SetCompositing(window, PerPixel());
        EXPECT_TRUE(ScreenShows(200, 150, 0x00C000));
        ExpectClick(true, behind, window, 200, 150);
        system.reset();
    }
}

TEST_F(Layers, FollowTheCompositor) {
    Open({.windowManager = true});
    ForeignWindow behind(*session, 0, 0, 600, 400, kBehind);
    const HWND window = NewLayered(PerPixel());
    ShowAndWait(window);
    EXPECT_TRUE(ScreenShows(225, 150, 0xFFFFFF));
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(session->StartCompositor());
        EXPECT_TRUE(ScreenShows(225, 150, 0x8080E0));
        EXPECT_TRUE(ScreenShows(125, 150, kBehind));
        ExpectClick(true, behind, window, 175, 150);
        ASSERT_TRUE(session->StopCompositor());
        EXPECT_TRUE(ScreenShows(225, 150, 0xFFFFFF));
        EXPECT_TRUE(ScreenShows(175, 150, kBehind));
        EXPECT_TRUE(ScreenShows(275, 150, 0x00C000));
        ExpectClick(false, behind, window, 175, 150);
    }
}

TEST_F(Layers, NoiseDoesNotFreezeTheServer) {
    Open({.windowManager = true});
    const CSize size(1200, 700);
    const HWND window = NewWindow(CRect(CPoint(10, 10), size));
    system->SetCompositing(window, PerPixel());
    auto surface = system->NewSurface(window, size.cx, size.cy);
    std::uint32_t noise = 1;
    for (int y = 0; y < size.cy; ++y)
        for (int x = 0; x < size.cx; ++x) {
            noise = noise * 1664525 + 1013904223;
            surface->Row(y)[x] = noise & 0x80000000 ? 0xFF00C000 : 0;
        }
    const std::uint64_t before = system->Now();
    system->Present(window, Region(CRect(CPoint(0, 0), size)));
    ShowAndWait(window);
    EXPECT_TRUE(Eventually([&] { return session->PixelAt(600, 350) != 0xFFFFFFFF; }));
    // Unbounded it takes the server more than twenty seconds.
    EXPECT_LT(system->Now() - before, 5000U);
}

}  // namespace
