// What the core asks of its window system.
#include "window/system_kit.h"

namespace windowtest {
namespace {

TEST_F(SystemTest, AWindowIsIntroducedWithItsTraits) {
    const HWND owner = Create(WS_POPUP | WS_CAPTION | WS_MINIMIZEBOX, {}, WS_EX_TOPMOST | WS_EX_TOOLWINDOW);
    platform::WindowTraits traits = Traits(owner);
    EXPECT_TRUE(traits.decorated && traits.minimizable && traits.topmost && traits.toolWindow);
    EXPECT_FALSE(traits.modal);
    EXPECT_TRUE(traits.title == u"t");
    const HWND dialog = Create(WS_POPUP, owner, WS_EX_NOACTIVATE);
    traits = Traits(dialog);
    EXPECT_TRUE(traits.owner == owner && traits.topmost) << "over a topmost owner";
    EXPECT_FALSE(traits.decorated || traits.activates || traits.modal);
    EXPECT_EQ(traits.owner, owner);
    EnableWindow(owner, FALSE);
    ShowWindow(dialog, SW_SHOW);
    EXPECT_TRUE(Traits(dialog).modal);
    EnableWindow(owner, TRUE);
    EXPECT_FALSE(Traits(dialog).modal);
    System().TakeLog();
    SetWindowTextW(dialog, u"new");
    SetWindowTextW(dialog, u"new");
    EXPECT_EQ(System().TakeLog(), "traits") << "told once";
    SetWindowLongPtrW(dialog, GWL_STYLE, WS_POPUP | WS_CAPTION);
    EXPECT_TRUE(Traits(dialog).decorated);
}

TEST_F(SystemTest, OnlyWhatWasDrawnIsPresented) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    const HBRUSH brush = CreateSolidBrush(0);
    RECT drawn = {0, 0, 40, 30};
    Log().Answer(WM_PAINT, [&](HWND) {
        PAINTSTRUCT paint;
        FillRect(BeginPaint(window, &paint), &drawn, brush);
        return EndPaint(window, &paint);
    });
    System().TakeLog();
    Settle();
    EXPECT_EQ(System().TakeLog(), "surface write present");
    EXPECT_EQ(System().presented, Region(drawn));
    InvalidateRect(window, nullptr, FALSE);
    drawn = {5, 6, 10, 12};
    Settle();
    EXPECT_EQ(System().TakeLog(), "write present");
    EXPECT_EQ(System().presented, Region(drawn));
    const RECT part = {8, 0, 40, 30};
    InvalidateRect(window, &part, FALSE);
    Settle();
    EXPECT_EQ(System().presented, Region(CRect{8, 6, 10, 12}));
    // Pixels that the display lost are shown again without a paint.
    Log().received.clear();
    Report(event::Exposed{window, Region(CRect{1, 2, 3, 4})});
    Settle();
    EXPECT_EQ(System().presented, Region(CRect{1, 2, 3, 4}));
    EXPECT_EQ(Count(window, WM_PAINT), 0);
    DeleteObject(brush);
}

TEST_F(SystemTest, APushPresentsWhatDiffers) {
    const HWND window = Create(WS_POPUP, {}, WS_EX_LAYERED);
    EXPECT_EQ(System().compositing[window.ToParam()].mode, platform::Compositing::Mode::Nothing);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = 40;
    info.bmiHeader.biHeight = -30;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection({}, &info, DIB_RGB_COLORS, &bits);
    const HDC source = CreateCompatibleDC({});
    SelectObject(source, bitmap);
    auto* pixels = static_cast<std::uint32_t*>(bits);
    const SIZE size = {40, 30};
    const POINT from = {0, 0};
    BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    const auto push = [&] {
        System().presented = Region();
        System().log.clear();
        GdiFlush();
        return UpdateLayeredWindow(window, {}, nullptr, &size, source, &from, 0, &blend, ULW_ALPHA);
    };
    ASSERT_TRUE(push());
    EXPECT_EQ(System().presented, Region(CRect{0, 0, 40, 30})) << "the first time all of it";
    EXPECT_EQ(System().compositing[window.ToParam()].mode, platform::Compositing::Mode::PerPixel);
    ASSERT_TRUE(push());
    EXPECT_TRUE(System().presented.IsEmpty()) << "nothing differs";
    for (int y = 3; y < 6; ++y)
        for (int x = 10; x < 20; ++x)
            pixels[y * 40 + x] = 0xFF00FF00;
    pixels[25 * 40 + 39] = 0x01010101;
    ASSERT_TRUE(push());
    EXPECT_EQ(System().presented, Region(std::vector<RECT>{{10, 3, 20, 6}, {39, 25, 40, 26}}));
    EXPECT_EQ(System().TakeLog(), "write present");
    // A promise is believed, unless somebody drew on the window since.
    const RECT dirty = {0, 0, 5, 5};
    UPDATELAYEREDWINDOWINFO promise;
    promise.psize = &size;
    promise.hdcSrc = source;
    promise.pblend = &blend;
    promise.dwFlags = ULW_ALPHA;
    promise.prcDirty = &dirty;
    for (const int y : {2, 28})
        pixels[y * 40 + 2] = 0xFF00FF00;
    for (const bool drawn : {false, true}) {
        if (drawn) System().drawn->Touch();
        ASSERT_TRUE(UpdateLayeredWindowIndirect(window, &promise));
        EXPECT_EQ(System().presented, Region(drawn ? RECT{2, 28, 3, 29} : RECT{2, 2, 3, 3}));
    }
    promise.cbSize = 1;
    EXPECT_FALSE(UpdateLayeredWindowIndirect(window, &promise));
    System().log.clear();
    blend.SourceConstantAlpha = 90;
    ASSERT_TRUE(push());
    EXPECT_EQ(System().TakeLog(), "write compositing") << "a fade copies no pixels";
    SelectObject(source, HBITMAP());
    DeleteDC(source);
    DeleteObject(bitmap);
}

TEST_F(SystemTest, AnOwnerIsNotPutUnderWhatItOwns) {
    using platform::StackPlace;
    const HWND owner = Create(WS_POPUP | WS_VISIBLE);
    const HWND owned = Create(WS_POPUP | WS_VISIBLE, owner);
    const HWND other = Create(WS_POPUP | WS_VISIBLE);
    const auto requests = [&](HWND after) {
        System().restacked.clear();
        SetWindowPos(owner, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        return System().restacked;
    };
    using Requests = std::vector<ScriptedSystem::Restacked>;
    EXPECT_EQ(requests(HWND_TOP),
              (Requests{{owner, StackPlace::Top, {}}, {owned, StackPlace::Above, owner}}));
    EXPECT_EQ(requests(other),
              (Requests{{owner, StackPlace::Below, other}, {owned, StackPlace::Above, owner}}));
}

TEST_F(SystemTest, TheCursorIsToldOnceAMove) {
    const HWND window = Open();
    Log().At(WM_MOUSEMOVE, [](HWND) { SetCursor(LoadCursorW({}, IDC_HAND)); });
    for (int i = 0; i < 3; ++i) {
        System().TakeLog();
        Move(window, {105 + i, 110}, 1);
        Settle();
        EXPECT_EQ(System().TakeLog(), i == 0 ? "cursor" : "") << "arrow and hand in one move are no flicker";
    }
}

}  // namespace
}  // namespace windowtest
