// What a frame shows, on every kind of window.
#include "support/test_dialog.h"

namespace {

using kit::Solid;
using kit::Strip;
using kit::TestButton;
using kit::TestDialog;

class DialogPaint : public kit::HeadlessTest {};

TEST_F(DialogPaint, KeepRatioCropsTheMiddle) {
    // Three bands of one colour each; the client is 200 by 160.
    struct Case {
        const char* name;
        bool vertical;
        int frameWidth, frameHeight;
        std::uint32_t left, right;  // green is the rest
    };
    constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
    // 600 by 160 crops to the middle 200 columns; 200 by 480 to the middle 160 rows; 200 by 160 is whole.
    const Case cases[] = {{"wide", false, 200, 160, kGreen, kGreen},
                          {"tall", true, 200, 160, kGreen, kGreen},
                          {"same", false, 67, 160, kRed, kBlue}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        dialog.SetBack(Strip(std::string("ratio_") + c.name, {kRed, kGreen, kBlue}, c.frameWidth,
                             c.frameHeight, c.vertical),
                       1, 0);
        dialog.Open();
        dialog.ExpectPixels(
            {{0, 80, c.left}, {100, 80, kGreen}, {199, 80, c.right}, {100, 0, kGreen}, {100, 159, kGreen}});
        // Stretched instead, all three bands show.
        dialog.m_bBackKeepRatio = 0;
        dialog.Refresh();
        dialog.ExpectPixels({{1, 1, kRed}, {198, 158, kBlue}});
    }
}

TEST_F(DialogPaint, EachStyleShowsItsPixels) {
    const std::uint32_t half = 0x80400000;  // premultiplied: half transparent red
    struct Case {
        const char* name;
        int style;
        std::uint32_t outside, inside;  // on the desktop 0xFF3A6EA5
    };
    const Case cases[] = {{"ordinary", LAY_NONE, 0xFF000000, 0xFF400000},
                          {"colour key", LAY_COLORKEY, 0xFF3A6EA5, 0xFFBF007F},
                          {"constant alpha", LAY_ALPHA, 0xFF1D3752, 0xFF3D3752},
                          {"per pixel", LAY_OPAQUE, 0xFF3A6EA5, 0xFF5D3752}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDialog dialog;
        QKButton button;
        button.SetImage(Solid("half", half, 60, 40), QKButton::QKBT_IMGS_1, QKButton::QKBT_VERTICAL);
        button.SetRect(20, 20, 60, 40);
        dialog.AddQKItem(&button);
        dialog.OpenAs(c.style, c.style == LAY_ALPHA ? 128 : 255);
        const Headless::Picture screen = Headless::CaptureScreen();
        const auto near = [](std::uint32_t a, std::uint32_t b) {
            for (int shift = 0; shift < 32; shift += 8)
                if (std::abs(static_cast<int>((a >> shift) & 255) - static_cast<int>((b >> shift) & 255)) > 1)
                    return false;
            return true;
        };
        EXPECT_PRED2(near, screen.At(105, 105), c.outside) << std::hex << screen.At(105, 105);
        EXPECT_PRED2(near, screen.At(140, 130), c.inside) << std::hex << screen.At(140, 130);
    }
}

TEST_F(DialogPaint, StylesFollowOneAnother) {
    TestDialog dialog;
    TestButton button(10, 10);
    dialog.AddQKItem(&button);
    dialog.Open();
    const auto screen = [&](int x, int y) {
        dialog.Refresh();
        return Headless::CaptureScreen().At(100 + x, 100 + y);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(screen(60, 60), 0xFF000000U);
        dialog.Set_ALPHADlg(0);
        EXPECT_EQ(screen(20, 20), 0xFF3A6EA5U);
        dialog.Set_OPAQUEDlg(255);
        EXPECT_EQ(screen(20, 20), kit::kNormal);
        EXPECT_EQ(screen(60, 60), 0xFF3A6EA5U);
        dialog.Set_COLORKEYDlg(RGB(0x10, 0x10, 0x10));
        EXPECT_EQ(screen(20, 20), 0xFF3A6EA5U);
        dialog.SetNoLayDlg();
    }
}

TEST_F(DialogPaint, AlphaOneFillsCatchThePointerOnPerPixelWindows) {
    TestDialog behind, dialog;
    behind.Open();
    QKItemBase catching(QKUI_RESERVED7), passing(QKUI_RESERVED7), hidden(QKUI_RESERVED7);
    catching.SetRect(10, 10, 30, 30);
    catching.SetTranMouseOver(0);
    passing.SetRect(60, 10, 30, 30);
    hidden.SetRect(110, 10, 30, 30);
    hidden.SetTranMouseOver(0);
    hidden.SetShow(0);
    for (QKItemBase* item : {&catching, &passing, &hidden})
        dialog.AddQKItem(item);
    dialog.OpenAs(LAY_OPAQUE);
    dialog.ExpectPixels({{10, 10, 0x01010101}, {40, 10, 0}, {60, 10, 0}, {110, 10, 0}});
    EXPECT_EQ(WindowFromPoint({139, 139}), dialog.m_hWnd);
    EXPECT_EQ(WindowFromPoint({140, 139}), behind.m_hWnd);

    dialog.SetMouseTranOver(0);
    dialog.Refresh();
    const Headless::Picture shown = Headless::Capture(dialog.m_hWnd);
    for (const std::uint32_t pixel : shown.argb)
        ASSERT_GE(pixel >> 24, 1U);
    EXPECT_EQ(WindowFromPoint({299, 259}), dialog.m_hWnd);
}

TEST_F(DialogPaint, ACachedBackgroundShowsThePixelsOfADrawnOne) {
    Headless::Picture gradient;
    gradient.width = 97;
    gradient.height = 71;
    for (int y = 0; y < gradient.height; ++y)
        for (int x = 0; x < gradient.width; ++x) {
            const auto alpha = static_cast<std::uint32_t>(x * 255 / 96);
            const std::uint32_t red = alpha * static_cast<std::uint32_t>(y) / 70;
            gradient.argb.push_back((alpha << 24) | (red << 16) | (alpha / 3));
        }
    const CString path = kit::SavePicture("gradient", gradient);
    TestButton button(30, 30);
    Headless::Picture pictures[2];
    for (const int cache : {0, 1}) {
        TestDialog dialog;
        dialog.SetBackColor(Gdiplus::Color(0x40203040), 1);
        dialog.SetBack(path, 1, cache);
        dialog.AddQKItem(&button);
        dialog.OpenAs(LAY_OPAQUE);
        EXPECT_EQ(dialog.m_pBackCache != nullptr, cache == 1);
        button.SetActive(1);
        dialog.Refresh();  // repaints from the cache
        button.SetRect(50, 50, 40, 30);
        dialog.Refresh();
        pictures[cache] = Headless::Capture(dialog.m_hWnd);
        button.SetRect(30, 30, 40, 30);
        if (cache) {  // the other form of SetBack keeps the cached picture
            CRect size;
            dialog.SetBack(Solid("other", 0xFFFFFFFF, 5, 5), size);
            button.SetRect(50, 50, 40, 30);
            dialog.Refresh();
            kit::ExpectSame(Headless::Capture(dialog.m_hWnd), pictures[1]);
        }
    }
    kit::ExpectSame(pictures[1], pictures[0]);
}

TEST_F(DialogPaint, ACachedBackgroundOfAnOrdinaryWindowShowsOnce) {
    TestDialog dialog;
    dialog.SetBack(Solid("once", 0xFFFF0000, 8, 8), 0, 1);
    dialog.Open();
    EXPECT_EQ(dialog.Pixel(50, 50), 0xFFFF0000U);
    dialog.Refresh();
    EXPECT_EQ(dialog.Pixel(50, 50), 0xFF000000U);
}

TEST_F(DialogPaint, OnlyTheAskedRectangleChangesOnTheScreen) {
    TestDialog dialog;
    dialog.SetBackColor(Gdiplus::Color(0xFF112233), 1);
    TestButton left(10, 10), right(100, 10);
    dialog.AddQKItem(&left);
    dialog.AddQKItem(&right);
    dialog.Open();
    left.SetStatus(QKItemBase::QK_MOUSEON);
    right.SetStatus(QKItemBase::QK_MOUSEON);
    const CRect half(0, 0, 30, 160);
    dialog.UpdateViewRect(half);
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
    RECT waiting;
    EXPECT_FALSE(GetUpdateRect(dialog.m_hWnd, &waiting, FALSE));
    EXPECT_EQ(dialog.calls, 2);
    dialog.UpdateViewRect(nullptr);
    EXPECT_TRUE(GetUpdateRect(dialog.m_hWnd, &waiting, FALSE));
}

TEST_F(DialogPaint, TheSourcePointShiftsThePerPixelSurface) {
    TestDialog dialog;
    TestButton button(50, 40);
    dialog.AddQKItem(&button);
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
    const int before = dialog.frames;
    EXPECT_GE(before, 1);
    ShowWindow(dialog.m_hWnd, SW_MINIMIZE);
    dialog.Refresh();
    EXPECT_EQ(dialog.frames, before);
    ShowWindow(dialog.m_hWnd, SW_RESTORE);
    dialog.Refresh();
    EXPECT_EQ(dialog.frames, before + 1);
}

}  // namespace
