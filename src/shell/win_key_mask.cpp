#include <qkui/shell/win_key_mask.h>

#include <platform/foreign.h>
#include <platform/window.h>

#include "shell/key_mask_state.h"

namespace qkui {

HHOOK g_hKeyHook;
HWND g_hMaskWnd;
HINSTANCE g_hInstance;

}  // namespace qkui

using namespace qkui;

namespace {

constexpr DWORD kKeyD = 'D';

LRESULT WinKeyMaskProc(int code, WPARAM message, LPARAM key) {
    if (code == HC_ACTION && (message == WM_KEYDOWN || message == WM_KEYUP)) {
        const auto* record = reinterpret_cast<const KBDLLHOOKSTRUCT*>(key);
        // Only the left key, and on the release as well: by then the desktop shows.
        if (record->vkCode == kKeyD && GetKeyState(VK_LWIN) < 0)
            SetWindowPos(g_hMaskWnd, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOREDRAW);
    }
    return CallNextHookEx(g_hKeyHook, code, message, key);
}

}  // namespace

BOOL SetWinKeyMask(BOOL bMask, HWND hWnd) {
    if (g_hKeyHook) {
        if (!UnhookWindowsHookEx(g_hKeyHook)) return FALSE;
        g_hKeyHook = HHOOK();
    }
    if (!bMask) return TRUE;
    g_hMaskWnd = hWnd;
    g_hKeyHook = SetWindowsHookExW(WH_KEYBOARD_LL, WinKeyMaskProc, g_hInstance, 0);
    return g_hKeyHook ? TRUE : FALSE;
}
