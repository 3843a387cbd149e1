// What a frame shows, on every kind of window.
#include "support/test_dialog.h"

namespace {

using kit::Solid;
using kit::TestButton;
using kit::TestDialog;

constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
constexpr std::uint32_t kBlack = 0xFF000000, kDesktop = 0xFF3A6EA5;

class DialogPaint : public kit::HeadlessTest {};

// Three bands of one colour each; the client is 200 by 160.
TEST_F(DialogPaint, KeepRatioCropsTheMiddle) {
    const struct {
        const char* name;
        bool vertical;
        int frameWidth, frameHeight;
        std::uint32_t left, right;
    } cases[] = {{"wide", false, 200, 160, kGreen, kGreen},
                 {"tall", true, 200, 160, kGreen, kGreen},
                 {"same", false, 67, 160, kRed, kBlue}};
    for (const auto& [name, vertical, width, height, left, right] : cases) {
        SCOPED_TRACE(name);
        TestDialog dialog;
        dialog.SetBack(kit::Strip(name, {kRed, kGreen, kBlue}, width, height, vertical), 1, 0);
        dialog.Open();
        dialog.ExpectPixels(
            {{0, 80, left}, {100, 80, kGreen}, {199, 80, right}, {100, 0, kGreen}, {100, 159, kGreen}});
        // Stretched instead, all three bands show.
        dialog.m_bBackKeepRatio = 0;
        dialog.Refresh();
        dialog.ExpectPixels({{1, 1, kRed}, {198, 158, kBlue}});
    }
}

TEST_F(DialogPaint, EachStyleShowsItsPixels) {
    const struct {
        int style;
        std::uint32_t outside, inside;
    } cases[] = {{LAY_NONE, kBlack, 0xFF400000},
                 {LAY_COLORKEY, kDesktop, 0xFFBF007F},
                 {LAY_ALPHA, 0xFF1D3752, 0xFF3D3752},
                 {LAY_OPAQUE, kDesktop, 0xFF5D3752}};
    for (const auto& [style, outside, inside] : cases) {
        SCOPED_TRACE(style);
        QKImage image;
        image.SetImage(Solid("half", 0x80400000, 60, 40));  // premultiplied: half transparent red
        image.SetRect(20, 20, 60, 40);
        TestDialog dialog({&image});
        dialog.OpenAs(style, style == LAY_ALPHA ? 128 : 255);
        const Headless::Picture screen = Headless::CaptureScreen();
        kit::ExpectNear(screen.At(105, 105), outside);
        kit::ExpectNear(screen.At(140, 130), inside);
    }
}

TEST_F(DialogPaint, StylesFollowOneAnother) {
    TestButton button(10, 10);
    TestDialog dialog({&button});
    dialog.Open();
    const auto expect = [&](std::uint32_t onButton, std::uint32_t beside) {
        dialog.Refresh();
        const Headless::Picture screen = Headless::CaptureScreen();
        EXPECT_EQ(screen.At(120, 120), onButton);
        EXPECT_EQ(screen.At(160, 160), beside);
    };
    for (int round = 0; round < 2; ++round) {
        expect(kit::kNormal, kBlack);
        dialog.Set_ALPHADlg(0);
        expect(kDesktop, kDesktop);
        dialog.Set_OPAQUEDlg(255);
        expect(kit::kNormal, kDesktop);
        dialog.Set_COLORKEYDlg(RGB(0x10, 0x10, 0x10));
        expect(kDesktop, kDesktop);
        dialog.SetNoLayDlg();
    }
}

TEST_F(DialogPaint, AlphaOneFillsCatchThePointerOnPerPixelWindows) {
    QKItemBase catching(QKUI_RESERVED7), passing(QKUI_RESERVED7), hidden(QKUI_RESERVED7);
    catching.SetRect(10, 10, 30, 30);
    catching.SetTranMouseOver(0);
    passing.SetRect(60, 10, 30, 30);
    hidden.SetRect(110, 10, 30, 30);
    hidden.SetTranMouseOver(0);
    hidden.SetShow(0);
    TestDialog behind, dialog({&catching, &passing, &hidden});
    behind.Open();
    dialog.OpenAs(LAY_OPAQUE);
    dialog.ExpectPixels({{10, 10, 0x01010101}, {40, 10, 0}, {60, 10, 0}, {110, 10, 0}});
    EXPECT_EQ(WindowFromPoint({139, 139}), dialog.m_hWnd);
    EXPECT_EQ(WindowFromPoint({140, 139}), behind.m_hWnd);

    dialog.SetMouseTranOver(0);
    dialog.Refresh();
    for (const std::uint32_t pixel : Headless::Capture(dialog.m_hWnd).argb)
        ASSERT_GE(pixel >> 24, 1U);
    EXPECT_EQ(WindowFromPoint({299, 259}), dialog.m_hWnd);
}

TEST_F(DialogPaint, ACachedBackgroundShowsThePixelsOfADrawnOne) {
    Headless::Picture gradient{97, 71, {}};
    for (std::uint32_t y = 0; y < 71; ++y)
        for (std::uint32_t alpha = 0; alpha < 97; ++alpha)
            gradient.argb.push_back((2 * alpha << 24) | (2 * alpha * y / 70 << 16) | alpha);
    const CString path = kit::SavePicture("gradient", gradient);
    Headless::Picture pictures[2];
    for (const int cache : {0, 1}) {
        TestButton button(30, 30);
        TestDialog dialog({&button});
        dialog.SetBackColor(Gdiplus::Color(0x40203040), 1);
        dialog.SetBack(path, 1, cache);
        dialog.OpenAs(LAY_OPAQUE);
        EXPECT_EQ(dialog.m_pBackCache != nullptr, cache == 1);
        button.SetActive(1);
        dialog.Refresh();  // repaints from the cache
        button.SetRect(50, 50, 40, 30);
        dialog.Refresh();
        pictures[cache] = Headless::Capture(dialog.m_hWnd);
        if (!cache) continue;
        CRect size;  // the other form of SetBack keeps the cached picture
        dialog.SetBack(Solid("other", 0xFFFFFFFF, 5, 5), size);
        dialog.Refresh();
        kit::ExpectSame(Headless::Capture(dialog.m_hWnd), pictures[1]);
    }
    kit::ExpectSame(pictures[1], pictures[0]);
}

TEST_F(DialogPaint, ACachedBackgroundOfAnOrdinaryWindowShowsOnce) {
    TestDialog dialog;
    dialog.SetBack(Solid("once", kRed, 8, 8), 0, 1);
    dialog.Open();
    EXPECT_EQ(dialog.Pixel(50, 50), kRed);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(50, 50), kBlack);
}

TEST_F(DialogPaint, OnlyTheAskedRectangleChangesOnTheScreen) {
    TestButton left(10, 10), right(100, 10);
    TestDialog dialog({&left, &right});
    dialog.Open();
    left.SetStatus(QKItemBase::QK_MOUSEON);
    right.SetStatus(QKItemBase::QK_MOUSEON);
    dialog.UpdateViewRect(CRect(0, 0, 30, 160));
    Headless::RunPending();
    dialog.ExpectPixels({{29, 20, kit::kOver}, {30, 20, kit::kNormal}, {110, 20, kit::kNormal}});
    dialog.UpdateViewRect(nullptr);
    Headless::RunPending();
    dialog.ExpectPixels({{30, 20, kit::kOver}, {110, 20, kit::kOver}});
}

TEST_F(DialogPaint, TheHookReplacesInvalidationInTheOrdinaryStyles) {
    struct Hooked : TestDialog {
        void CallBackInvalidate() override { ++calls; }
        int calls = 0;
    } dialog;
    dialog.Open();
    dialog.m_bSysInvalidate = 0;
    dialog.UpdateView();
    dialog.UpdateViewPt(POINT{0, 0});
    EXPECT_FALSE(GetUpdateRect(dialog.m_hWnd, nullptr, FALSE));
    EXPECT_EQ(dialog.calls, 2);
    dialog.UpdateViewRect(nullptr);
    EXPECT_TRUE(GetUpdateRect(dialog.m_hWnd, nullptr, FALSE));
}

TEST_F(DialogPaint, TheSourcePointShiftsThePerPixelSurface) {
    TestButton button(50, 40);
    TestDialog dialog({&button});
    dialog.OpenAs(LAY_OPAQUE);
    EXPECT_EQ(dialog.Pixel(50, 40), kit::kNormal);
    dialog.UpdateViewPt(POINT{20, 30});
    dialog.ExpectPixels({{30, 10, kit::kNormal}, {69, 39, kit::kNormal}, {70, 40, 0}});
    dialog.Refresh();  // the point stays
    EXPECT_EQ(dialog.Pixel(30, 10), kit::kNormal);
}

TEST_F(DialogPaint, AMinimisedWindowIsNotComposed) {
    struct Counting : TestDialog {
        void DrawSurface(HDC dc, int width, int height, int buffer) override {
            ++frames;
            TestDialog::DrawSurface(dc, width, height, buffer);
        }
        int frames = 0;
    } dialog;
    dialog.OpenAs(LAY_OPAQUE);
    dialog.frames = 0;
    for (const auto& [command, frames] : {std::pair(SW_MINIMIZE, 0), {SW_RESTORE, 1}}) {
        ShowWindow(dialog.m_hWnd, command);
        dialog.Refresh();
        EXPECT_EQ(dialog.frames, frames);
    }
}

}  // namespace
