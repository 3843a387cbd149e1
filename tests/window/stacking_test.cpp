// Which window is where: stacking, owners, topmost windows, showing, minimising, activation.
#include <algorithm>

#include "window/window_kit.h"

namespace windowtest {
namespace {

class StackingTest : public WindowTest {
  protected:
    // The windows at one point, seen from above, as letters of their order in `windows`.
    std::string Order(const std::vector<HWND>& windows) {
        std::string order;
        std::vector<HWND> hidden;
        for (;;) {
            const HWND top = WindowFromPoint(POINT{110, 110});
            const auto found = std::find(windows.begin(), windows.end(), top);
            if (found == windows.end()) break;
            order += static_cast<char>('a' + (found - windows.begin()));
            Holes().push_back(top);
        }
        Holes().clear();
        return order;
    }
    static std::vector<HWND>& Holes() {
        static std::vector<HWND> holes;
        return holes;
    }
    void SetUp() override {
        WindowTest::SetUp();
        Log().answer = [](HWND window, UINT message, WPARAM, LPARAM, LRESULT& result) {
            if (message != WM_NCHITTEST) return false;
            if (std::find(Holes().begin(), Holes().end(), window) == Holes().end()) return false;
            result = HTTRANSPARENT;
            return true;
        };
    }
    static constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
};

TEST_F(StackingTest, WindowsGoWhereTheyArePut) {
    const HWND a = Open(100, 100, 50, 50, kRed);
    const HWND b = Open(100, 100, 50, 50, kGreen);
    const HWND c = Open(100, 100, 50, 50, kBlue);
    const std::vector<HWND> all = {a, b, c};
    EXPECT_EQ(Order(all), "cba");
    const struct {
        const char* what;
        HWND window, after;
        const char* order;
        std::uint32_t pixel;
    } steps[] = {
        {"top", a, HWND_TOP, "acb", kRedPixel},
        {"bottom", a, HWND_BOTTOM, "cba", kBluePixel},
        {"under", c, b, "bca", kGreenPixel},
        {"topmost", a, HWND_TOPMOST, "abc", kRedPixel},
        {"top again", c, HWND_TOP, "acb", kRedPixel},
        {"topmost too", b, HWND_TOPMOST, "bac", kGreenPixel},
        {"not any more", b, HWND_NOTOPMOST, "abc", kRedPixel},
        {"under a topmost", c, a, "acb", kRedPixel},
        {"bottom of its layer", a, HWND_BOTTOM, "acb", kRedPixel},
        {"all normal", a, HWND_NOTOPMOST, "acb", kRedPixel},
        {"last", c, HWND_TOP, "cab", kBluePixel},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        EXPECT_TRUE(SetWindowPos(step.window, step.after, 0, 0, 0, 0, kStay));
        User().Settle();
        EXPECT_EQ(Order(all), step.order);
        EXPECT_EQ(ScreenColour(110, 110), step.pixel);
    }
    EXPECT_FALSE(SetWindowPos(a, a, 0, 0, 0, 0, kStay));
}

TEST_F(StackingTest, OwnedWindowsStayAboveTheirOwners) {
    const HWND a = Open(100, 100, 50, 50, kRed);
    const HWND b = Open(100, 100, 50, 50, kGreen, a);
    const HWND c = Open(100, 100, 50, 50, kBlue, b);
    const HWND d = Open(100, 100, 50, 50, kWhite);
    const std::vector<HWND> all = {a, b, c, d};
    EXPECT_EQ(Order(all), "dcba");
    const struct {
        HWND window, after;
        const char* order;
    } steps[] = {{a, HWND_TOP, "cbad"},     {c, HWND_BOTTOM, "cbad"}, {d, HWND_TOP, "dcba"},
                 {a, HWND_TOPMOST, "cbad"}, {d, HWND_TOP, "cbad"},    {a, HWND_NOTOPMOST, "cbad"},
                 {d, HWND_TOP, "dcba"},     {b, HWND_TOP, "cbda"}};
    for (const auto& step : steps) {
        SCOPED_TRACE(step.order);
        EXPECT_TRUE(SetWindowPos(step.window, step.after, 0, 0, 0, 0, kStay));
        User().Settle();
        EXPECT_EQ(Order(all), step.order);
    }
}

// Long random lives: layers and owners hold, the moved window is where it was put, the others keep their
// order.
TEST_F(StackingTest, AnyOrderOfMovesKeepsTheRules) {
    if (!User().HasExactClock()) GTEST_SKIP() << "one system does; this many moves are slow on the other";
    std::vector<HWND> all;
    for (int i = 0; i < 12; ++i)
        all.push_back(Open(100, 100, 50, 50, kRed,
                           i % 3 ? all[static_cast<std::size_t>((i * 5 + 3) % i)] : HWND(),
                           i % 5 == 3 ? DWORD{WS_EX_TOPMOST} : 0));
    const auto isTopmost = [&](HWND window) {
        for (; window; window = GetParent(window))
            if (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) return true;
        return false;
    };
    const auto belongsTo = [](HWND window, HWND owner) {
        while (window && !(window == owner))
            window = GetParent(window);
        return static_cast<bool>(window);
    };
    const auto place = [&](const std::string& order, HWND window) {
        const auto index = std::find(all.begin(), all.end(), window) - all.begin();
        return order.find(static_cast<char>('a' + index));
    };
    std::uint32_t state = 7;
    const auto next = [&](std::size_t limit) {
        return (state = state * 1664525 + 1013904223) / 65536 % limit;
    };
    std::string before = Order(all);
    for (std::size_t step = 0; step < 3000; ++step) {
        const HWND window = all[next(12)];
        const HWND places[] = {HWND_TOP, HWND_BOTTOM, HWND_TOPMOST, HWND_NOTOPMOST};
        const bool named = next(2);
        const HWND after = named ? all[step / 100 % 12] : places[next(4)];
        if (after == window) continue;
        const bool put = next(8) != 0;
        if (!put)
            SetWindowLongPtrW(window, GWL_EXSTYLE, next(2) ? LONG_PTR{WS_EX_TOPMOST} : 0);
        else
            SetWindowPos(window, after, 0, 0, 0, 0, kStay);
        const std::string order = Order(all);
        ASSERT_EQ(order.size(), 12u) << step;
        std::string stayed[2];
        for (std::size_t at = 0; at < 12; ++at) {
            const HWND one = all[static_cast<std::size_t>(order[at] - 'a')];
            const HWND under = at < 11 ? all[static_cast<std::size_t>(order[at + 1] - 'a')] : HWND();
            ASSERT_FALSE(under && isTopmost(under) && !isTopmost(one)) << step << order;
            ASSERT_GT(place(order, GetParent(one)), at) << step << order;
            if (!belongsTo(one, window)) stayed[0] += order[at];
            if (!belongsTo(all[static_cast<std::size_t>(before[at] - 'a')], window)) stayed[1] += before[at];
        }
        ASSERT_EQ(stayed[0], stayed[1]) << step;
        const std::size_t own = place(order, window), above = place(order, after);
        if (put && named && !belongsTo(after, window) && isTopmost(after) == isTopmost(window) &&
            (!GetParent(window) || place(order, GetParent(window)) > above)) {
            ASSERT_LT(above, own) << step << order;
            for (std::size_t at = above + 1; at < own; ++at)
                ASSERT_TRUE(belongsTo(all[static_cast<std::size_t>(order[at] - 'a')], window)) << order;
        }
        before = order;
    }
}

TEST_F(StackingTest, PlacesAndSizes) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    Forget();
    EXPECT_TRUE(SetWindowPos(window, {}, 5, 6, 7, 8, SWP_NOZORDER | SWP_NOACTIVATE));
    EXPECT_EQ(NamesOf(Log().Of(window)).substr(0, 26), "WINDOWPOSCHANGED MOVE SIZE");
    EXPECT_EQ(RectOf(window), CRect(5, 6, 12, 14));
    CRect client;
    GetClientRect(window, client);
    EXPECT_EQ(client, CRect(0, 0, 7, 8));
    Forget();
    EXPECT_TRUE(MoveWindow(window, 5, 6, 7, 8, TRUE));
    EXPECT_TRUE(Log().received.empty()) << "nothing changed";
    EXPECT_FALSE(SetWindowPos(window, {}, 0, 0, -1, 5, SWP_NOZORDER));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_TRUE(SetWindowPos(window, {}, -20, 2000000000, 0, 0, SWP_NOZORDER | SWP_NOSIZE | SWP_NOACTIVATE));
    EXPECT_EQ(RectOf(window).left, -20);
    EXPECT_LT(RectOf(window).bottom, 40000) << "held inside what a window system can name";
    const HWND child = OpenChild(window, 2, 3, 4, 4, kBlue);
    MoveWindow(window, 100, 200, 20, 20, TRUE);
    POINT point = {1, 1};
    EXPECT_TRUE(ClientToScreen(child, &point));
    EXPECT_EQ(point, (POINT{103, 204}));
    EXPECT_TRUE(ScreenToClient(child, &point));
    EXPECT_EQ(point, (POINT{1, 1}));
}

TEST_F(StackingTest, ShowingAndHiding) {
    const HWND window = Create(100, 100, 50, 50);
    EXPECT_FALSE(IsWindowVisible(window));
    Forget();
    EXPECT_FALSE(ShowWindow(window, SW_SHOW));
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_EQ(NamesOf(Log().Of(window, {WM_SHOWWINDOW, WM_ACTIVATE, WM_SETFOCUS})),
              "SHOWWINDOW ACTIVATE SETFOCUS");
    EXPECT_TRUE(ShowWindow(window, SW_SHOW));
    User().Settle();
    EXPECT_EQ(Log().Count(window, WM_SHOWWINDOW), 1);
    EXPECT_EQ(Log().Count(window, WM_ACTIVATE), 1) << "what the system reports is no news";
    Forget();
    EXPECT_TRUE(ShowWindow(window, SW_HIDE));
    EXPECT_EQ(NamesOf(Log().Of(window, {WM_SHOWWINDOW, WM_ACTIVATE, WM_KILLFOCUS})),
              "SHOWWINDOW ACTIVATE KILLFOCUS");
    EXPECT_EQ(GetActiveWindow(), HWND());
    EXPECT_EQ(ScreenColour(110, 110), kDesktopColour);
    for (const int quiet : {SW_SHOWNA, SW_SHOWNOACTIVATE}) {
        ShowWindow(window, SW_HIDE);
        ShowWindow(window, quiet);
        User().Settle();
        EXPECT_EQ(GetActiveWindow(), HWND()) << quiet;
    }
    EXPECT_FALSE(ShowWindow(window, SW_HIDE) == FALSE);
    EXPECT_TRUE(SetWindowPos(window, {}, 0, 0, 0, 0, kStay | SWP_NOZORDER | SWP_SHOWWINDOW));
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_TRUE(SetWindowPos(window, {}, 0, 0, 0, 0, kStay | SWP_NOZORDER | SWP_HIDEWINDOW));
    EXPECT_FALSE(IsWindowVisible(window));
}

TEST_F(StackingTest, MinimisingAndBack) {
    const HWND other = Open(300, 100, 50, 50, kBlue);
    const HWND window = Open(100, 100, 50, 50, kRed);
    const HWND owned = Open(110, 110, 10, 10, kGreen, window);
    SetActiveWindow(window);
    User().Settle();
    Forget();
    PostMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    User().Settle();
    EXPECT_TRUE(IsIconic(window));
    EXPECT_EQ(RectOf(window).TopLeft(), CPoint(-32000, -32000));
    const std::vector<Received> size = Log().Of(window, {WM_SIZE});
    ASSERT_EQ(size.size(), 1u);
    EXPECT_EQ(size[0].wParam, WPARAM{SIZE_MINIMIZED});
    const std::vector<Received> lost = Log().Of(window, {WM_ACTIVATE});
    ASSERT_EQ(lost.size(), 1u);
    EXPECT_EQ(lost[0].wParam, (WPARAM{1} << 16) | WA_INACTIVE);
    EXPECT_EQ(GetActiveWindow(), other) << "the next one below comes up";
    EXPECT_EQ(ScreenColour(105, 105), kDesktopColour);
    EXPECT_EQ(ScreenColour(115, 115), kDesktopColour) << "what it owns goes with it";
    EXPECT_TRUE(IsWindow(owned));
    InvalidateRect(window, nullptr, FALSE);
    Forget();
    User().Settle();
    EXPECT_EQ(Log().Count(window, WM_PAINT), 0);
    // Moved meanwhile, it comes back there.
    SetWindowPos(window, {}, 120, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(RectOf(window).left, -32000);
    PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    User().Settle();
    EXPECT_FALSE(IsIconic(window));
    EXPECT_EQ(RectOf(window), CRect(120, 100, 170, 150));
    EXPECT_EQ(Log().Of(window, {WM_SIZE}).at(0).wParam, WPARAM{SIZE_RESTORED});
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_EQ(ScreenColour(125, 105), kRedPixel);
}

TEST_F(StackingTest, AWindowMayAppearMinimised) {
    for (const bool born : {false, true}) {
        SCOPED_TRACE(born);
        const DWORD style = WS_POPUP | (born ? DWORD{WS_MINIMIZE | WS_VISIBLE} : 0);
        const HWND window =
            CreateWindowExW(0, kWindowClass, u"", style, 100, 100, 30, 30, {}, 0, {}, nullptr);
        if (!born) ShowWindow(window, SW_MINIMIZE);
        Log().colours[window.ToParam()] = kRed;
        User().Settle();
        EXPECT_TRUE(IsIconic(window) && IsWindowVisible(window));
        EXPECT_FALSE(GetActiveWindow() == window);
        EXPECT_EQ(ScreenColour(110, 110), kDesktopColour);
        ShowWindow(window, SW_RESTORE);
        User().Settle();
        EXPECT_EQ(GetActiveWindow(), window);
        EXPECT_EQ(ScreenColour(110, 110), kRedPixel);
        DestroyWindow(window);
    }
}

TEST_F(StackingTest, TheOwnerComesUpWhenItsDialogGoes) {
    const HWND owner = Open(100, 100, 50, 50, kRed);
    const HWND bystander = Open(300, 100, 50, 50, kBlue);
    for (const bool hide : {false, true}) {
        SCOPED_TRACE(hide);
        const HWND dialog = Open(110, 110, 20, 20, kGreen, owner);
        EXPECT_EQ(GetActiveWindow(), dialog);
        if (hide)
            ShowWindow(dialog, SW_HIDE);
        else
            DestroyWindow(dialog);
        User().Settle();
        EXPECT_EQ(GetActiveWindow(), owner);
        SetActiveWindow(bystander);
        User().Settle();
    }
}

TEST_F(StackingTest, FocusMovesInsideAndBetween) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    const HWND child = OpenChild(window, 0, 0, 10, 10, kBlue);
    const HWND other = Open(200, 100, 50, 50, kGreen);
    EXPECT_EQ(GetFocus(), other);
    EXPECT_EQ(SetFocus(child), other);
    EXPECT_EQ(GetActiveWindow(), window) << "the focus brings its window along";
    EXPECT_EQ(GetFocus(), child);
    User().Settle();
    Forget();
    User().Stroke('Q');
    EXPECT_EQ(Log().Count(child, WM_KEYDOWN), 1);
    EXPECT_EQ(Log().Count(window, WM_KEYDOWN), 0);
    EnableWindow(child, FALSE);
    Forget();
    User().Stroke('Q');
    EXPECT_EQ(Log().Count(child, WM_KEYDOWN), 0);
    EXPECT_EQ(SetFocus(child), HWND()) << "disabled";
    EnableWindow(child, TRUE);
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(GetFocus(), window);
    EXPECT_EQ(SetFocus({}), window);
    EXPECT_EQ(GetFocus(), HWND());
    EXPECT_TRUE(SetForegroundWindow(other));
    EXPECT_EQ(GetActiveWindow(), other);
    ShowWindow(window, SW_HIDE);
    EXPECT_FALSE(SetForegroundWindow(window));
}

TEST_F(StackingTest, TextsAndNumbers) {
    const HWND window = Create(0, 0, 5, 5);
    EXPECT_TRUE(GetWindowTextW(window) == u"test");
    EXPECT_TRUE(SetWindowTextW(window, u"Grüße 世界"));
    EXPECT_TRUE(GetWindowTextW(window) == u"Grüße 世界");
    EXPECT_TRUE(SetWindowTextW(window, nullptr));
    EXPECT_TRUE(GetWindowTextW(window).IsEmpty());
    for (const int index : {GWLP_USERDATA, GWLP_ID, GWL_EXSTYLE}) {
        SCOPED_TRACE(index);
        const LONG_PTR before = GetWindowLongPtrW(window, index);
        EXPECT_EQ(SetWindowLongPtrW(window, index, 0x1234), before);
        EXPECT_EQ(GetWindowLongPtrW(window, index), 0x1234);
    }
    SetLastError(0);
    EXPECT_EQ(GetWindowLongPtrW(window, 999), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

}  // namespace
}  // namespace windowtest
