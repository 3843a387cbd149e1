// A window system that cannot be reached, refuses windows, or goes away.
#include <chrono>
#include <future>
#include <thread>

#include "window/system_kit.h"

namespace platform {

std::unique_ptr<WindowSystem> MakeX11WindowSystem(WindowEvents& events) {
    if (windowtest::ScriptedSystem::reachable) return std::make_unique<windowtest::ScriptedSystem>(events);
    SetLastError(ERROR_CONNECTION_UNAVAIL);
    return nullptr;
}

}  // namespace platform

namespace windowtest {
namespace {

TEST_F(SystemTest, WithoutADisplayCreationFailsAndHeadlessRemains) {
    ScriptedSystem::reachable = false;
    SetLastError(0);
    EXPECT_FALSE(Create());
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    EXPECT_TRUE(Log().received.empty()) << "no window, no messages";
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

TEST_F(SystemTest, ASystemThatRefusesAWindowLeavesNone) {
    Create();
    System().refuseCreate = true;
    SetLastError(0);
    EXPECT_FALSE(Create());
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(IsWindow(Log().received.back().window));
    EXPECT_EQ(Log().received.back().message, UINT{WM_NCDESTROY});
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

TEST_F(SystemTest, LossEndsTheLoopAndLeavesEveryCallSafe) {
    const HWND window = Create();
    const HWND child =
        CreateWindowExW(0, kWindowClass, u"", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, window, 1, {}, nullptr);
    ShowWindow(window, SW_SHOW);
    SetCapture(window);
    const HDC context = GetDC(window);
    PostMessageW(window, WM_USER, 0, 0);
    System().alive = false;
    Report(event::ConnectionLost{});
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
    Log().received.clear();
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
    Report(event::ConnectionLost{});
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
    const HWND window = Open();
    System().onWait = [] { System().alive = false; };
    MSG message{};
    SetLastError(0);
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), -1);
    EXPECT_EQ(GetLastError(), ERROR_CONNECTION_UNAVAIL);
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(SystemTest, TheServerMayDieInsideACaptionMove) {
    const HWND window = Open();
    MoveByPress(window);
    System().onWait = [] {
        System().alive = false;
        Report(event::ConnectionLost{});
    };
    Press(window, {105, 105}, 1);
    Settle();
    EXPECT_EQ(Count(window, WM_ENTERSIZEMOVE), 1);
    EXPECT_EQ(Count(window, WM_EXITSIZEMOVE), 1);
    EXPECT_EQ(GetCapture(), HWND());
}

TEST_F(SystemTest, ShutDownForgetsAll) {
    const HWND window = Create();
    GetDC(window);
    SetTimer(window, 1, 10, nullptr);
    PostMessageW(window, WM_USER, 0, 0);
    PostQuitMessage(1);
    Log().received.clear();
    platform::ShutDownWindows();
    EXPECT_TRUE(Log().received.empty()) << "a host that is ending is not called any more";
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(ScriptedSystem::current, nullptr);
    EXPECT_TRUE(Create()) << "and a new start works";
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, {}, 0, 0, PM_REMOVE));
}

}  // namespace
}  // namespace windowtest
