// Who gets the pointer: hit testing, capture, leaving, double clicks, disabled windows, the cursor.
#include "window/window_kit.h"

namespace windowtest {
namespace {

using PointerTest = WindowTest;

const std::vector<UINT> kButtons = {WM_LBUTTONDOWN,   WM_LBUTTONUP,     WM_LBUTTONDBLCLK, WM_RBUTTONDOWN,
                                    WM_RBUTTONUP,     WM_RBUTTONDBLCLK, WM_MBUTTONDOWN,   WM_MBUTTONUP,
                                    WM_MBUTTONDBLCLK, WM_MOUSEMOVE,     WM_MOUSELEAVE};

void Track(HWND window) {
    TRACKMOUSEEVENT request = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, window, 0};
    EXPECT_TRUE(TrackMouseEvent(&request));
}

TEST_F(PointerTest, ButtonsArriveInClientCoordinatesWithTheirState) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    User().Move(110, 120);
    Forget();
    User().Press(1);
    User().Press(2);
    User().Press(3);
    User().Release(1);
    User().Release(2);
    User().Release(3);
    const std::vector<Received> heard = Log().Of(window, kButtons);
    ASSERT_EQ(NamesOf(heard), "LBUTTONDOWN MBUTTONDOWN RBUTTONDOWN LBUTTONUP MBUTTONUP RBUTTONUP");
    const WPARAM states[] = {MK_LBUTTON,
                             MK_LBUTTON | MK_MBUTTON,
                             MK_LBUTTON | MK_MBUTTON | MK_RBUTTON,
                             MK_MBUTTON | MK_RBUTTON,
                             MK_RBUTTON,
                             0};
    for (std::size_t i = 0; i < heard.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(heard[i].wParam, states[i]);
        EXPECT_EQ(heard[i].lParam, MAKELPARAM(10, 20));
    }
}

TEST_F(PointerTest, DoubleClicksNeedTimePlaceWindowAndButton) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    Open(200, 100, 50, 50, kGreen);
    const struct {
        const char* what;
        int button;
        unsigned wait;
        int dx, dy;
        const char* second;
    } cases[] = {
        {"at once", 1, 0, 0, 0, "LBUTTONDBLCLK"},
        {"right button", 3, 0, 0, 0, "RBUTTONDBLCLK"},
        {"in time", 1, GetDoubleClickTime() - 100, 0, 0, "LBUTTONDBLCLK"},
        {"too late", 1, GetDoubleClickTime() + 100, 0, 0, "LBUTTONDOWN"},
        {"near", 1, 0, 2, -2, "LBUTTONDBLCLK"},
        {"too far right", 1, 0, 5, 0, "LBUTTONDOWN"},
        {"too far up", 1, 0, 0, -5, "LBUTTONDOWN"},
    };
    for (const auto& one : cases) {
        if (one.wait && one.wait < GetDoubleClickTime() && !User().HasExactClock()) continue;
        SCOPED_TRACE(one.what);
        User().Pass(GetDoubleClickTime() + 100);
        User().Move(120, 120);
        User().Press(one.button);
        User().Release(one.button);
        if (one.wait) User().Pass(one.wait);
        User().Move(120 + one.dx, 120 + one.dy);
        Forget();
        User().Press(one.button);
        EXPECT_EQ(NameOf(Log().Of(window, kButtons).at(0).message), one.second);
        User().Release(one.button);
    }
    // The button decides, and the third press begins a new pair.
    User().Pass(GetDoubleClickTime() + 100);
    User().Move(120, 120);
    Forget();
    for (const int button : {1, 3, 1, 1, 1, 1})
        User().Click(button);
    EXPECT_EQ(NamesOf(Log().Of(window, {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONDBLCLK})),
              "LBUTTONDOWN RBUTTONDOWN LBUTTONDOWN LBUTTONDBLCLK LBUTTONDOWN LBUTTONDBLCLK");
}

TEST_F(PointerTest, AnotherWindowBreaksADoubleClick) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    const HWND child = OpenChild(window, 10, 10, 20, 20, kGreen);
    User().ClickAt(109, 109);
    User().ClickAt(110, 110);
    EXPECT_EQ(Log().Count(window, WM_LBUTTONDOWN), 1);
    EXPECT_EQ(Log().Count(child, WM_LBUTTONDOWN), 1);
    EXPECT_EQ(Log().Count(child, WM_LBUTTONDBLCLK), 0);
}

TEST_F(PointerTest, TheDeepestChildIsHit) {
    const HWND window = Open(100, 100, 100, 100, kRed);
    const HWND lower = OpenChild(window, 10, 10, 40, 40, kGreen, 1);
    const HWND upper = OpenChild(window, 30, 30, 40, 40, kBlue, 2);
    const HWND inner = OpenChild(upper, 10, 10, 10, 10, kWhite, 3);
    const HWND label =
        CreateWindowExW(0, u"STATIC", u"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100, window, 4, {}, nullptr);
    ASSERT_TRUE(label);
    const HWND hidden = OpenChild(window, 0, 0, 100, 100, kBlack, 5);
    ShowWindow(hidden, SW_HIDE);
    const struct {
        int x, y;
        HWND target;
        int clientX;
    } cases[] = {{5, 5, window, 5},   {15, 15, lower, 5},   {35, 35, upper, 5},  {45, 45, inner, 5},
                 {69, 69, upper, 39}, {70, 70, window, 70}, {99, 99, window, 99}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.x);
        EXPECT_EQ(WindowFromPoint(POINT{100 + one.x, 100 + one.y}), one.target);
        User().Move(100 + one.x, 100 + one.y);
        Forget();
        User().Press(3);
        const std::vector<Received> heard = Log().Of(one.target, {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK});
        ASSERT_EQ(heard.size(), 1u);
        EXPECT_EQ(GET_X_LPARAM(heard[0].lParam), one.clientX);
        User().Release(3);
    }
    EXPECT_EQ(GetDlgItem(window, 4), label);
    EXPECT_EQ(GetDlgItem(window, 6), HWND());
    // Restacked below its sibling, the upper one loses the part they share.
    EXPECT_TRUE(SetWindowPos(upper, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE));
    EXPECT_EQ(WindowFromPoint(POINT{135, 135}), lower);
}

TEST_F(PointerTest, ATransparentHitPassesOn) {
    const HWND below = Open(100, 100, 100, 100, kRed);
    const HWND above = Open(120, 100, 100, 100, kGreen);
    const HWND child = OpenChild(above, 0, 0, 20, 20, kBlue);
    HWND transparent = child;
    Log().answer = [&](HWND window, UINT message, WPARAM, LPARAM, LRESULT& result) {
        if (message != WM_NCHITTEST || !(window == transparent)) return false;
        result = HTTRANSPARENT;
        return true;
    };
    EXPECT_EQ(WindowFromPoint(POINT{125, 105}), above);
    transparent = above;
    EXPECT_EQ(WindowFromPoint(POINT{125, 105}), child);
    EXPECT_EQ(WindowFromPoint(POINT{150, 150}), below);
    EXPECT_EQ(WindowFromPoint(POINT{210, 150}), HWND());
}

TEST_F(PointerTest, CaptureTakesEverythingUntilReleased) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    const HWND other = Open(200, 100, 50, 50, kGreen);
    User().Move(110, 110);
    EXPECT_EQ(SetCapture(window), HWND());
    EXPECT_EQ(GetCapture(), window);
    Forget();
    User().Move(210, 110);
    User().Press();
    User().Move(20, 30);
    User().Release();
    const std::vector<Received> heard = Log().Of(window, kButtons);
    EXPECT_EQ(NamesOf(heard), "MOUSEMOVE LBUTTONDOWN MOUSEMOVE LBUTTONUP");
    EXPECT_EQ(heard.back().lParam, MAKELPARAM(-80, -70));
    EXPECT_TRUE(Log().Of(other, kButtons).empty());
    EXPECT_EQ(SetCapture(other), window);
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_EQ(GetCapture(), HWND());
    User().Move(110, 110);
    EXPECT_EQ(Log().Count(window, WM_MOUSEMOVE), 3);
    EXPECT_TRUE(ReleaseCapture());  // of nothing
}

TEST_F(PointerTest, CaptureEndsWithItsWindow) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    const struct {
        const char* what;
        void (*end)(HWND);
    } ends[] = {
        {"disable", [](HWND w) { EnableWindow(w, FALSE); }},
        {"minimise", [](HWND w) { ShowWindow(w, SW_MINIMIZE); }},
        {"hide", [](HWND w) { ShowWindow(w, SW_HIDE); }},
        {"destroy", [](HWND w) { DestroyWindow(w); }},
    };
    for (const auto& one : ends) {
        SCOPED_TRACE(one.what);
        ShowWindow(window, SW_RESTORE);
        EnableWindow(window, TRUE);
        User().Settle();
        SetCapture(window);
        ASSERT_EQ(GetCapture(), window);
        one.end(window);
        EXPECT_EQ(GetCapture(), HWND());
    }
}

TEST_F(PointerTest, LeavingIsReportedOnceWhenAskedFor) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    const HWND child = OpenChild(window, 0, 0, 20, 20, kBlue);
    const HWND other = Open(150, 100, 50, 50, kGreen);
    const auto leaves = [&] {
        const int count = Log().Count(window, WM_MOUSELEAVE);
        Forget();
        return count;
    };
    User().Move(130, 130);
    User().Move(10, 10);
    EXPECT_EQ(leaves(), 0) << "nobody asked";
    User().Move(130, 130);
    Track(window);
    Track(window);
    User().Move(131, 131);
    EXPECT_EQ(leaves(), 0);
    User().Move(10, 10);
    EXPECT_EQ(leaves(), 1);
    User().Move(130, 130);
    User().Move(10, 10);
    EXPECT_EQ(leaves(), 0) << "one request, one report";
    User().Move(130, 130);
    Track(window);
    Forget();
    User().Move(160, 110);
    ASSERT_FALSE(Log().received.empty());
    EXPECT_EQ(Log().Of(window, {WM_MOUSELEAVE}).size(), 1u);
    EXPECT_EQ(Log().Count(other, WM_MOUSEMOVE), 1);
    std::vector<Received> order;
    for (const Received& heard : Log().received)
        if (heard.message == WM_MOUSELEAVE || heard.message == WM_MOUSEMOVE) order.push_back(heard);
    EXPECT_EQ(NamesOf(order), "MOUSELEAVE MOUSEMOVE");
    User().Move(130, 130);
    Track(window);
    Forget();
    User().Move(110, 110);
    EXPECT_EQ(leaves(), 1) << "a child is another window";
    EXPECT_TRUE(IsWindow(child));
    Track(window);
    User().Settle();
    EXPECT_EQ(leaves(), 1) << "asked while the pointer is elsewhere";
    User().Move(130, 130);
    Track(window);
    TRACKMOUSEEVENT cancel = {sizeof(TRACKMOUSEEVENT), TME_LEAVE | TME_CANCEL, window, 0};
    EXPECT_TRUE(TrackMouseEvent(&cancel));
    User().Move(10, 10);
    EXPECT_EQ(leaves(), 0) << "cancelled";
}

TEST_F(PointerTest, WhileCapturedNobodyLeaves) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    User().Move(130, 130);
    Track(window);
    SetCapture(window);
    User().Move(10, 10);
    EXPECT_EQ(Log().Count(window, WM_MOUSELEAVE), 0);
    ReleaseCapture();
    User().Settle();
    EXPECT_EQ(Log().Count(window, WM_MOUSELEAVE), 1);
    Forget();
    User().Move(130, 130);
    Track(window);
    SetCapture(window);
    User().Move(120, 120);
    ReleaseCapture();
    User().Settle();
    EXPECT_EQ(Log().Count(window, WM_MOUSELEAVE), 0) << "the pointer is still over it";
}

TEST_F(PointerTest, AWindowThatGoesUnderThePointerIsLeft) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    for (const bool minimise : {false, true}) {
        SCOPED_TRACE(minimise);
        User().Move(130, 130);
        Track(window);
        Forget();
        if (minimise)
            ShowWindow(window, SW_MINIMIZE);
        else
            SetWindowPos(window, HWND(), 300, 300, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        User().Settle();
        EXPECT_EQ(Log().Count(window, WM_MOUSELEAVE), 1);
        SetWindowPos(window, HWND(), 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        User().Move(10, 10);
    }
}

TEST_F(PointerTest, DisabledWindowsSwallow) {
    const HWND below = Open(100, 100, 100, 100, kBlue);
    const HWND owner = Open(100, 100, 100, 100, kRed);
    const HWND child = OpenChild(owner, 50, 50, 50, 50, kWhite);
    const HWND dialog = Open(300, 100, 50, 50, kGreen, owner);
    EXPECT_FALSE(EnableWindow(owner, FALSE));
    EXPECT_FALSE(IsWindowEnabled(owner));
    EXPECT_EQ(Log().Count(owner, WM_ENABLE), 1);
    User().Settle();
    Forget();
    for (const int at : {120, 170}) {
        User().ClickAt(at, at);
    }
    User().RequestClose(owner);
    User().Settle();
    for (const HWND window : {owner, child, below})
        EXPECT_EQ(
            NamesOf(Log().Of(window, {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_SETCURSOR, WM_CLOSE})),
            "");
    EXPECT_EQ(GetActiveWindow(), dialog);
    const HWND bystander = Open(300, 120, 50, 50, kBlack);
    EXPECT_EQ(GetActiveWindow(), bystander);
    User().ClickAt(120, 190);
    EXPECT_EQ(GetActiveWindow(), dialog) << "a press on what it disabled brings the dialog up";
    EXPECT_EQ(WindowFromPoint(POINT{310, 130}), dialog);
    Forget();
    User().ClickAt(310, 110);
    EXPECT_EQ(Log().Count(dialog, WM_LBUTTONDOWN), 1);
    EXPECT_TRUE(EnableWindow(owner, TRUE));
    User().Move(120, 120);
    User().Press();
    EXPECT_EQ(Log().Count(owner, WM_LBUTTONDOWN), 1);
    EXPECT_EQ(GetActiveWindow(), owner);
    // The owner is active, and still the dialog is above it.
    EXPECT_EQ(WindowFromPoint(POINT{310, 110}), dialog);
}

TEST_F(PointerTest, TheCursorIsDecidedByMessageThenClass) {
    const HWND window = Open(100, 100, 50, 50, kRed);
    EXPECT_EQ(LoadCursorW({}, MAKEINTRESOURCE(1)), HCURSOR());
    EXPECT_EQ(LoadCursorW({}, u"name"), HCURSOR());
    const HCURSOR hand = LoadCursorW({}, IDC_HAND);
    ASSERT_TRUE(hand);
    bool inMove = false;
    bool inMessage = false;
    Log().answer = [&](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        if (message == WM_MOUSEMOVE && inMove) SetCursor(hand);
        if (message != WM_SETCURSOR || !inMessage) return false;
        EXPECT_EQ(HWND::FromParam(wParam), window);
        EXPECT_EQ(LOWORD(static_cast<std::uint64_t>(lParam)), HTCLIENT);
        SetCursor(LoadCursorW({}, IDC_SIZEALL));
        result = TRUE;
        return true;
    };
    User().Move(110, 110);
    EXPECT_EQ(GetCursor(), LoadCursorW({}, IDC_ARROW));
    inMove = true;
    User().Move(111, 110);
    EXPECT_EQ(GetCursor(), hand);
    inMove = false;
    inMessage = true;
    User().Move(112, 110);
    EXPECT_EQ(GetCursor(), LoadCursorW({}, IDC_SIZEALL));
    inMessage = false;
    User().Move(113, 110);
    EXPECT_EQ(GetCursor(), LoadCursorW({}, IDC_ARROW));
}

TEST_F(PointerTest, ClicksActivateAndRaise) {
    const HWND one = Open(100, 100, 100, 100, kRed);
    const HWND two = Open(150, 150, 100, 100, kGreen);
    User().Settle();
    EXPECT_EQ(GetActiveWindow(), two);
    Forget();
    User().ClickAt(110, 110);
    EXPECT_EQ(GetActiveWindow(), one);
    EXPECT_EQ(GetFocus(), one);
    EXPECT_EQ(ScreenColour(175, 175), kRedPixel);
    const std::vector<Received> lost = Log().Of(two, {WM_ACTIVATE});
    const std::vector<Received> won = Log().Of(one, {WM_ACTIVATE});
    ASSERT_EQ(lost.size(), 1u);
    ASSERT_EQ(won.size(), 1u);
    EXPECT_EQ(LOWORD(lost[0].wParam), WA_INACTIVE);
    EXPECT_EQ(HWND::FromParam(static_cast<std::uint64_t>(lost[0].lParam)), one);
    // A window manager may be quicker than the press that it answers.
    if (User().HasExactClock()) {
        EXPECT_EQ(LOWORD(won[0].wParam), WA_CLICKACTIVE);
    }
    EXPECT_NE(LOWORD(won[0].wParam), WA_INACTIVE);
    EXPECT_EQ(NamesOf(Log().Of(one, {WM_ACTIVATE, WM_SETFOCUS, WM_LBUTTONDOWN})),
              "ACTIVATE SETFOCUS LBUTTONDOWN");
    const HWND quiet = Open(300, 300, 50, 50, kBlue, {}, WS_EX_NOACTIVATE);
    User().ClickAt(310, 310);
    EXPECT_EQ(Log().Count(quiet, WM_LBUTTONDOWN), 1);
    EXPECT_EQ(GetActiveWindow(), one);
}

}  // namespace
}  // namespace windowtest
