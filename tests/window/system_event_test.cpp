// What the core makes of the events that a window system reports.
#include "window/system_kit.h"

namespace windowtest {
namespace {

TEST_F(SystemTest, MovesThatWaitAreOne) {
    const HWND window = Open();
    for (int i = 0; i < 50; ++i)
        Move(window, {105 + i % 20, 110}, 1);
    PostMessageW(window, WM_USER, 0, 0);
    Move(window, {107, 111}, 2);
    Press(window, {107, 111}, 3);
    Move(window, {109, 111}, 4, kHeld);
    Move(window, {110, 112}, 5, kHeld);
    Settle();
    std::string order;
    for (const Received& one : Log().received)
        if (one.message == WM_MOUSEMOVE || one.message == WM_USER || one.message == WM_LBUTTONDOWN)
            order += std::to_string(one.message) + ":" +
                     (one.message == WM_USER ? "" : std::to_string(GET_X_LPARAM(one.lParam))) + " ";
    EXPECT_EQ(order, "512:7 1024: 513:7 512:10 ");
}

TEST_F(SystemTest, EventsComeInTheirTurn) {
    const HWND window = Open();
    // The handler of the first key disables the window: the second, reported before, is for nobody.
    Log().At(WM_KEYDOWN, [&](HWND) { EnableWindow(window, FALSE); });
    Key(window, 'A', 1);
    Key(window, 'B', 1);
    EXPECT_TRUE(Log().received.empty()) << "nothing runs while the system reports";
    Settle();
    EXPECT_EQ(Count(window, WM_KEYDOWN), 1);
    EXPECT_TRUE(GetKeyState('B') & 0x8000);
}

TEST_F(SystemTest, TheOutsidePlacesMinimisesAndDestroys) {
    const HWND window = Open();
    Report(event::BoundsChanged{window, RECT{1, 2, 3, 4}});
    Report(event::BoundsChanged{window, RECT{200, 210, 260, 250}});
    Settle();
    EXPECT_EQ(RectOf(window), (RECT{200, 210, 260, 250}));
    EXPECT_EQ(Count(window, WM_MOVE), 1);
    EXPECT_EQ(Count(window, WM_SIZE), 1);
    EXPECT_EQ(Count(window, WM_PAINT), 1);
    EXPECT_EQ(System().TakeLog().find("place"), std::string::npos) << "not told back what it said";
    Report(event::MinimisedChanged{window, true});
    Settle();
    EXPECT_TRUE(IsIconic(window));
    Report(event::MinimisedChanged{window, false});
    Settle();
    EXPECT_FALSE(IsIconic(window));
    EXPECT_EQ(System().TakeLog().find("minimise"), std::string::npos);
    SetCapture(window);
    Report(event::GrabLost{window});
    Settle();
    EXPECT_EQ(GetCapture(), HWND());
    System().TakeLog();
    Report(event::SystemDestroyed{window});
    Settle();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(Count(window, WM_NCDESTROY), 1);
    EXPECT_EQ(System().TakeLog(), "") << "nothing is asked of a native window that is gone";
    Move(window, {0, 0}, 1);
    Report(event::Exposed{window, Region(CRect{0, 0, 9, 9})});
    Report(event::CloseRequested{window});
    Settle();
}

TEST_F(SystemTest, FocusThatArrivesLateIsNoNews) {
    const HWND one = Create();
    const HWND two = Create();
    ShowWindow(one, SW_SHOW);
    ShowWindow(two, SW_SHOW);
    Log().received.clear();
    // The server is still at the first request.
    FocusGoes(one, true);
    EXPECT_EQ(GetActiveWindow(), two);
    Focus(one, false);
    FocusGoes(two, true);
    EXPECT_EQ(Count(one, WM_ACTIVATE) + Count(two, WM_ACTIVATE), 0);
    // The user goes to another program and back to the first window.
    FocusGoes(two, false);
    EXPECT_EQ(GetActiveWindow(), HWND());
    EXPECT_EQ(GetFocus(), HWND());
    EXPECT_EQ(Count(two, WM_KILLFOCUS), 1);
    FocusGoes(one, true);
    EXPECT_EQ(GetActiveWindow(), one);
    EXPECT_EQ(GetFocus(), one);
}

TEST_F(SystemTest, ARefusedFocusIsFollowedInTheEnd) {
    const HWND one = Create();
    const HWND two = Create();
    ShowWindow(one, SW_SHOW);
    FocusGoes(one, true);
    SetActiveWindow(two);
    ShowWindow(two, SW_SHOW);
    EXPECT_EQ(GetActiveWindow(), two);
    // Nothing is reported: the window manager left the focus where it was. A key shows where that is.
    System().now += 1000;
    Key(one, 'A', System().now);
    Settle();
    EXPECT_EQ(GetActiveWindow(), one);
    EXPECT_EQ(Count(one, WM_KEYDOWN), 1);
    // And so does waiting, also when another program has it.
    FocusGoes(one, false);
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
    Focus(one, true);
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
    for (const bool minimised : {true, false}) {
        SCOPED_TRACE(minimised ? "minimised" : "disabled");
        FocusGoes(window, true);
        EXPECT_EQ(GetActiveWindow(), window);
        if (minimised)
            Report(event::MinimisedChanged{window, true});
        else
            EnableWindow(window, FALSE);
        FocusGoes(window, false);
        EXPECT_EQ(GetActiveWindow(), HWND());
        FocusGoes(window, true);
        EXPECT_EQ(GetActiveWindow(), HWND());
        if (minimised)
            Report(event::MinimisedChanged{window, false});
        else
            EnableWindow(window, TRUE);
        Settle();
        EXPECT_EQ(GetActiveWindow(), window);
    }
}

TEST_F(SystemTest, WhatAnotherProgramTookIsNotHeld) {
    const HWND window = Create(WS_POPUP | WS_VISIBLE);
    Key(window, 'A', 1);
    Key(window, 'B', 1);
    Press(window, {105, 105}, 1, kHeld);
    platform::KeySet held;
    held.set('B');
    Report(event::KeysHeld{held});
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
    Log().received.clear();
    System().under = two;
    Move(one, {310, 110}, 1, kHeld);
    Settle();
    EXPECT_EQ(Count(two, WM_MOUSEMOVE), 1);
    EXPECT_EQ(Count(one, WM_MOUSEMOVE), 0);
    System().under = HWND();
    Release(one, {500, 500}, 1, kHeld);
    Settle();
    EXPECT_EQ(Count(one, WM_LBUTTONUP) + Count(two, WM_LBUTTONUP), 0);
}

TEST_F(SystemTest, NoCaptionMoveWaitsForAReleaseThatWas) {
    const HWND window = Open();
    bool moves = false, waited = false;
    Log().At(WM_LBUTTONDOWN, [&](HWND) {
        moves = true;
        SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, 0);
        moves = false;
    });
    for (const bool lost : {false, true}) {
        SCOPED_TRACE(lost);
        Log().received.clear();
        const std::uint64_t time = lost ? 3000 : 1;
        System().held = !lost;
        System().onWait = [&] { waited = moves; };
        Press(window, {105, 105}, time);
        // Behind the press, before anybody has looked at that.
        if (!lost) Release(window, {105, 105}, time + 1);
        Settle();
        EXPECT_EQ(Count(window, WM_EXITSIZEMOVE), 1);
        EXPECT_FALSE(waited);
        EXPECT_EQ(GetCapture(), HWND());
    }
}

TEST_F(SystemTest, APlaceReportedDuringACaptionMoveCountsUnlessItIsBehind) {
    const HWND window = Open();
    MoveByPress(window);
    System().onWait = [&] {
        Move(window, {125, 105}, 2, kHeld);
        Report(event::BoundsChanged{window, RECT{101, 100, 141, 130}});
        System().onWait = [&] {
            EXPECT_EQ(RectOf(window), (RECT{120, 100, 160, 130})) << "reported before the request";
            Report(event::BoundsChanged{window, RECT{120, 110, 160, 140}});  // as far as it is let
            System().onWait = [&] {
                EXPECT_EQ(RectOf(window), (RECT{120, 110, 160, 140}));
                Release(window, {125, 105}, 3, kHeld);
            };
        };
    };
    Press(window, {105, 105}, 1);
    Settle();
    EXPECT_EQ(RectOf(window), (RECT{120, 110, 160, 140}));
    EXPECT_EQ(Count(window, WM_LBUTTONUP), 0);
    // Input lands where the window was when it was made.
    Log().received.clear();
    Log().answer = nullptr;
    Move(window, {125, 115}, 4);
    Report(event::BoundsChanged{window, RECT{20, 10, 60, 40}});
    Move(window, {26, 16}, 5);
    Report(event::BoundsChanged{window, RECT{50, 10, 90, 40}});
    Settle();
    std::vector<LPARAM> points;
    for (const Received& one : Log().received)
        if (one.message == WM_MOUSEMOVE) points.push_back(one.lParam);
    EXPECT_EQ(points, (std::vector<LPARAM>{MAKELPARAM(5, 5), MAKELPARAM(6, 6)}));
}

}  // namespace
}  // namespace windowtest
