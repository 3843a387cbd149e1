// The order of messages: what comes when, and what a filter lets through.
#include <atomic>
#include <thread>

#include "window/window_kit.h"

namespace windowtest {
namespace {

using MessageTest = WindowTest;

TEST_F(MessageTest, CreationAndDestructionHaveAnOrder) {
    const HWND owner = Create(10, 10, 50, 40);
    EXPECT_EQ(NamesOf(Log().Of(owner)), "NCCREATE CREATE SIZE MOVE");
    EXPECT_EQ(Log().Of(owner, {WM_SIZE})[0].lParam, MAKELPARAM(50, 40));
    EXPECT_EQ(Log().Of(owner, {WM_MOVE})[0].lParam, MAKELPARAM(10, 10));
    const HWND child = OpenChild(owner, 1, 2, 3, 4, kRed);
    const HWND owned = Create(0, 0, 5, 5, 0, owner);
    EXPECT_EQ(GetParent(child), owner);
    EXPECT_EQ(GetParent(owned), owner);
    Forget();
    EXPECT_TRUE(DestroyWindow(owner));
    std::vector<std::pair<std::uint64_t, UINT>> order;
    for (const Received& heard : Log().received)
        if (heard.message == WM_DESTROY || heard.message == WM_NCDESTROY)
            order.push_back({heard.window.ToParam(), heard.message});
    const std::vector<std::pair<std::uint64_t, UINT>> expected = {
        {owner.ToParam(), WM_DESTROY}, {child.ToParam(), WM_DESTROY},   {child.ToParam(), WM_NCDESTROY},
        {owned.ToParam(), WM_DESTROY}, {owned.ToParam(), WM_NCDESTROY}, {owner.ToParam(), WM_NCDESTROY}};
    EXPECT_EQ(order, expected);
    EXPECT_FALSE(IsWindow(owner) || IsWindow(child) || IsWindow(owned));
}

TEST_F(MessageTest, CreationCanBeRefused) {
    static int parameter = 7;
    for (const UINT refused : {UINT{WM_NCCREATE}, UINT{WM_CREATE}}) {
        SCOPED_TRACE(NameOf(refused));
        Forget();
        Log().answer = [&](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
            if (message == refused) {
                EXPECT_EQ(reinterpret_cast<int*>(lParam), &parameter);
                result = refused == WM_CREATE ? -1 : FALSE;
            }
            return message == refused;
        };
        EXPECT_FALSE(CreateWindowExW(0, kWindowClass, u"", WS_POPUP, 0, 0, 9, 9, {}, 0, {}, &parameter));
        EXPECT_EQ(Log().received.back().message, UINT{WM_NCDESTROY});
        EXPECT_FALSE(IsWindow(Log().received.back().window));
    }
}

TEST_F(MessageTest, CreationRejectsBadArguments) {
    const HWND gone = Create(0, 0, 5, 5);
    DestroyWindow(gone);
    const struct {
        const char* what;
        LPCWSTR className;
        DWORD style;
        int width;
        HWND parent;
        DWORD error;
    } cases[] = {
        {"unknown class", u"NoSuchClass", WS_POPUP, 5, {}, ERROR_CANNOT_FIND_WND_CLASS},
        {"no class", nullptr, WS_POPUP, 5, {}, ERROR_CANNOT_FIND_WND_CLASS},
        {"number as class", MAKEINTRESOURCE(7), WS_POPUP, 5, {}, ERROR_CANNOT_FIND_WND_CLASS},
        {"negative width", kWindowClass, WS_POPUP, -1, {}, ERROR_INVALID_PARAMETER},
        {"too wide", kWindowClass, WS_POPUP, 32768, {}, ERROR_INVALID_PARAMETER},
        {"child of none", kWindowClass, WS_CHILD, 5, {}, ERROR_INVALID_PARAMETER},
        {"stale owner", kWindowClass, WS_POPUP, 5, gone, ERROR_INVALID_WINDOW_HANDLE},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        SetLastError(0);
        EXPECT_FALSE(CreateWindowExW(0, one.className, u"", one.style, 0, 0, one.width, 5, one.parent, 0, {},
                                     nullptr));
        EXPECT_EQ(GetLastError(), one.error);
    }
    WNDCLASSW again;
    again.lpfnWndProc = DefWindowProcW;
    again.lpszClassName = u"windowTEST";
    EXPECT_FALSE(RegisterClassW(&again));
    EXPECT_EQ(GetLastError(), ERROR_CLASS_ALREADY_EXISTS);
    // Sizes of 0 are windows like others.
    EXPECT_TRUE(Open(0, 0, 0, 0, kRed));
}

TEST_F(MessageTest, PostedThenPaintThenTimersThenQuit) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    SetTimer(window, 1, 10, nullptr);
    SetTimer(window, 2, 10, nullptr);
    // When the first timer comes the second is due as well; everything else is new then, and overtakes it.
    Log().answer = [](HWND heard, UINT message, WPARAM id, LPARAM, LRESULT&) {
        if (message != WM_TIMER || id != 1) return false;
        PostQuitMessage(5);
        InvalidateRect(heard, nullptr, FALSE);
        PostMessageW(heard, WM_USER, 0, 0);
        SendMessageW(heard, WM_USER + 1, 0, 0);
        KillTimer(heard, 1);
        return true;
    };
    Forget();
    if (User().HasExactClock()) User().Pass(10);  // no time goes by in the loop
    MSG message{};
    int got = 0;
    while ((got = GetMessageW(&message, {}, 0, 0)) > 0)
        DispatchMessageW(&message);
    EXPECT_EQ(got, 0);
    EXPECT_EQ(message.wParam, 5u);
    EXPECT_EQ(NamesOf(Log().Of(window, {WM_TIMER, WM_PAINT, WM_USER, WM_USER + 1})),
              "TIMER 1025 1024 PAINT TIMER");
}

TEST_F(MessageTest, FiltersTakeByWindowAndRange) {
    const HWND one = Create(0, 0, 5, 5);
    const HWND two = Create(0, 0, 5, 5);
    const HWND child = OpenChild(one, 0, 0, 2, 2, kRed);
    PostMessageW(one, WM_USER, 1, 0);
    PostMessageW(two, WM_USER, 2, 0);
    PostMessageW(one, WM_USER + 1, 3, 0);
    PostMessageW(child, WM_USER, 4, 0);
    PostMessageW({}, WM_USER, 5, 0);
    const auto take = [](HWND window, UINT first, UINT last, UINT remove) {
        MSG message{};
        return PeekMessageW(&message, window, first, last, remove) ? static_cast<int>(message.wParam) : 0;
    };
    EXPECT_EQ(take({}, 0, 0, PM_NOREMOVE), 1);
    EXPECT_EQ(take(two, 0, 0, PM_REMOVE), 2);
    EXPECT_EQ(take({}, WM_USER + 1, WM_USER + 1, PM_REMOVE), 3);
    EXPECT_EQ(take(child, 0, 0, PM_REMOVE), 4);
    EXPECT_EQ(take(one, WM_USER, WM_USER, PM_REMOVE), 1);
    EXPECT_EQ(take(one, 0, 0, PM_REMOVE), 0);
    EXPECT_EQ(take({}, 0, 0, PM_REMOVE), 5);
    EXPECT_EQ(take({}, 0, 0, PM_REMOVE), 0);
}

TEST_F(MessageTest, MessagesOfADestroyedWindowAreDropped) {
    const HWND window = Create(0, 0, 5, 5);
    PostMessageW(window, WM_USER, 0, 0);
    SetTimer(window, 1, 10, nullptr);
    DestroyWindow(window);
    MSG message{};
    User().Pass(50);
    EXPECT_FALSE(PeekMessageW(&message, {}, 0, 0, PM_REMOVE)) << NameOf(message.message);
    EXPECT_FALSE(PostMessageW(window, WM_USER, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
}

TEST_F(MessageTest, OtherThreadsPostAndSend) {
    const HWND window = Create(0, 0, 5, 5);
    Log().answer = [](HWND, UINT message, WPARAM wParam, LPARAM, LRESULT& result) {
        if (message == WM_USER) result = static_cast<LRESULT>(wParam * 2);
        return message == WM_USER;
    };
    constexpr int kThreads = 4;
    constexpr int kEach = 200;
    std::atomic<int> running = kThreads;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < kEach; ++n) {
                if (!PostMessageW(window, WM_USER + 1, static_cast<WPARAM>(n), 0)) ++wrong;
                if (SendMessageW(window, WM_USER, static_cast<WPARAM>(n), 0) != n * 2) ++wrong;
            }
            // A window belongs to its thread.
            SetLastError(0);
            if (ShowWindow(window, SW_SHOW) || GetLastError() != ERROR_WINDOW_OF_OTHER_THREAD) ++wrong;
            if (DestroyWindow(window)) ++wrong;
            if (CreateWindowExW(0, kWindowClass, u"", WS_POPUP, 0, 0, 5, 5, {}, 0, {}, nullptr) ||
                GetLastError() != ERROR_WINDOW_OF_OTHER_THREAD)
                ++wrong;
            if (!IsWindow(window) || GetFocus() || GetCapture()) ++wrong;
            --running;
        });
    while (running > 0)
        User().Settle();
    for (std::thread& thread : threads)
        thread.join();
    User().Settle();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(Log().Count(window, WM_USER + 1), kThreads * kEach);
    EXPECT_EQ(Log().Count(window, WM_USER), kThreads * kEach);
}

TEST_F(MessageTest, ASendFromElsewhereEndsWithItsWindow) {
    const HWND window = Create(0, 0, 5, 5);
    std::atomic<bool> sending = false;
    std::atomic<LRESULT> answer = 1;
    std::thread sender([&] {
        sending = true;
        answer = SendMessageW(window, WM_USER, 0, 0);
    });
    while (!sending)
        std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    DestroyWindow(window);
    sender.join();
    EXPECT_EQ(answer, 0);
}

TEST_F(MessageTest, AThreadWithoutWindowsHasItsOwnQueue) {
    Create(0, 0, 5, 5);
    std::string order;
    std::thread([&] {
        PostMessageW({}, WM_USER, 0, 0);
        PostQuitMessage(3);
        MSG message{};
        while (GetMessageW(&message, {}, 0, 0) > 0)
            order += NameOf(message.message) + " ";
        order += NameOf(message.message) + " " + std::to_string(message.wParam);
        SetLastError(0);
        order += GetMessageW(&message, {}, 0, 0) == -1 ? " -1" : " ?";
    }).join();
    EXPECT_EQ(order, "1024 QUIT 3 -1");
}

TEST_F(MessageTest, KeysBecomeMessagesWithTheirText) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    SetActiveWindow(window);
    User().Settle();
    Forget();
    std::string states;
    Log().answer = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_CHAR)
            states += GetKeyState(VK_SHIFT) & 0x8000 ? 'S' : GetKeyState(VK_MENU) & 0x8000 ? 'A' : '-';
        return message == WM_SYSKEYDOWN;
    };
    User().Stroke('A');
    User().KeyDown(VK_SHIFT);
    User().Stroke('A');
    User().KeyUp(VK_SHIFT);
    User().KeyDown(VK_MENU);
    User().Stroke('X');
    User().KeyUp(VK_MENU);
    const std::vector<UINT> keys = {WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_SYSKEYDOWN, WM_SYSKEYUP};
    EXPECT_EQ(NamesOf(Log().Of(window, keys)),
              "KEYDOWN CHAR KEYUP KEYDOWN KEYDOWN CHAR KEYUP KEYUP "
              "SYSKEYDOWN SYSKEYDOWN SYSKEYUP SYSKEYUP");
    EXPECT_EQ(states, "--SSSAA");
    const std::vector<Received> text = Log().Of(window, {WM_CHAR});
    ASSERT_EQ(text.size(), 2u);
    EXPECT_EQ(text[0].wParam, WPARAM{'a'});
    EXPECT_EQ(text[1].wParam, WPARAM{'A'});
}

TEST_F(MessageTest, AltF4AndTheCloseButtonCloseByTheSameRoad) {
    for (const bool byKey : {true, false}) {
        SCOPED_TRACE(byKey);
        const HWND window = Open(100, 100, 50, 50, kRed);
        SetActiveWindow(window);
        User().Settle();
        Forget();
        if (byKey) {
            User().KeyDown(VK_MENU);
            User().Stroke(VK_F4);
            User().KeyUp(VK_MENU);
        } else {
            User().RequestClose(window);
        }
        EXPECT_EQ(NamesOf(Log().Of(window, {WM_SYSCOMMAND, WM_CLOSE, WM_DESTROY, WM_NCDESTROY})),
                  "SYSCOMMAND CLOSE DESTROY NCDESTROY");
        EXPECT_FALSE(IsWindow(window));
    }
}

}  // namespace
}  // namespace windowtest
