// The move by the caption: the window follows the pointer until the release.
#include "window/window_kit.h"

namespace windowtest {
namespace {

class CaptionTest : public WindowTest {
  public:
    // A window that is moved by a press anywhere, as a window without a frame does it.
    HWND OpenMovable() {
        window_ = Open(100, 100, 50, 50, kRed);
        Log().answer = [this](HWND window, UINT message, WPARAM, LPARAM, LRESULT&) {
            if (window == window_ && message == WM_LBUTTONDOWN) {
                SendMessageW(window_, WM_NCLBUTTONDOWN, HTCAPTION, MAKELPARAM(10, 10));
                returned_ = true;
            }
            return false;
        };
        Forget();
        return window_;
    }
    CRect Place() { return RectOf(window_); }
    using Act = std::function<void()>;
    const Act MoveFar = [this] { User().Move(160, 90); };
    const Act LetGo = [this] { User().Release(); };
    const Act Escape = [this] { User().Stroke(VK_ESCAPE); };

    HWND window_;
    bool returned_ = false;
};

TEST_F(CaptionTest, TheWindowFollowsUntilTheRelease) {
    OpenMovable();
    PressAnd({MoveFar, [&] { EXPECT_EQ(Place(), CRect(150, 80, 200, 130)); },
              [&] { EXPECT_FALSE(returned_); }, LetGo});
    EXPECT_TRUE(returned_);
    EXPECT_EQ(Place(), CRect(150, 80, 200, 130));
    EXPECT_EQ(GetCapture(), HWND());
    User().Settle();
    EXPECT_EQ(NamesOf(Log().Of(window_,
                               {WM_ENTERSIZEMOVE, WM_MOVE, WM_EXITSIZEMOVE, WM_LBUTTONUP, WM_LBUTTONDOWN})),
              "LBUTTONDOWN ENTERSIZEMOVE MOVE EXITSIZEMOVE");
    // The button is known to be up: the next press is a press.
    User().Move(10, 10);
    EXPECT_EQ(Place(), CRect(150, 80, 200, 130));
    EXPECT_EQ(ScreenColour(160, 90), kRedPixel);
    EXPECT_FALSE(GetKeyState(VK_LBUTTON) & 0x8000);
}

TEST_F(CaptionTest, EscapePutsItBack) {
    OpenMovable();
    PressAnd({MoveFar, Escape});
    EXPECT_TRUE(returned_);
    EXPECT_EQ(Place(), CRect(100, 100, 150, 150));
    EXPECT_EQ(Log().Count(window_, WM_EXITSIZEMOVE), 1);
    User().Release();
    EXPECT_EQ(GetCapture(), HWND());
}

TEST_F(CaptionTest, ADoubleClickIsStillSeen) {
    OpenMovable();
    PressAnd({LetGo});
    PressAnd({});
    User().Release();
    EXPECT_EQ(Log().Count(window_, WM_LBUTTONDOWN), 1);
    EXPECT_EQ(Log().Count(window_, WM_LBUTTONDBLCLK), 1);
}

TEST_F(CaptionTest, MessagesAndTimersGoOnMeanwhile) {
    OpenMovable();
    PressAnd({[&] { PostMessageW(window_, WM_USER, 0, 0); },
              [&] {
                  EXPECT_EQ(Log().Count(window_, WM_USER), 1);
                  SetTimer(window_, 3, 20, nullptr);
                  User().Pass(50);
                  EXPECT_GE(Log().Count(window_, WM_TIMER), 1);
                  KillTimer(window_, 3);
              },
              LetGo});
    EXPECT_TRUE(returned_);
}

TEST_F(CaptionTest, WhatEndsTheMove) {
    const struct {
        const char* what;
        Act end;
        bool lives;
    } cases[] = {
        {"release of the capture", [&] { ReleaseCapture(); }, true},
        {"capture by another", [&] { SetCapture(GetParent(window_)); }, true},
        {"hide", [&] { ShowWindow(window_, SW_HIDE); }, true},
        {"minimise", [&] { ShowWindow(window_, SW_MINIMIZE); }, true},
        {"disable", [&] { EnableWindow(window_, FALSE); }, true},
        {"destroy", [&] { DestroyWindow(window_); }, false},
        {"quit", [&] { PostQuitMessage(4); }, true},
    };
    const HWND owner = Open(400, 400, 20, 20, kBlue);
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        window_ = Open(100, 100, 50, 50, kRed, owner);
        OpenMovable();
        DestroyWindow(window_);
        window_ = Open(100, 100, 50, 50, kRed, owner);
        Forget();
        returned_ = false;
        PressAnd({MoveFar, one.end});
        EXPECT_TRUE(returned_);
        EXPECT_EQ(IsWindow(window_) != FALSE, one.lives);
        EXPECT_EQ(Log().Count(window_, WM_EXITSIZEMOVE), 1);
        MSG message{};
        while (PeekMessageW(&message, {}, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
            DispatchMessageW(&message);
        EXPECT_EQ(message.message == WM_QUIT, one.what == std::string("quit"));
        User().Release();
        const CRect rest = Place();
        User().Move(300, 300);
        EXPECT_EQ(Place(), rest) << "nothing follows the pointer any more";
        ReleaseCapture();
        if (one.lives) DestroyWindow(window_);
    }
}

TEST_F(CaptionTest, WithTheButtonUpItReturnsAtOnce) {
    OpenMovable();
    User().Move(110, 110);
    SendMessageW(window_, WM_NCLBUTTONDOWN, HTCAPTION, 0);
    User().Move(160, 160);
    EXPECT_EQ(Place(), CRect(100, 100, 150, 150));
    EXPECT_EQ(Log().Count(window_, WM_ENTERSIZEMOVE), 0);
}

TEST_F(CaptionTest, AHitOnTheCaptionMovesByItself) {
    window_ = Open(100, 100, 50, 50, kRed);
    Log().Answer(WM_NCHITTEST, [](HWND) { return HTCAPTION; });
    Forget();
    PressAnd({MoveFar, LetGo});
    EXPECT_EQ(Place(), CRect(150, 80, 200, 130));
    EXPECT_EQ(NamesOf(Log().Of(window_, {WM_LBUTTONDOWN, WM_NCLBUTTONDOWN, WM_MOUSEMOVE})), "NCLBUTTONDOWN");
}

}  // namespace
}  // namespace windowtest
