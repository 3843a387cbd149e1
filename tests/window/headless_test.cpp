// What only the headless window system promises: its clock, its pictures, its steps.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <platform/gdiplus.h>

#include "window/window_kit.h"

namespace windowtest {
namespace {

using HeadlessTest = WindowTest;

// An object of a host that is older than the library's own and so outlives them.
struct OutlivesTheLibrary {
    HWND window;
    ~OutlivesTheLibrary() {
        if (!window) return;
        MSG message{};
        const bool safe = !IsWindow(window) && !DestroyWindow(window) && !ShowWindow(window, SW_HIDE) &&
                          !SendMessageW(window, WM_USER, 0, 0) && !PostMessageW(window, WM_USER, 0, 0) &&
                          !PostMessageW({}, WM_USER, 0, 0) && !KillTimer(window, 1) && !GetDC({}) &&
                          !PeekMessageW(&message, {}, 0, 0, PM_REMOVE) && !GetFocus() &&
                          GetMessageW(&message, {}, 0, 0) == -1 && !Headless::Use() &&
                          !CreateWindowExW(0, u"STATIC", u"", WS_POPUP, 0, 0, 9, 9, {}, 0, {}, nullptr);
        PostQuitMessage(0);
        ReleaseCapture();
        GetTickCount();
        Headless::RunPending();
        _exit(safe ? 7 : 8);
    }
} outlivesTheLibrary;

TEST(HeadlessDeathTest, CallsAfterTheEndFail) {
    EXPECT_EXIT(
        {
            Headless::Use();
            outlivesTheLibrary.window =
                CreateWindowExW(0, u"STATIC", u"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, {}, 0, {}, nullptr);
            SetTimer(outlivesTheLibrary.window, 1, 10, nullptr);
            std::exit(0);
        },
        testing::ExitedWithCode(7), "");
}

// When each timer came, as "id@milliseconds".
std::string Ticks(const std::vector<std::pair<UINT_PTR, DWORD>>& ticks) {
    std::string text;
    for (const auto& [id, at] : ticks)
        text += (text.empty() ? "" : " ") + std::to_string(id) + "@" + std::to_string(at);
    return text;
}

class ClockTest : public WindowTest {
  public:
    void SetUp() override {
        WindowTest::SetUp();
        window_ = Create(0, 0, 5, 5);
        start_ = GetTickCount();
        Log().answer = [this](HWND, UINT message, WPARAM id, LPARAM, LRESULT&) {
            if (message != WM_TIMER) return false;
            ticks_.push_back({id, GetTickCount() - start_});
            if (then_) then_(id);
            return true;
        };
    }
    HWND window_;
    DWORD start_ = 0;
    std::vector<std::pair<UINT_PTR, DWORD>> ticks_;
    std::function<void(UINT_PTR)> then_;
};

TEST_F(ClockTest, TimersComeInTheOrderTheyFallDue) {
    EXPECT_EQ(SetTimer(window_, 1, 30, nullptr), 1u);
    SetTimer(window_, 2, 20, nullptr);
    SetTimer(window_, 3, 0, nullptr);  // the shortest is 10
    Headless::Advance(9);
    EXPECT_EQ(Ticks(ticks_), "");
    Headless::Advance(51);
    EXPECT_EQ(Ticks(ticks_), "3@10 2@20 3@20 1@30 3@30 2@40 3@40 3@50 1@60 2@60 3@60");
    EXPECT_EQ(GetTickCount() - start_, 60u);
    EXPECT_TRUE(KillTimer(window_, 3));
    EXPECT_FALSE(KillTimer(window_, 3));
    ticks_.clear();
    Headless::Advance(20);
    EXPECT_EQ(Ticks(ticks_), "2@80");
}

TEST_F(ClockTest, ArmingAgainReplaces) {
    SetTimer(window_, 1, 30, nullptr);
    Headless::Advance(20);
    SetTimer(window_, 1, 50, nullptr);
    Headless::Advance(55);
    EXPECT_EQ(Ticks(ticks_), "1@70");
    // Each turn chooses the next delay, as an animation with uneven frames does.
    KillTimer(window_, 1);
    ticks_.clear();
    start_ = GetTickCount();
    then_ = [&](UINT_PTR id) { SetTimer(window_, id, ticks_.size() % 2 ? 100 : 20, nullptr); };
    SetTimer(window_, 1, 20, nullptr);
    Headless::Advance(300);
    EXPECT_EQ(Ticks(ticks_), "1@20 1@120 1@140 1@240 1@260");
}

TEST_F(ClockTest, BehindAQuitTimersWaitAndTurnsThatWereMissedAreOne) {
    SetTimer(window_, 1, 10, nullptr);
    then_ = [&](UINT_PTR) {
        if (ticks_.size() == 3) PostQuitMessage(4);
    };
    Headless::Advance(95);
    EXPECT_EQ(Ticks(ticks_), "1@10 1@20 1@30");
    EXPECT_EQ(GetTickCount() - start_, 95u);
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), 0);
    EXPECT_EQ(message.wParam, 4u);
    Headless::Advance(25);
    EXPECT_EQ(Ticks(ticks_), "1@10 1@20 1@30 1@95 1@100 1@110 1@120");
}

TEST_F(ClockTest, ProceduresAndTimersOfNoWindow) {
    static std::vector<std::pair<UINT_PTR, bool>> calls;
    calls.clear();
    const TIMERPROC procedure = [](HWND window, UINT message, UINT_PTR id, DWORD time) {
        EXPECT_EQ(message, UINT{WM_TIMER});
        EXPECT_EQ(time, GetTickCount());
        calls.push_back({id, static_cast<bool>(window)});
        KillTimer(window, id);
    };
    EXPECT_EQ(SetTimer(window_, 7, 10, procedure), 7u);
    const UINT_PTR free = SetTimer({}, 7, 20, procedure);
    ASSERT_NE(free, 0u);
    EXPECT_EQ(SetTimer({}, free, 30, procedure), free) << "the same timer again";
    Headless::Advance(100);
    EXPECT_EQ(calls, (std::vector<std::pair<UINT_PTR, bool>>{{7, true}, {free, false}}));
    EXPECT_TRUE(ticks_.empty());
}

TEST_F(HeadlessTest, UseAgainResizesTheScreen) {
    EXPECT_TRUE(Headless::Use(640, 480));
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 640);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), 480);
    const HWND window = Open(630, 470, 50, 50, kRed);
    Headless::Picture screen = Headless::CaptureScreen();
    EXPECT_EQ(screen.width, 640);
    EXPECT_EQ(screen.height, 480);
    EXPECT_EQ(screen.At(639, 479), 0xFFFF0000);
    EXPECT_EQ(screen.At(629, 479), 0xFF3A6EA5);
    EXPECT_EQ(screen.At(640, 0), 0u);
    EXPECT_EQ(screen.At(-1, 0), 0u);
    EXPECT_TRUE(Headless::Use(800, 600));
    EXPECT_EQ(Headless::CaptureScreen().At(660, 500), 0xFFFF0000);
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(HeadlessTest, TheScreenMayBeSeveralMonitors) {
    Headless::Use(1280, 800);
    MONITORINFO info{sizeof(MONITORINFO), {}, {}, 0};
    const HWND window = Open(100, 100, 40, 30, kRed);
    const HMONITOR before = MonitorFromWindow(window, MONITOR_DEFAULTTONULL);
    EXPECT_TRUE(GetMonitorInfoW(before, &info));
    EXPECT_EQ(info.rcWork, (RECT{0, 0, 1280, 800}));
    Headless::SetMonitors(
        {{{640, 0, 1280, 800}, {640, 0, 1280, 770}}, {{0, 100, 640, 700}, {0, 100, 640, 700}}});
    EXPECT_FALSE(GetMonitorInfoW(before, &info));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    RECT work{};
    EXPECT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0));
    EXPECT_EQ(work, (RECT{640, 0, 1280, 770}));
    EXPECT_FALSE(SystemParametersInfoW(SPI_GETWORKAREA, 0, nullptr, 0));
    const HMONITOR first = MonitorFromPoint(POINT{640, 0}, MONITOR_DEFAULTTONULL);
    const HMONITOR second = MonitorFromPoint(POINT{639, 100}, MONITOR_DEFAULTTONULL);
    EXPECT_TRUE(GetMonitorInfoW(first, &info) && info.dwFlags == MONITORINFOF_PRIMARY);
    EXPECT_TRUE(GetMonitorInfoW(second, &info) && info.dwFlags == 0 && info.rcMonitor.bottom == 700);
    EXPECT_EQ(MonitorFromPoint(POINT{3, 99}, MONITOR_DEFAULTTONULL), HMONITOR());
    EXPECT_EQ(MonitorFromPoint(POINT{3, 99}, MONITOR_DEFAULTTOPRIMARY), first);
    EXPECT_EQ(MonitorFromPoint(POINT{3, 99}, MONITOR_DEFAULTTONEAREST), second);
    EXPECT_EQ(MonitorFromWindow({}, MONITOR_DEFAULTTONEAREST), first);
    for (const int x : {619, 621}) {
        MoveWindow(window, x, 200, 40, 30, TRUE);
        EXPECT_EQ(MonitorFromWindow(window, MONITOR_DEFAULTTONULL), x < 620 ? second : first);
    }
    ShowWindow(window, SW_MINIMIZE);
    EXPECT_EQ(MonitorFromWindow(window, MONITOR_DEFAULTTONULL), first);
    DestroyWindow(window);
    EXPECT_EQ(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), HMONITOR());
    info.cbSize = 1;
    EXPECT_FALSE(GetMonitorInfoW(first, &info));
}

TEST_F(HeadlessTest, AWindowHasAnIcon) {
    const HWND window = Open(100, 100, 40, 30, kRed);
    EXPECT_EQ(Headless::CaptureIcon(window).width, 0);
    const auto icon = [](int width, int height, Gdiplus::ARGB colour) {
        Gdiplus::Bitmap bitmap(width, height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                bitmap.SetPixel(x, y, Gdiplus::Color(colour));
        HICON made;
        bitmap.GetHICON(&made);
        return made;
    };
    const HICON small = icon(16, 16, 0xFFFF0000);
    const HICON big = icon(512, 256, 0x8000FF00);
    const auto set = [&](WPARAM size, HICON to) {
        return SendMessageW(window, WM_SETICON, size, static_cast<LPARAM>(to.ToParam()));
    };
    EXPECT_EQ(set(ICON_SMALL, small), 0);
    EXPECT_EQ(Headless::CaptureIcon(window).At(5, 5), 0xFFFF0000);
    EXPECT_EQ(set(ICON_BIG, big), 0);
    EXPECT_EQ(SendMessageW(window, WM_GETICON, ICON_BIG, 0), static_cast<LRESULT>(big.ToParam()));
    DestroyIcon(big);
    const Headless::Picture shown = Headless::CaptureIcon(window);
    EXPECT_EQ(shown.width, 256);
    EXPECT_EQ(shown.height, 128);
    EXPECT_EQ(shown.At(100, 100), 0x80008000u);
    EXPECT_EQ(set(ICON_SMALL, big), 0) << "stale";
    EXPECT_EQ(set(2, small), 0);
    EXPECT_EQ(set(ICON_BIG, {}), static_cast<LRESULT>(big.ToParam()));
    EXPECT_EQ(Headless::CaptureIcon(window).width, 16);
    DestroyIcon(small);
}

TEST_F(HeadlessTest, APictureOfAWindowIsItsOwn) {
    const HWND window = Open(100, 100, 40, 30, kRed);
    const HWND child = OpenChild(window, 10, 10, 5, 6, kBlue);
    Open(90, 90, 100, 100, kGreen);  // covers it
    Headless::Picture picture = Headless::Capture(window);
    EXPECT_EQ(picture.width, 40);
    EXPECT_EQ(picture.height, 30);
    EXPECT_EQ(picture.At(0, 0), 0xFFFF0000);
    EXPECT_EQ(picture.At(12, 12), 0xFF0000FF);
    picture = Headless::Capture(child);
    EXPECT_EQ(picture.width, 5);
    EXPECT_EQ(picture.argb, std::vector<std::uint32_t>(30, 0xFF0000FF));
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    SetLayeredWindowAttributes(window, kBlue, 128, LWA_ALPHA | LWA_COLORKEY);
    SetWindowRgn(window, CreateRectRgn(5, 0, 40, 30), TRUE);
    User().Settle();
    picture = Headless::Capture(window);
    EXPECT_EQ(picture.At(20, 20), 0x80800000);
    EXPECT_EQ(picture.At(12, 12), 0u) << "the key";
    EXPECT_EQ(picture.At(4, 20), 0u) << "outside the shape";
    ShowWindow(window, SW_HIDE);
    EXPECT_EQ(Headless::Capture(window).At(20, 20), 0u);
    DestroyWindow(window);
    EXPECT_EQ(Headless::Capture(window).width, 0);
}

TEST_F(HeadlessTest, StepsRunOneAtEachWait) {
    static std::string order;
    order.clear();
    const auto say = [](void* text) { order += static_cast<const char*>(text); };
    const HWND window = Create(0, 0, 5, 5);
    Headless::WhenIdle(say, const_cast<char*>("a"));
    Headless::WhenIdle(
        [](void* handle) {
            order += "b";
            PostMessageW(*static_cast<HWND*>(handle), WM_USER, 0, 0);
        },
        const_cast<HWND*>(&window));
    Headless::WhenIdle(say, const_cast<char*>("c"));
    Headless::RunPending();
    EXPECT_EQ(order, "") << "nothing waits yet";
    MSG message{};
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), 1);
    EXPECT_EQ(message.message, UINT{WM_USER});
    EXPECT_EQ(order, "ab");
    SetTimer(window, 1, 50, nullptr);
    const DWORD before = GetTickCount();
    // With nothing left to come the loop ends instead of hanging: no timer moves the clock.
    EXPECT_EQ(GetMessageW(&message, {}, 0, 0), 0);
    EXPECT_EQ(order, "abc");
    EXPECT_EQ(GetTickCount(), before);
    KillTimer(window, 1);
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    // A modal loop passes its quit on; that one is not kept for later.
    PostQuitMessage(0);
    EXPECT_FALSE(PeekMessageW(&message, {}, 0, 0, PM_REMOVE));
    PostQuitMessage(9);
    EXPECT_TRUE(PeekMessageW(&message, {}, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.wParam, 9u);
}

TEST_F(HeadlessTest, ACaptionMoveFollowsInputThatComesLater) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    Log().At(WM_LBUTTONDOWN, [](HWND heard) { SendMessageW(heard, WM_NCLBUTTONDOWN, HTCAPTION, 0); });
    // A timer must not keep the loop turning while no input can come.
    SetTimer(window, 1, 10, nullptr);
    Headless::MovePointer(120, 120);
    Headless::ButtonDown();
    Headless::MovePointer(220, 130);
    EXPECT_EQ(RectOf(window), CRect(200, 110, 250, 160));
    Headless::ButtonUp();
    EXPECT_EQ(Log().Count(window, WM_EXITSIZEMOVE), 1);
    EXPECT_EQ(Log().Count(window, WM_LBUTTONUP), 0);
    Headless::MovePointer(300, 300);
    EXPECT_EQ(RectOf(window).left, 200);
    KillTimer(window, 1);
}

TEST_F(HeadlessTest, TheCursorShownIsThatOfTheWindowUnderThePointer) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    Open(200, 100, 50, 50, kGreen);
    Log().answer = [&](HWND heard, UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_MOUSEMOVE && heard == window) SetCursor(LoadCursorW({}, IDC_HAND));
        return false;
    };
    Headless::MovePointer(110, 110);
    EXPECT_EQ(Headless::CursorShown(), 32649u);
    Headless::MovePointer(210, 110);
    EXPECT_EQ(Headless::CursorShown(), 32512u);
    Headless::MovePointer(110, 110);
    SetCursor({});
    Headless::RunPending();
    EXPECT_EQ(Headless::CursorShown(), 0u);
    Headless::MovePointer(10, 10);
    EXPECT_EQ(Headless::CursorShown(), 32512u);
}

TEST_F(HeadlessTest, AWindowThatNeverStopsPaintingIsGivenUpOn) {
    const HWND window = Open(0, 0, 10, 10, kRed);
    int paints = 0;
    Log().Answer(WM_PAINT, [&](HWND heard) {
        ++paints;
        ValidateRect(heard, nullptr);
        InvalidateRect(heard, nullptr, FALSE);
        return LRESULT{0};
    });
    InvalidateRect(window, nullptr, FALSE);
    SetTimer(window, 1, 10, nullptr);  // which never has its turn
    Headless::Advance(20);
    KillTimer(window, 1);
    EXPECT_GT(paints, 100);
    // Nor does it keep a loop from ending.
    PostQuitMessage(0);
    MSG message{};
    while (GetMessageW(&message, {}, 0, 0) > 0)
        DispatchMessageW(&message);
    EXPECT_EQ(message.message, UINT{WM_QUIT});
}

TEST_F(HeadlessTest, ManyWindowsAreAllPainted) {
    std::vector<HWND> windows;
    for (int i = 0; i < 1500; ++i) {
        windows.push_back(Create(i, i, 5, 5));
        ShowWindow(windows.back(), SW_SHOWNA);
    }
    Headless::RunPending();
    for (const HWND window : windows)
        ASSERT_EQ(Log().Count(window, WM_PAINT), 1);
}

TEST_F(HeadlessTest, ThePixelsDecideWhatThePointerIsOver) {
    const HWND below = Open(100, 100, 20, 20, kRed);
    const HWND window = Open(100, 100, 20, 20, kGreen);
    SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_LAYERED);
    SetLayeredWindowAttributes(window, kBlue, 255, LWA_COLORKEY);
    Headless::MovePointer(110, 110);
    TRACKMOUSEEVENT request = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, window, 0};
    TrackMouseEvent(&request);
    Forget();
    Log().colours[window.ToParam()] = kBlue;
    InvalidateRect(window, nullptr, FALSE);
    Headless::RunPending();
    EXPECT_EQ(Log().Count(window, WM_MOUSELEAVE), 1);
    EXPECT_EQ(Log().Count(below, WM_MOUSEMOVE), 1);
}

TEST_F(HeadlessTest, ManyRectanglesAreOneExactPaint) {
    const HWND window = Open(0, 0, 300, 200, kRed);
    Log().colours[window.ToParam()] = kBlue;
    Forget();
    std::vector<bool> waits(300 * 200);
    std::uint32_t state = 12345;
    const auto next = [&](int limit) {
        state = state * 1664525 + 1013904223;
        return static_cast<int>((state >> 8) % static_cast<unsigned>(limit));
    };
    for (int i = 0; i < 5000; ++i) {
        const int x = next(320) - 10, y = next(220) - 10;
        const RECT part = {x, y, x + next(4), y + next(4)};
        const bool valid = i % 7 == 6;
        if (valid)
            ValidateRect(window, &part);
        else
            InvalidateRect(window, &part, FALSE);
        for (int py = std::max(part.top, 0); py < std::min(part.bottom, 200); ++py)
            for (int px = std::max(part.left, 0); px < std::min(part.right, 300); ++px)
                waits[static_cast<std::size_t>(py * 300 + px)] = !valid;
    }
    Headless::RunPending();
    EXPECT_EQ(Log().Count(window, WM_PAINT), 1);
    const Headless::Picture picture = Headless::Capture(window);
    int wrong = 0;
    for (int i = 0; i < 300 * 200; ++i)
        wrong += (picture.At(i % 300, i / 300) == 0xFF0000FF) != waits[static_cast<std::size_t>(i)];
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace windowtest
