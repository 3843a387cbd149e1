// Keeping a window on top while the keys that show the desktop are pressed.
#include <string>

#include "support/test_dialog.h"

namespace {

std::string seen;
int passedOn = 0;
HHOOK second;

LRESULT Watcher(int code, WPARAM message, LPARAM key) {
    const auto* record = reinterpret_cast<const KBDLLHOOKSTRUCT*>(key);
    seen += (message == WM_KEYDOWN ? "+" : message == WM_KEYUP ? "-" : "s") + std::to_string(record->vkCode);
    if (record->flags & LLKHF_UP) seen += "u";
    if (GetKeyState(VK_LWIN) < 0) seen += "L";
    seen += " ";
    return CallNextHookEx(HHOOK(), code, message, key);
}

LRESULT Older(int, WPARAM, LPARAM) {
    ++passedOn;
    return 5;
}

LRESULT RemovesItself(int code, WPARAM message, LPARAM key) {
    UnhookWindowsHookEx(second);
    return CallNextHookEx(second, code, message, key);
}

class KeyMask : public kit::HeadlessTest {};

TEST_F(KeyMask, RaisesForTheLeftWindowsKeyAndD) {
    EXPECT_TRUE(SetWinKeyMask(FALSE, HWND()));
    kit::TestDialog kept, other;
    kept.Open(100, 100);
    other.Open(100, 100);
    ASSERT_TRUE(SetWinKeyMask(TRUE, kept.m_hWnd));
    const auto lower = [&] {
        kept.SetWindowPos(HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
        other.SetWindowPos(HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    };
    // On top, hit and active; and still where it was.
    const auto state = [&] {
        CRect rect;
        kept.GetWindowRect(rect);
        return kit::Line((kept.GetExStyle() & WS_EX_TOPMOST) != 0, WindowFromPoint({110, 110}) == kept.m_hWnd,
                         GetActiveWindow() == kept.m_hWnd, rect == CRect(100, 100, 300, 260));
    };
    for (const auto& [held, key, states] : {std::tuple(UINT{VK_RWIN}, UINT{'D'}, "0 0 0 1"),
                                            {VK_LWIN, 'E', "0 0 0 1"},
                                            {0, 'D', "0 0 0 1"},
                                            {VK_LWIN, 'D', "1 1 1 1"}}) {
        if (held) Headless::KeyDown(held);
        for (const auto act : {&Headless::KeyDown, &Headless::KeyUp}) {
            lower();
            act(key);
            EXPECT_EQ(state(), states) << held << " " << key;
        }
        if (held) Headless::KeyUp(held);
    }
    // Another window takes its place; then none.
    ASSERT_TRUE(SetWinKeyMask(TRUE, other.m_hWnd));
    lower();
    Headless::KeyDown(VK_LWIN);
    Headless::KeyDown('D');
    EXPECT_EQ(state(), "0 0 0 1");
    EXPECT_TRUE(other.GetExStyle() & WS_EX_TOPMOST);
    ASSERT_TRUE(SetWinKeyMask(TRUE, HWND()));
    Headless::KeyUp('D');
    EXPECT_TRUE(SetWinKeyMask(FALSE, kept.m_hWnd));
    EXPECT_TRUE(SetWinKeyMask(FALSE, HWND()));
    Headless::KeyDown('D');
    EXPECT_EQ(state(), "0 0 0 1");
    Headless::KeyUp('D');
    Headless::KeyUp(VK_LWIN);
}

TEST_F(KeyMask, HooksStandInALine) {
    EXPECT_FALSE(SetWindowsHookExW(2, Older, {}, 0));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    const HHOOK oldest = SetWindowsHookExW(WH_KEYBOARD_LL, Older, {}, 0);
    const HHOOK watcher = SetWindowsHookExW(WH_KEYBOARD_LL, Watcher, {}, 0);
    second = SetWindowsHookExW(WH_KEYBOARD_LL, RemovesItself, {}, 0);
    Headless::KeyDown(VK_LWIN);
    Headless::KeyDown('D');
    Headless::KeyUp('D');
    Headless::KeyUp(VK_LWIN);
    Headless::KeyDown(VK_MENU);
    Headless::KeyUp(VK_MENU);
    EXPECT_EQ(seen, "+91L +68L -68uL -91u s18 s18u ");
    EXPECT_EQ(passedOn, 6);
    EXPECT_FALSE(UnhookWindowsHookEx(second));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(CallNextHookEx(watcher, HC_ACTION, WM_KEYDOWN, 0), 0);
    EXPECT_TRUE(UnhookWindowsHookEx(oldest));
    EXPECT_TRUE(UnhookWindowsHookEx(watcher));
    Headless::KeyDown('D');
    Headless::KeyUp('D');
    EXPECT_EQ(passedOn, 6);
}

}  // namespace
