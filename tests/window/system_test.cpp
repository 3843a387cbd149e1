// The core against its window system: what it asks for, what it makes of events, and the server's death.
#include <gtest/gtest.h>

#include <platform/headless.h>

#include <chrono>
#include <future>
#include <thread>

#include "platform/window/core/control.h"
#include "window/scripted_system.h"

namespace platform {

std::unique_ptr<WindowSystem> MakeX11WindowSystem(WindowEvents& events) {
    if (windowtest::ScriptedSystem::reachable) return std::make_unique<windowtest::ScriptedSystem>(events);
    SetLastError(ERROR_CONNECTION_UNAVAIL);
    return nullptr;
}

}  // namespace platform

namespace windowtest {
namespace {

using platform::Region;

struct Heard {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
std::vector<Heard> heard;
std::function<bool(HWND, UINT)> answer;

LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    heard.push_back({window, message, wParam, lParam});
    if (const auto asked = answer; asked && asked(window, message)) return 0;
    return DefWindowProcW(window, message, wParam, lParam);
}

class SystemTest : public testing::Test {
  public:
    void SetUp() override {
        ScriptedSystem::reachable = true;
        WNDCLASSW description;
        description.lpfnWndProc = Procedure;
        description.lpszClassName = u"System";
        description.hCursor = LoadCursorW({}, IDC_ARROW);
        RegisterClassW(&description);
        heard.clear();
        answer = nullptr;
    }
    void TearDown() override {
        answer = nullptr;
        platform::ShutDownWindows();
        EXPECT_EQ(ScriptedSystem::current, nullptr);
    }
    static HWND Create(DWORD style = WS_POPUP, HWND owner = {}, DWORD exStyle = 0) {
        return CreateWindowExW(exStyle, u"System", u"t", style, 100, 100, 40, 30, owner, 0, {}, nullptr);
    }
    static ScriptedSystem& System() { return *ScriptedSystem::current; }
    static int Count(HWND window, UINT message) {
        int count = 0;
        for (const Heard& one : heard)
            count += one.window == window && one.message == message;
        return count;
    }
    static void Settle() { platform::RunPendingMessages(); }
};

TEST_F(SystemTest, WithoutADisplayCreationFailsAndHeadlessRemains) {
    ScriptedSystem::reachable = false;
    SetLastError(0);
    EXPECT_FALSE(Create());
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    EXPECT_TRUE(heard.empty()) << "no window, no messages";
    MSG message{};
    SetLastError(0);
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), -1);
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 0);
    PostMessageW({}, WM_USER, 0, 0);
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), 1) << "what is posted needs no display";
    EXPECT_TRUE(Headless::Use());
    EXPECT_TRUE(Create());
}

TEST_F(SystemTest, HeadlessIsRefusedWhileOtherWindowsLive) {
    const HWND window = Create();
    EXPECT_FALSE(Headless::Use());
    Headless::MovePointer(1, 1);
    Headless::ButtonDown();
    EXPECT_EQ(Headless::CaptureScreen().width, 0);
    DestroyWindow(window);
    EXPECT_TRUE(Headless::Use());
}

TEST_F(SystemTest, AWindowIsIntroducedWithItsTraits) {
    const HWND owner = Create(WS_POPUP | WS_CAPTION | WS_MINIMIZEBOX, {}, WS_EX_TOPMOST | WS_EX_TOOLWINDOW);
    platform::WindowTraits traits = System().traits[owner.ToParam()];
    EXPECT_TRUE(traits.decorated && traits.minimizable && traits.topmost && traits.toolWindow);
    EXPECT_FALSE(traits.modal);
    EXPECT_TRUE(traits.title == u"t");
    const HWND dialog = Create(WS_POPUP, owner, WS_EX_NOACTIVATE);
    traits = System().traits[dialog.ToParam()];
    EXPECT_TRUE(traits.owner == owner && traits.topmost) << "over a topmost owner";
    EXPECT_FALSE(traits.decorated || traits.activates || traits.modal);
    EXPECT_EQ(traits.owner, owner);
    EnableWindow(owner, FALSE);
    ShowWindow(dialog, SW_SHOW);
    EXPECT_TRUE(System().traits[dialog.ToParam()].modal);
    EnableWindow(owner, TRUE);
    EXPECT_FALSE(System().traits[dialog.ToParam()].modal);
    System().TakeLog();
    SetWindowTextW(dialog, u"new");
    SetWindowTextW(dialog, u"new");
    EXPECT_EQ(System().TakeLog(), "traits") << "told once";
    SetWindowLongPtrW(dialog, GWL_STYLE, WS_POPUP | WS_CAPTION);
    EXPECT_TRUE(System().traits[dialog.ToParam()].decorated);
}

TEST_F(SystemTest, ASystemThatRefusesAWindowLeavesNone) {
    Create();
    System().refuseCreate = true;
    SetLastError(0);
    EXPECT_FALSE(Create());
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(IsWindow(heard.back().window));
    EXPECT_EQ(heard.back().message, UINT{WM_NCDESTROY});
}

TEST_F(SystemTest, OnlyWhatWasDrawnIsPresented) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    const HBRUSH brush = CreateSolidBrush(0);
    RECT drawn = {0, 0, 40, 30};
    answer = [&](HWND heardBy, UINT message) {
        if (message != WM_PAINT) return false;
        PAINTSTRUCT paint;
        BeginPaint(heardBy, &paint);
        FillRect(paint.hdc, &drawn, brush);
        EndPaint(heardBy, &paint);
        return true;
    };
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
    EXPECT_EQ(System().presented, Region(RECT{8, 6, 10, 12}));
    // Pixels that the display lost are shown again without a paint.
    heard.clear();
    System().events.Notify(platform::event::Exposed{window, Region(RECT{1, 2, 3, 4})});
    Settle();
    EXPECT_EQ(System().presented, Region(RECT{1, 2, 3, 4}));
    EXPECT_EQ(Count(window, WM_PAINT), 0);
    DeleteObject(brush);
}

TEST_F(SystemTest, WithoutMemoryOfTheSystemDrawingStaysSafe) {
    const HWND window = Create();
    System().noMemory = true;
    const HDC context = GetDC(window);
    ASSERT_TRUE(context);
    const RECT part = {0, 0, 4, 4};
    const HBRUSH brush = CreateSolidBrush(0);
    EXPECT_TRUE(FillRect(context, &part, brush));
    EXPECT_TRUE(ReleaseDC(window, context));
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
    EXPECT_EQ(System().presented, Region(RECT{0, 0, 40, 30})) << "the first time all of it";
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

TEST_F(SystemTest, MovesThatWaitAreOne) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    heard.clear();
    platform::InputState pressed;
    pressed.left = true;
    auto& events = System().events;
    for (int i = 0; i < 50; ++i)
        events.Notify(platform::event::Pointer{
            platform::event::Pointer::Moved, window, POINT{105 + i % 20, 110}, {}, 1});
    PostMessageW(window, WM_USER, 0, 0);
    events.Notify(platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{107, 111}, {}, 2});
    events.Notify(
        platform::event::Pointer{platform::event::Pointer::Button, window, POINT{107, 111}, {}, 3, 1, true});
    events.Notify(
        platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{109, 111}, pressed, 4});
    events.Notify(
        platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{110, 112}, pressed, 5});
    Settle();
    std::string order;
    for (const Heard& one : heard)
        if (one.message == WM_MOUSEMOVE || one.message == WM_USER || one.message == WM_LBUTTONDOWN)
            order += std::to_string(one.message) + ":" +
                     (one.message == WM_USER ? "" : std::to_string(GET_X_LPARAM(one.lParam))) + " ";
    EXPECT_EQ(order, "512:7 1024: 513:7 512:10 ");
}

TEST_F(SystemTest, EventsComeInTheirTurn) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    heard.clear();
    // The handler of the first key disables the window: the second, reported before, is for nobody.
    answer = [&](HWND, UINT message) {
        if (message == WM_KEYDOWN) EnableWindow(window, FALSE);
        return false;
    };
    System().events.Notify(platform::event::Key{window, 'A', true, u'a', {}, 1});
    System().events.Notify(platform::event::Key{window, 'B', true, u'b', {}, 1});
    EXPECT_TRUE(heard.empty()) << "nothing runs while the system reports";
    Settle();
    EXPECT_EQ(Count(window, WM_KEYDOWN), 1);
    EXPECT_TRUE(GetKeyState('B') & 0x8000);
}

TEST_F(SystemTest, TheOutsidePlacesMinimisesAndDestroys) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    heard.clear();
    auto& events = System().events;
    events.Notify(platform::event::BoundsChanged{window, RECT{1, 2, 3, 4}});
    events.Notify(platform::event::BoundsChanged{window, RECT{200, 210, 260, 250}});
    Settle();
    RECT rect;
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect, (RECT{200, 210, 260, 250}));
    EXPECT_EQ(Count(window, WM_MOVE), 1);
    EXPECT_EQ(Count(window, WM_SIZE), 1);
    EXPECT_EQ(Count(window, WM_PAINT), 1);
    EXPECT_EQ(System().TakeLog().find("place"), std::string::npos) << "not told back what it said";
    events.Notify(platform::event::MinimisedChanged{window, true});
    Settle();
    EXPECT_TRUE(IsIconic(window));
    events.Notify(platform::event::MinimisedChanged{window, false});
    Settle();
    EXPECT_FALSE(IsIconic(window));
    EXPECT_EQ(System().TakeLog().find("minimise"), std::string::npos);
    SetCapture(window);
    events.Notify(platform::event::GrabLost{window});
    Settle();
    EXPECT_EQ(GetCapture(), HWND());
    System().TakeLog();
    events.Notify(platform::event::SystemDestroyed{window});
    Settle();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(Count(window, WM_NCDESTROY), 1);
    EXPECT_EQ(System().TakeLog(), "") << "nothing is asked of a native window that is gone";
    events.Notify(platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{0, 0}, {}, 1});
    events.Notify(platform::event::Exposed{window, Region(RECT{0, 0, 9, 9})});
    events.Notify(platform::event::CloseRequested{window});
    Settle();
}

TEST_F(SystemTest, FocusThatArrivesLateIsNoNews) {
    const HWND one = Create();
    const HWND two = Create();
    ShowWindow(one, SW_SHOW);
    ShowWindow(two, SW_SHOW);
    heard.clear();
    auto& events = System().events;
    // The server is still at the first request.
    events.Notify(platform::event::FocusChanged{one, true});
    Settle();
    EXPECT_EQ(GetActiveWindow(), two);
    events.Notify(platform::event::FocusChanged{one, false});
    events.Notify(platform::event::FocusChanged{two, true});
    Settle();
    EXPECT_EQ(Count(one, WM_ACTIVATE) + Count(two, WM_ACTIVATE), 0);
    // The user goes to another program and back to the first window.
    events.Notify(platform::event::FocusChanged{two, false});
    Settle();
    EXPECT_EQ(GetActiveWindow(), HWND());
    EXPECT_EQ(GetFocus(), HWND());
    EXPECT_EQ(Count(two, WM_KILLFOCUS), 1);
    events.Notify(platform::event::FocusChanged{one, true});
    Settle();
    EXPECT_EQ(GetActiveWindow(), one);
    EXPECT_EQ(GetFocus(), one);
}

TEST_F(SystemTest, ARefusedFocusIsFollowedInTheEnd) {
    const HWND one = Create();
    const HWND two = Create();
    ShowWindow(one, SW_SHOW);
    System().events.Notify(platform::event::FocusChanged{one, true});
    Settle();
    SetActiveWindow(two);
    ShowWindow(two, SW_SHOW);
    EXPECT_EQ(GetActiveWindow(), two);
    // Nothing is reported: the window manager left the focus where it was. A key shows where that is.
    System().now += 1000;
    System().events.Notify(platform::event::Key{one, 'A', true, u'a', {}, System().now});
    Settle();
    EXPECT_EQ(GetActiveWindow(), one);
    EXPECT_EQ(Count(one, WM_KEYDOWN), 1);
    // And so does waiting, also when another program has it.
    System().events.Notify(platform::event::FocusChanged{one, false});
    Settle();
    System().TakeLog();
    EXPECT_TRUE(SetForegroundWindow(two));
    EXPECT_EQ(GetActiveWindow(), two);
    MSG message{};
    EXPECT_FALSE(GetMessageW(&message, {}, 0, 0)) << "ends for want of anything else";
    EXPECT_EQ(GetActiveWindow(), HWND());
    // A modal dialog is brought up once for a click on its owner, not again and again.
    System().TakeLog();
    const HWND modal = Create(WS_POPUP | WS_VISIBLE, one);
    EnableWindow(one, FALSE);
    System().events.Notify(platform::event::FocusChanged{one, true});
    System().now += 1000;
    for (int i = 0; i < 3; ++i) {
        Settle();
        System().now += 1000;
    }
    EXPECT_EQ(System().TakeLog().find("activate activate activate"), std::string::npos);
    EXPECT_EQ(GetActiveWindow(), HWND());
    DestroyWindow(modal);
}

TEST_F(SystemTest, AWindowIsActiveOnceItCanBe) {
    const HWND window = Create(WS_POPUP | WS_VISIBLE);
    auto& events = System().events;
    for (const bool minimised : {true, false}) {
        SCOPED_TRACE(minimised ? "minimised" : "disabled");
        events.Notify(platform::event::FocusChanged{window, true});
        Settle();
        EXPECT_EQ(GetActiveWindow(), window);
        if (minimised)
            events.Notify(platform::event::MinimisedChanged{window, true});
        else
            EnableWindow(window, FALSE);
        events.Notify(platform::event::FocusChanged{window, false});
        Settle();
        EXPECT_EQ(GetActiveWindow(), HWND());
        events.Notify(platform::event::FocusChanged{window, true});
        Settle();
        EXPECT_EQ(GetActiveWindow(), HWND());
        if (minimised)
            events.Notify(platform::event::MinimisedChanged{window, false});
        else
            EnableWindow(window, TRUE);
        Settle();
        EXPECT_EQ(GetActiveWindow(), window);
    }
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

TEST_F(SystemTest, WhatAnotherProgramTookIsNotHeld) {
    const HWND window = Create(WS_POPUP | WS_VISIBLE);
    platform::InputState pressed;
    pressed.left = true;
    auto& events = System().events;
    events.Notify(platform::event::Key{window, 'A', true, u'a', {}, 1});
    events.Notify(platform::event::Key{window, 'B', true, u'b', {}, 1});
    events.Notify(platform::event::Pointer{platform::event::Pointer::Button, window, POINT{105, 105}, pressed,
                                           1, 1, true});
    platform::KeySet held;
    held.set('B');
    events.Notify(platform::event::KeysHeld{held});
    Settle();
    for (const int key : {0x41, 0x42, 0x01})
        EXPECT_EQ((GetKeyState(key) & 0x8000) != 0, key != 'A') << key;
    System().refuseGrab = true;
    EXPECT_EQ(SetCapture(window), HWND());
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(GetCapture(), HWND());
    SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0);
    EXPECT_EQ(Count(window, WM_ENTERSIZEMOVE), 0);
}

TEST_F(SystemTest, AHeldButtonReportsForItsWindowButBelongsToAnother) {
    const HWND one = Create();
    const HWND two = Create();
    ShowWindow(one, SW_SHOW);
    ShowWindow(two, SW_SHOW);
    MoveWindow(two, 300, 100, 40, 30, TRUE);
    Settle();
    heard.clear();
    System().under = two;
    platform::InputState pressed;
    pressed.left = true;
    System().events.Notify(
        platform::event::Pointer{platform::event::Pointer::Moved, one, POINT{310, 110}, pressed, 1});
    Settle();
    EXPECT_EQ(Count(two, WM_MOUSEMOVE), 1);
    EXPECT_EQ(Count(one, WM_MOUSEMOVE), 0);
    System().under = HWND();
    System().events.Notify(platform::event::Pointer{platform::event::Pointer::Button, one, POINT{500, 500},
                                                    pressed, 1, 1, false});
    Settle();
    EXPECT_EQ(Count(one, WM_LBUTTONUP) + Count(two, WM_LBUTTONUP), 0);
}

TEST_F(SystemTest, TheCursorIsToldOnceAMove) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    answer = [](HWND, UINT message) {
        if (message == WM_MOUSEMOVE) SetCursor(LoadCursorW({}, IDC_HAND));
        return false;
    };
    for (int i = 0; i < 3; ++i) {
        System().TakeLog();
        System().events.Notify(
            platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{105 + i, 110}, {}, 1});
        Settle();
        EXPECT_EQ(System().TakeLog(), i == 0 ? "cursor" : "") << "arrow and hand in one move are no flicker";
    }
}

// ---- the server goes away

TEST_F(SystemTest, LossEndsTheLoopAndLeavesEveryCallSafe) {
    const HWND window = Create();
    const HWND child =
        CreateWindowExW(0, u"System", u"", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, window, 1, {}, nullptr);
    ShowWindow(window, SW_SHOW);
    SetCapture(window);
    const HDC context = GetDC(window);
    PostMessageW(window, WM_USER, 0, 0);
    System().alive = false;
    System().events.Notify(platform::event::ConnectionLost{});
    System().TakeLog();
    MSG message{};
    SetLastError(0);
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), -1);
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    EXPECT_EQ(GetCapture(), HWND());
    EXPECT_TRUE(PeekMessageW(&message, {}, WM_USER, WM_USER, PM_REMOVE));
    Settle();
    EXPECT_FALSE(PeekMessageW(&message, {}, 0, 0, PM_REMOVE));
    // Nothing of this reaches the system, and nothing of it harms.
    const RECT part = {0, 0, 5, 5};
    const HBRUSH brush = CreateSolidBrush(0);
    FillRect(context, &part, brush);
    DeleteObject(brush);
    EXPECT_TRUE(ReleaseDC(window, context));
    EXPECT_TRUE(MoveWindow(window, 0, 0, 90, 90, TRUE));
    EXPECT_TRUE(InvalidateRect(window, nullptr, TRUE));
    EXPECT_TRUE(UpdateWindow(window));
    ShowWindow(window, SW_MINIMIZE);
    ShowWindow(window, SW_RESTORE);
    ShowWindow(window, SW_HIDE);
    ShowWindow(window, SW_SHOW);
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    EXPECT_TRUE(SetLayeredWindowAttributes(window, 0, 9, LWA_ALPHA));
    EXPECT_TRUE(SetWindowRgn(window, CreateRectRgn(0, 0, 5, 5), TRUE));
    EXPECT_TRUE(SetWindowTextW(window, u"x"));
    SetActiveWindow(window);
    SetFocus(child);
    SetCapture(window);
    ReleaseCapture();
    SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0);
    EXPECT_EQ(WindowFromPoint(POINT{5, 5}), HWND());
    POINT point;
    SetLastError(0);
    EXPECT_FALSE(GetCursorPos(&point));
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    SetTimer(window, 1, 10, nullptr);
    GetTickCount();
    EXPECT_EQ(System().TakeLog(), "");
    // Windows can be destroyed, but none made, until the last is gone and the server is back.
    EXPECT_FALSE(Create());
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    heard.clear();
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_EQ(Count(window, WM_DESTROY) + Count(window, WM_NCDESTROY) + Count(child, WM_NCDESTROY), 3);
    ScriptedSystem::reachable = false;
    EXPECT_FALSE(Create());
    ScriptedSystem::reachable = true;
    const int before = ScriptedSystem::made;
    EXPECT_TRUE(Create());
    EXPECT_EQ(ScriptedSystem::made, before + 1);
}

TEST_F(SystemTest, ADeathThatCreationFindsIsALostConnection) {
    ScriptedSystem::reachable = false;
    for (const bool knownBefore : {true, false}) {
        ScriptedSystem::reachable = true;
        DestroyWindow(Create());
        ScriptedSystem::reachable = false;
        System().alive = !knownBefore;
        System().diesInCreate = true;
        SetLastError(0);
        EXPECT_FALSE(Create());
        EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    }
}

TEST_F(SystemTest, AThreadThatEndsTakesItsWindowsAlong) {
    HWND left;
    std::future<LRESULT> reply;
    std::thread([&] {
        left = Create();
        reply = std::async(std::launch::async, [&] { return SendMessageW(left, WM_USER, 0, 0); });
    }).join();
    EXPECT_EQ(System().TakeLog(), "create destroy");
    EXPECT_FALSE(IsWindow(left));
    EXPECT_EQ(Count(left, WM_DESTROY), 0) << "nobody is left to be told";
    EXPECT_TRUE(Create()) << "by another thread";
    ASSERT_EQ(reply.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    EXPECT_EQ(reply.get(), 0);
}

TEST_F(SystemTest, HeadlessMayFollowALostServer) {
    const HWND stranded = Create();
    System().events.Notify(platform::event::ConnectionLost{});
    EXPECT_TRUE(Headless::Use(300, 200));
    const HWND window = Create();
    ASSERT_TRUE(window);
    ShowWindow(window, SW_SHOW);
    ShowWindow(stranded, SW_SHOW);
    MoveWindow(stranded, 5, 5, 9, 9, TRUE);
    Settle();
    EXPECT_EQ(Headless::Capture(window).width, 40);
    EXPECT_EQ(Headless::Capture(stranded).width, 0);
    EXPECT_TRUE(DestroyWindow(stranded));
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), 0) << "the loop waits again, and ends for want of input";
}

TEST_F(SystemTest, TheServerMayDieWhileALoopWaits) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    System().onWait = [] { System().alive = false; };
    MSG message{};
    SetLastError(0);
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), -1);
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(SystemTest, TheServerMayDieInsideACaptionMove) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    answer = [&](HWND, UINT message) {
        if (message == WM_LBUTTONDOWN) SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0);
        return false;
    };
    System().onWait = [] {
        System().alive = false;
        System().events.Notify(platform::event::ConnectionLost{});
    };
    System().events.Notify(
        platform::event::Pointer{platform::event::Pointer::Button, window, POINT{105, 105}, {}, 1, 1, true});
    Settle();
    EXPECT_EQ(Count(window, WM_ENTERSIZEMOVE), 1);
    EXPECT_EQ(Count(window, WM_EXITSIZEMOVE), 1);
    EXPECT_EQ(GetCapture(), HWND());
}

TEST_F(SystemTest, NoCaptionMoveWaitsForAReleaseThatWas) {
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    bool moves = false, waited = false;
    answer = [&](HWND, UINT message) {
        if (message != WM_LBUTTONDOWN) return false;
        moves = true;
        SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0);
        moves = false;
        return false;
    };
    for (const bool lost : {false, true}) {
        SCOPED_TRACE(lost);
        heard.clear();
        const std::uint64_t time = lost ? 3000 : 1;
        System().held = !lost;
        System().onWait = [&] { waited = moves; };
        System().events.Notify(platform::event::Pointer{
            platform::event::Pointer::Button, window, POINT{105, 105}, {}, time, 1, true});
        // Behind the press, before anybody has looked at that.
        if (!lost)
            System().events.Notify(platform::event::Pointer{
                platform::event::Pointer::Button, window, POINT{105, 105}, {}, time + 1, 1, false});
        Settle();
        EXPECT_EQ(Count(window, WM_EXITSIZEMOVE), 1);
        EXPECT_FALSE(waited);
        EXPECT_EQ(GetCapture(), HWND());
    }
}

TEST_F(SystemTest, APlaceReportedDuringACaptionMoveCountsUnlessItIsBehind) {
    RECT rect;
    const HWND window = Create();
    ShowWindow(window, SW_SHOW);
    Settle();
    platform::InputState pressed;
    pressed.left = true;
    answer = [&](HWND, UINT message) {
        if (message == WM_LBUTTONDOWN) SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0);
        return false;
    };
    System().onWait = [&] {
        auto& events = System().events;
        events.Notify(
            platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{125, 105}, pressed, 2});
        events.Notify(platform::event::BoundsChanged{window, RECT{101, 100, 141, 130}});
        System().onWait = [&] {
            GetWindowRect(window, &rect);
            EXPECT_EQ(rect, (RECT{120, 100, 160, 130})) << "reported before the request";
            events.Notify(
                platform::event::BoundsChanged{window, RECT{120, 110, 160, 140}});  // as far as it is let
            System().onWait = [&] {
                GetWindowRect(window, &rect);
                EXPECT_EQ(rect, (RECT{120, 110, 160, 140}));
                events.Notify(platform::event::Pointer{platform::event::Pointer::Button, window,
                                                       POINT{125, 105}, pressed, 3, 1, false});
            };
        };
    };
    System().events.Notify(
        platform::event::Pointer{platform::event::Pointer::Button, window, POINT{105, 105}, {}, 1, 1, true});
    Settle();
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect, (RECT{120, 110, 160, 140}));
    EXPECT_EQ(Count(window, WM_LBUTTONUP), 0);
    // Input lands where the window was when it was made.
    heard.clear();
    answer = nullptr;
    auto& events = System().events;
    events.Notify(platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{125, 115}, {}, 4});
    events.Notify(platform::event::BoundsChanged{window, RECT{20, 10, 60, 40}});
    events.Notify(platform::event::Pointer{platform::event::Pointer::Moved, window, POINT{26, 16}, {}, 5});
    events.Notify(platform::event::BoundsChanged{window, RECT{50, 10, 90, 40}});
    Settle();
    std::vector<LPARAM> points;
    for (const Heard& one : heard)
        if (one.message == WM_MOUSEMOVE) points.push_back(one.lParam);
    EXPECT_EQ(points, (std::vector<LPARAM>{MAKELPARAM(5, 5), MAKELPARAM(6, 6)}));
}

TEST_F(SystemTest, ShutDownForgetsAll) {
    const HWND window = Create();
    GetDC(window);
    SetTimer(window, 1, 10, nullptr);
    PostMessageW(window, WM_USER, 0, 0);
    PostQuitMessage(1);
    heard.clear();
    platform::ShutDownWindows();
    EXPECT_TRUE(heard.empty()) << "a host that is ending is not called any more";
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(ScriptedSystem::current, nullptr);
    EXPECT_TRUE(Create()) << "and a new start works";
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, {}, 0, 0, PM_REMOVE));
}

}  // namespace
}  // namespace windowtest
