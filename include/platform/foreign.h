/// @file
/// What lies outside the program: windows of other programs, and the keyboard whoever has it.
#pragma once

#include <platform/types.h>

// ---- Windows of other programs ------------------------------------------------------------------------

// A search may find a window of another program. Its handle is the same each time, and stale once the window
// is gone. Only what says so here, ShowWindow (SW_HIDE hides it, all else shows it), IsWindow and
// IsWindowVisible know such handles; every other call refuses them as it does a stale one.
//
// Of other programs' windows those of the desktop are found: on an X display the window of the type "desktop"
// that a file manager or shell puts behind all others has the class "Progman" and the title "Program
// Manager". In it lies a "SHELLDLL_DefView" without a title, the same window under another name; and in that
// a "SysListView32" of the title "FolderView", where the desktop's icons have a native window of their own.
// Where several monitors have a desktop window each, together they are the one. Headless has those that
// Headless::AddForeignWindow was given.

/// The first window whose class and title are the given ones; null takes any. Classes compare without the
/// case of ASCII letters, titles exactly. The program's own come first, the topmost of them before the
/// others. Empty, with ERROR_FILE_NOT_FOUND, when there is none; or with the error of CreateWindowExW where
/// no window system can be reached.
PLATFORM_API HWND FindWindowW(LPCWSTR className, LPCWSTR title);
/// The same among the windows directly in `parent` (empty: top-levels), and only behind `after` (empty: from
/// the first on), which must be one of them.
PLATFORM_API HWND FindWindowExW(HWND parent, HWND after, LPCWSTR className, LPCWSTR title);
/// Puts a top-level of the program into a window of another program, or (empty: GetDesktopWindow) back onto
/// the screen. It keeps its place on the screen, its styles and whether it is shown; it is above what the
/// other program draws there, is cut off at that window's edges, and comes and goes with it. It still is a
/// top-level to every other call: coordinates are the screen's, GetParent is its owner. No window manager
/// looks after it: minimising hides it. Pixels of a layered window blend with the desktop's wallpaper, not
/// with what the other program draws on it.
///
/// Returns where it was before: that window, or GetDesktopWindow. Empty when it fails:
/// ERROR_INVALID_PARAMETER for a child, or a parent of the program's own; ERROR_NOT_SUPPORTED.
///
/// When the other window goes, the program's stays: at its place on the screen, below the program's others,
/// shown if it was, and WM_WINDOWPOSCHANGED tells it. GetAncestor says where it is.
PLATFORM_API HWND SetParent(HWND window, HWND parent);
/// The window that stands for the screen. It is nobody's: nothing can be done to it.
PLATFORM_API HWND GetDesktopWindow();
enum : UINT { GA_PARENT = 1 };
/// With GA_PARENT the window that it lies in: its parent, the window of another program that SetParent put it
/// into, or GetDesktopWindow. Owners do not count.
PLATFORM_API HWND GetAncestor(HWND window, UINT which);

// ---- Watching the keyboard ----------------------------------------------------------------------------

using HHOOK = Handle<struct HookTag>;
/// `code` is HC_ACTION and `wParam` the message that the key makes (WM_KEYDOWN, WM_KEYUP or, while Alt is
/// held, the WM_SYS ones); `lParam` points to a KBDLLHOOKSTRUCT. GetKeyState answers for that moment.
using HOOKPROC = LRESULT (*)(int code, WPARAM wParam, LPARAM lParam);
enum { WH_KEYBOARD_LL = 13 };
enum { HC_ACTION = 0 };
struct KBDLLHOOKSTRUCT {
    DWORD vkCode;
    DWORD scanCode;  ///< the display server's number of the key; 0 headless
    DWORD flags;     ///< LLKHF_UP
    DWORD time;      ///< milliseconds of the window system's clock, wraps
    ULONG_PTR dwExtraInfo;
};
enum : DWORD { LLKHF_UP = 0x80 };
/// Watches every press and release of a key, whichever program has the keyboard. The procedure runs on the
/// calling thread, while that takes messages: after the key has gone where it was going, which no result
/// changes. Repeats of a held key may be missing. Only WH_KEYBOARD_LL of all threads (0) is there; the module
/// is not looked at. The youngest hook is asked first. Hooks end with their thread.
///
/// Empty on failure: ERROR_INVALID_PARAMETER; ERROR_WINDOW_OF_OTHER_THREAD where another thread owns windows;
/// ERROR_NOT_SUPPORTED on a display server without raw keys (XInput 2.2); the errors of CreateWindowExW where
/// there is no window system.
PLATFORM_API HHOOK SetWindowsHookExW(int type, HOOKPROC procedure, HINSTANCE module, DWORD thread);
/// On the thread that owns windows. FALSE for a stale hook.
PLATFORM_API BOOL UnhookWindowsHookEx(HHOOK hook);
/// From inside a hook's procedure: asks the next older one. 0 behind the last. `hook` is not looked at.
PLATFORM_API LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);
