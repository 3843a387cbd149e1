// On a real screen, with a file manager that draws the desktop: pcmanfm.
#include <QKUILib.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "x11/x_session.h"

namespace {

constexpr std::uint32_t kGreen = 0x00C800;

class Dialog : public CQKDialogDeskList {
  public:
    explicit Dialog(LPCWSTR title = u"the dialog") : CQKDialogDeskList(101) {
        Create(101);
        SetWindowText(title);
        SetBackColor(Gdiplus::Color(255, 0, 200, 0), 1);
        SetWindowPos(HWND(), 300, 200, 200, 100, SWP_NOZORDER);
    }
    ~Dialog() override { DestroyWindow(); }
    int presses = 0;

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_LBUTTONDOWN) ++presses;
        return CQKDialogDeskList::WindowProc(message, wParam, lParam);
    }
};

class RealDesktop : public testing::Test {
  protected:
    // One server for all: the library notices late, without a window, that one is gone.
    static void SetUpTestSuite() {
        session = xtest::XSession::Start({.windowManager = true});
        if (!session) return;
        // The first key from a keyboard makes the window manager grab its own anew, and miss some meanwhile.
        session->Xdotool({"key", "Shift_L"});
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    static void TearDownTestSuite() { session.reset(); }
    void SetUp() override {
        const std::string home = std::string(QKUI_TEST_OUTPUT) + "/home";
        std::filesystem::remove_all(home);
        std::filesystem::create_directories(home + "/Desktop");
        setenv("HOME", home.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), 1);
        setenv("GSETTINGS_BACKEND", "keyfile", 1);
        unsetenv("XDG_CURRENT_DESKTOP");
        ASSERT_TRUE(session);
    }
    void TearDown() override { SetWinKeyMask(FALSE, HWND()); }

    static bool Until(const std::function<bool()>& condition, int milliseconds = 10000) {
        return xtest::Eventually(
            [&] {
                Headless::RunPending();
                return condition();
            },
            milliseconds);
    }
    static void Idle(int milliseconds) {
        Until([] { return false; }, milliseconds);
    }
    bool Shows(int x, int y, std::uint32_t colour) {
        return Until([&] { return session->PixelAt(x, y) == colour; });
    }
    void StartDesktop() {
        desktop = xtest::Process::Start({"pcmanfm", "--desktop"});
        ASSERT_TRUE(Until([] { return static_cast<bool>(FindWindowW(u"Progman", u"Program Manager")); }));
    }

    static inline std::unique_ptr<xtest::XSession> session;
    xtest::Process desktop;
};

TEST_F(RealDesktop, TakesTheDialogInAndLeavesItBehind) {
    StartDesktop();
    Dialog dialog;
    dialog.ShowWindow(SW_SHOW);
    ASSERT_TRUE(Shows(400, 250, kGreen));
    ASSERT_EQ(dialog.SetDesk(), 1);
    const auto isInside = [&] {
        const auto around = session->WindowsAt(400, 250);
        return around.size() >= 3 && around.front() == session->FindByTitle("the dialog") &&
               session->Property(around[1], "_NET_WM_WINDOW_TYPE") ==
                   std::vector<std::uint32_t>{session->Atom("_NET_WM_WINDOW_TYPE_DESKTOP")};
    };
    EXPECT_TRUE(Until(isInside));
    EXPECT_TRUE(Shows(400, 250, kGreen));
    CRect rect;
    dialog.GetWindowRect(rect);
    EXPECT_EQ(rect, CRect(300, 200, 500, 300));
    session->Click(400, 250);
    EXPECT_TRUE(Until([&] { return dialog.presses == 1; }));
    dialog.SetWindowPos(HWND(), 350, 200, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_TRUE(Shows(540, 250, kGreen));
    EXPECT_NE(session->PixelAt(310, 250), kGreen);

    const HWND known = FindWindowW(u"Progman", nullptr);
    dialog.ShowDeskList(0);
    EXPECT_TRUE(Until([&] { return session->PixelAt(400, 250) != kGreen; }));
    EXPECT_TRUE(Until([&] { return !IsWindowVisible(known); }));
    dialog.ShowDeskList(1);
    EXPECT_TRUE(Shows(400, 250, kGreen));
    EXPECT_TRUE(FindWindowW(u"Progman", nullptr) == known);

    desktop.Kill();
    EXPECT_TRUE(Until([&] { return GetAncestor(dialog.m_hWnd, GA_PARENT) == GetDesktopWindow(); }));
    EXPECT_FALSE(IsWindow(known));
    EXPECT_TRUE(Shows(400, 250, kGreen));
    StartDesktop();
    EXPECT_EQ(dialog.SetDesk(), 1);
    EXPECT_TRUE(Until(isInside));
    EXPECT_TRUE(SetParent(dialog.m_hWnd, HWND()) == FindWindowW(u"Progman", nullptr));
    EXPECT_TRUE(Until([&] { return !isInside(); }));
    EXPECT_TRUE(Shows(400, 250, kGreen));
}

TEST_F(RealDesktop, ShownKeepsTheChosenWindow) {
    Dialog kept;
    kept.ShowWindow(SW_SHOW);
    ASSERT_TRUE(Shows(400, 250, kGreen));
    ASSERT_TRUE(SetWinKeyMask(TRUE, kept.m_hWnd));
    const auto shows = [&](int x) { return session->PixelAt(x, 250) == kGreen; };
    // By its number: asked for the right key by name, xdotool presses the left one as well.
    session->Xdotool({"keydown", "134"});
    session->Xdotool({"key", "d"});
    session->Xdotool({"keyup", "134"});
    EXPECT_TRUE(Until([&] { return !shows(400); }));
    EXPECT_FALSE(kept.GetExStyle() & WS_EX_TOPMOST);
    SetForegroundWindow(kept.m_hWnd);
    EXPECT_TRUE(Until([&] { return shows(400); }));
    for (int round = 0; round < 2; ++round) {
        Dialog other(u"other");
        other.SetWindowPos(HWND(), 700, 200, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        other.ShowWindow(SW_SHOW);
        ASSERT_TRUE(Until([&] { return shows(800); }));
        session->Xdotool({"keydown", "Super_L"});
        session->Xdotool({"keydown", "d"});
        EXPECT_TRUE(Until([&] { return shows(400) && !shows(800); })) << "held down";
        session->Xdotool({"keyup", "d"});
        session->Xdotool({"keyup", "Super_L"});
        Idle(300);
        EXPECT_TRUE(shows(400) && !shows(800)) << "released";
    }
    EXPECT_TRUE(SetWinKeyMask(FALSE, HWND()));
}

// A picture of one colour.
std::string Picture(const char* name, std::uint32_t colour) {
    Headless::Picture picture{64, 40, std::vector<std::uint32_t>(64 * 40, colour)};
    const std::string path = std::string(QKUI_TEST_OUTPUT) + "/" + name;
    picture.SavePng(path.c_str());
    return path;
}

TEST_F(RealDesktop, WallpaperIsKeptByWhoeverDrawsIt) {
    QKShellFunctions shell;
    const std::string red = Picture("red wall #1 牆.png", 0xFFC02020), blue = Picture("blue.png", 0xFF2020C0);
    // The root itself.
    EXPECT_EQ(shell.GetWallpaper(), CString());
    EXPECT_TRUE(shell.SetWallpaper(red.c_str(), 0));
    EXPECT_TRUE(Shows(20, 20, 0xC02020));
    EXPECT_EQ(shell.GetWallpaper(), CString(red.c_str()));
    EXPECT_TRUE(shell.SetWallpaper(blue.c_str(), 0));
    EXPECT_TRUE(Shows(20, 20, 0x2020C0));
    // The settings of a desktop environment; nothing here draws them.
    setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
    EXPECT_TRUE(shell.SetWallpaper(red.c_str(), 0));
    EXPECT_EQ(shell.GetWallpaper(), CString(red.c_str()));
    unsetenv("XDG_CURRENT_DESKTOP");
    EXPECT_EQ(shell.GetWallpaper(), CString(blue.c_str()));
    // The file manager.
    StartDesktop();
    EXPECT_TRUE(shell.SetWallpaper(red.c_str(), 0));
    EXPECT_TRUE(Shows(640, 400, 0xC02020));
    EXPECT_EQ(shell.GetWallpaper(), CString(red.c_str()));
}

}  // namespace
