/// @file
/// Windows, messages, timers, pointer and keyboard.
///
/// A window belongs to the thread that made it; its procedure runs on that thread only. Every call that takes
/// a window handle recognises a stale one and fails with ERROR_INVALID_WINDOW_HANDLE. A window has no frame:
/// window and client rectangle are one, and a style with a caption asks the window manager for decorations.
#pragma once

#include <platform/gdi.h>
#include <platform/geometry.h>
#include <platform/resources.h>
#include <platform/types.h>

using WNDPROC = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
using TIMERPROC = void (*)(HWND window, UINT message, UINT_PTR id, DWORD time);

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;  ///< milliseconds of the window system's clock, wraps
    POINT pt;    ///< pointer on the screen
};

enum : UINT {
    WM_NULL = 0x0000,
    WM_CREATE = 0x0001,
    WM_DESTROY = 0x0002,
    WM_MOVE = 0x0003,
    WM_SIZE = 0x0005,
    WM_ACTIVATE = 0x0006,
    WM_SETFOCUS = 0x0007,
    WM_KILLFOCUS = 0x0008,
    WM_ENABLE = 0x000A,
    WM_SETTEXT = 0x000C,
    WM_PAINT = 0x000F,
    WM_CLOSE = 0x0010,
    WM_QUIT = 0x0012,
    WM_ERASEBKGND = 0x0014,
    WM_SHOWWINDOW = 0x0018,
    WM_SETCURSOR = 0x0020,
    WM_MOUSEACTIVATE = 0x0021,
    WM_GETMINMAXINFO = 0x0024,
    WM_WINDOWPOSCHANGED = 0x0047,
    WM_CONTEXTMENU = 0x007B,
    WM_GETICON = 0x007F,
    WM_SETICON = 0x0080,
    WM_NCCREATE = 0x0081,
    WM_NCDESTROY = 0x0082,
    WM_NCHITTEST = 0x0084,
    WM_NCMOUSEMOVE = 0x00A0,  ///< over the border that sizes a window
    WM_NCLBUTTONDOWN = 0x00A1,
    WM_NCLBUTTONDBLCLK = 0x00A3,
    WM_KEYDOWN = 0x0100,
    WM_KEYUP = 0x0101,
    WM_CHAR = 0x0102,
    WM_SYSKEYDOWN = 0x0104,
    WM_SYSKEYUP = 0x0105,
    WM_SYSCHAR = 0x0106,
    WM_INITDIALOG = 0x0110,
    WM_COMMAND = 0x0111,
    WM_SYSCOMMAND = 0x0112,
    WM_TIMER = 0x0113,
    WM_MOUSEFIRST = 0x0200,
    WM_MOUSEMOVE = 0x0200,
    WM_LBUTTONDOWN = 0x0201,
    WM_LBUTTONUP = 0x0202,
    WM_LBUTTONDBLCLK = 0x0203,
    WM_RBUTTONDOWN = 0x0204,
    WM_RBUTTONUP = 0x0205,
    WM_RBUTTONDBLCLK = 0x0206,
    WM_MBUTTONDOWN = 0x0207,
    WM_MBUTTONUP = 0x0208,
    WM_MBUTTONDBLCLK = 0x0209,
    WM_MOUSEWHEEL = 0x020A,
    WM_MOUSELAST = 0x020A,
    WM_ENTERSIZEMOVE = 0x0231,
    WM_EXITSIZEMOVE = 0x0232,
    WM_DROPFILES = 0x0233,  ///< see DragAcceptFiles
    WM_MOUSELEAVE = 0x02A3,
    WM_USER = 0x0400,
    WM_APP = 0x8000,
};

/// Window styles.
enum : DWORD {
    WS_OVERLAPPED = 0x00000000,
    WS_TABSTOP = 0x00010000,
    WS_MAXIMIZEBOX = 0x00010000,
    WS_MINIMIZEBOX = 0x00020000,
    WS_THICKFRAME = 0x00040000,
    WS_SYSMENU = 0x00080000,
    WS_BORDER = 0x00800000,
    WS_DLGFRAME = 0x00400000,
    WS_CAPTION = 0x00C00000,
    WS_CLIPCHILDREN = 0x02000000,
    WS_CLIPSIBLINGS = 0x04000000,
    WS_DISABLED = 0x08000000,
    WS_VISIBLE = 0x10000000,
    WS_MAXIMIZE = 0x01000000,
    WS_MINIMIZE = 0x20000000,
    WS_CHILD = 0x40000000,
    WS_POPUP = 0x80000000,
    WS_SIZEBOX = WS_THICKFRAME,
    WS_OVERLAPPEDWINDOW = WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX,
    WS_POPUPWINDOW = WS_POPUP | WS_BORDER | WS_SYSMENU,
    DS_MODALFRAME = 0x80,
    DS_SETFONT = 0x40,
    DS_CENTER = 0x0800,
};
enum : DWORD {
    WS_EX_TOPMOST = 0x00000008,
    WS_EX_ACCEPTFILES = 0x00000010,  ///< what DragAcceptFiles sets
    WS_EX_TRANSPARENT = 0x00000020,
    WS_EX_TOOLWINDOW = 0x00000080,
    WS_EX_CLIENTEDGE = 0x00000200,  ///< a sunken edge of two pixels, inside the window
    WS_EX_APPWINDOW = 0x00040000,
    WS_EX_LAYERED = 0x00080000,
    WS_EX_NOACTIVATE = 0x08000000,
};

enum { GWL_STYLE = -16, GWL_EXSTYLE = -20, GWLP_USERDATA = -21, GWLP_ID = -12 };
enum {
    SW_HIDE = 0,
    SW_SHOWNORMAL = 1,
    SW_NORMAL = 1,
    SW_SHOWMINIMIZED = 2,
    SW_SHOWMAXIMIZED = 3,
    SW_MAXIMIZE = 3,
    SW_MINIMIZE = 6,
    SW_SHOWNA = 8,
    SW_RESTORE = 9,
    SW_SHOW = 5,
    SW_SHOWNOACTIVATE = 4
};
enum : UINT {
    SWP_NOSIZE = 0x0001,
    SWP_NOMOVE = 0x0002,
    SWP_NOZORDER = 0x0004,
    SWP_NOREDRAW = 0x0008,
    SWP_NOACTIVATE = 0x0010,
    SWP_FRAMECHANGED = 0x0020,
    SWP_SHOWWINDOW = 0x0040,
    SWP_HIDEWINDOW = 0x0080,
};
/// Places in the stacking order, for SetWindowPos; no table ever gives out these indices.
constexpr HWND HWND_TOP = HWND(0xFFFFFFF0, 0xFFFFFFFF);
constexpr HWND HWND_BOTTOM = HWND(0xFFFFFFF1, 0xFFFFFFFF);
constexpr HWND HWND_TOPMOST = HWND(0xFFFFFFF2, 0xFFFFFFFF);
constexpr HWND HWND_NOTOPMOST = HWND(0xFFFFFFF3, 0xFFFFFFFF);

enum { WA_INACTIVE = 0, WA_ACTIVE = 1, WA_CLICKACTIVE = 2 };
/// Answers to WM_MOUSEACTIVATE: the pointer went down in a window whose top-level is `wParam`; the words of
/// lParam are the hit test and the message of the press. A child asks its parent by default, a top-level says
/// MA_ACTIVATE. Sent for the windows of other libraries: an HTML view takes the keyboard but for the last
/// two.
enum { MA_ACTIVATE = 1, MA_ACTIVATEANDEAT = 2, MA_NOACTIVATE = 3, MA_NOACTIVATEANDEAT = 4 };
enum {
    HTTRANSPARENT = -1,
    HTNOWHERE = 0,
    HTCLIENT = 1,
    HTCAPTION = 2,
    HTLEFT = 10,  ///< this and the next seven size the window
    HTRIGHT = 11,
    HTTOP = 12,
    HTTOPLEFT = 13,
    HTTOPRIGHT = 14,
    HTBOTTOM = 15,
    HTBOTTOMLEFT = 16,
    HTBOTTOMRIGHT = 17
};
/// SC_SIZE takes one of the sizing codes besides, less 9: SC_SIZE | (HTBOTTOMRIGHT - 9).
enum : WPARAM {
    SC_SIZE = 0xF000,
    SC_MOVE = 0xF010,
    SC_MINIMIZE = 0xF020,
    SC_MAXIMIZE = 0xF030,
    SC_CLOSE = 0xF060,
    SC_RESTORE = 0xF120
};
enum { SIZE_RESTORED = 0, SIZE_MINIMIZED = 1, SIZE_MAXIMIZED = 2 };
enum : WPARAM {
    MK_LBUTTON = 0x0001,
    MK_RBUTTON = 0x0002,
    MK_SHIFT = 0x0004,
    MK_CONTROL = 0x0008,
    MK_MBUTTON = 0x0010
};
enum { IDOK = 1, IDCANCEL = 2 };
enum {
    VK_LBUTTON = 0x01,
    VK_RBUTTON = 0x02,
    VK_MBUTTON = 0x04,
    VK_CANCEL = 0x03,
    VK_BACK = 0x08,
    VK_TAB = 0x09,
    VK_RETURN = 0x0D,
    VK_SHIFT = 0x10,
    VK_CONTROL = 0x11,
    VK_MENU = 0x12,
    VK_PAUSE = 0x13,
    VK_CAPITAL = 0x14,
    VK_ESCAPE = 0x1B,
    VK_SPACE = 0x20,
    VK_PRIOR = 0x21,
    VK_NEXT = 0x22,
    VK_END = 0x23,
    VK_HOME = 0x24,
    VK_LEFT = 0x25,
    VK_UP = 0x26,
    VK_RIGHT = 0x27,
    VK_DOWN = 0x28,
    VK_SNAPSHOT = 0x2C,
    VK_INSERT = 0x2D,
    VK_DELETE = 0x2E,
    VK_LWIN = 0x5B,
    VK_RWIN = 0x5C,
    VK_APPS = 0x5D,
    VK_NUMPAD0 = 0x60,  ///< to VK_NUMPAD9
    VK_NUMPAD1,
    VK_NUMPAD2,
    VK_NUMPAD3,
    VK_NUMPAD4,
    VK_NUMPAD5,
    VK_NUMPAD6,
    VK_NUMPAD7,
    VK_NUMPAD8,
    VK_NUMPAD9,
    VK_MULTIPLY = 0x6A,
    VK_ADD = 0x6B,
    VK_SEPARATOR = 0x6C,
    VK_SUBTRACT = 0x6D,
    VK_DECIMAL = 0x6E,
    VK_DIVIDE = 0x6F,
    VK_F1 = 0x70,  ///< to VK_F24
    VK_F2,
    VK_F3,
    VK_F4,
    VK_F5,
    VK_F6,
    VK_F7,
    VK_F8,
    VK_F9,
    VK_F10,
    VK_F11,
    VK_F12,
    VK_F13,
    VK_F24 = 0x87,
    VK_NUMLOCK = 0x90,
    VK_SCROLL = 0x91,
    VK_PACKET = 0xE7  // no key, but a character that was put in as such
};                    ///< digits and letters are their upper-case ASCII codes

// ---- Window classes and windows -----------------------------------------------------------------------

struct WNDCLASSW {
    WNDPROC lpfnWndProc = nullptr;
    LPCWSTR lpszClassName = nullptr;  ///< copied
    HCURSOR hCursor;                  ///< shown over the window unless WM_SETCURSOR or SetCursor decides
};
/// The class "STATIC" is there from the start: a placeholder that draws nothing and lets the pointer through.
PLATFORM_API BOOL RegisterClassW(const WNDCLASSW* description);

/// Sends WM_NCCREATE, WM_CREATE (lParam = `parameter`; -1 or FALSE refuses the window), then WM_SIZE and
/// WM_MOVE. For a child, positions are relative to the parent and `id` names it; for a top-level the parent
/// is its owner: it stays above it, and goes with it. Fails with ERROR_CANNOT_FIND_WND_CLASS,
/// ERROR_INVALID_PARAMETER (sizes are 0 to 32767), ERROR_NOT_ENOUGH_MEMORY, ERROR_CONNECTION_UNAVAIL where no
/// window system can be reached or it is lost, or ERROR_INVALID_PIXEL_FORMAT where the display server has no
/// pixels of 32 bits (a screen of 8 bits; one of 16 without the Composite extension): the host may then
/// choose Headless::Use().
PLATFORM_API HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                                  int width, int height, HWND parent, UINT_PTR id, HINSTANCE module,
                                  LPVOID parameter);
/// A window as it is being created, for handlers that ask for the record; WM_CREATE itself carries
/// `parameter`.
struct CREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;  ///< of the program
    HWND hwndParent;      ///< or owner
    int cy, cx, y, x;
    LONG style;
    LPCWSTR lpszName;   ///< good until the title changes
    LPCWSTR lpszClass;  ///< upper-case
    DWORD dwExStyle;
};
using LPCREATESTRUCT = CREATESTRUCTW*;
namespace platform {
PLATFORM_API CREATESTRUCTW DescribeCreation(HWND window, LPVOID parameter);
}
/// Sends WM_DESTROY to the window and then to its children and owned windows, and at the end WM_NCDESTROY;
/// handles are stale afterwards. Only the owning thread may call it.
PLATFORM_API BOOL DestroyWindow(HWND window);
PLATFORM_API BOOL IsWindow(HWND window);
PLATFORM_API LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

PLATFORM_API BOOL ShowWindow(HWND window, int command);  ///< returns whether it was visible before
PLATFORM_API BOOL IsWindowVisible(HWND window);          ///< shown, and so are all its parents
PLATFORM_API BOOL IsIconic(HWND window);
/// Maximised, or minimised from there. A maximised window fills the work area of its monitor, or what
/// WM_GETMINMAXINFO says.
PLATFORM_API BOOL IsZoomed(HWND window);
/// What WM_GETMINMAXINFO lets a top-level change: lParam is one of these, filled with what holds otherwise.
/// It is asked before a window is maximised, when its user sizes it, and by the window manager's rules for
/// it; sizes that the program itself sets are not held to it.
struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;       ///< of the maximised window
    POINT ptMaxPosition;   ///< and where, from the monitor's corner
    POINT ptMinTrackSize;  ///< what the user can make of it
    POINT ptMaxTrackSize;
};
using LPMINMAXINFO = MINMAXINFO*;
/// A disabled window stops the pointer and the keys for itself and its children; a press on it brings up the
/// window, owned by it, that it waits for. Returns whether it was disabled before.
PLATFORM_API BOOL EnableWindow(HWND window, BOOL enable);
PLATFORM_API BOOL IsWindowEnabled(HWND window);
/// A new size invalidates the whole window (not with SWP_NOREDRAW); a new place keeps its pixels. Sizes are 0
/// to 32767, though nothing new shows while there is no memory; positions are -32768 to 32767.
PLATFORM_API BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
PLATFORM_API BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
/// In screen coordinates. A minimised window is at (-32000, -32000).
PLATFORM_API BOOL GetWindowRect(HWND window, RECT* rect);
PLATFORM_API BOOL GetClientRect(HWND window, RECT* rect);
/// Enlarges a client rectangle to that of the window around it: by WS_EX_CLIENTEDGE, the one frame that lies
/// inside a window.
PLATFORM_API BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD exStyle);
PLATFORM_API BOOL ClientToScreen(HWND window, POINT* point);
PLATFORM_API BOOL ScreenToClient(HWND window, POINT* point);
/// The parent of a child, the owner of a top-level.
PLATFORM_API HWND GetParent(HWND window);
PLATFORM_API HWND GetDlgItem(HWND window, int id);
PLATFORM_API LONG_PTR GetWindowLongPtrW(HWND window, int index);
PLATFORM_API LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
PLATFORM_API BOOL SetWindowTextW(HWND window, LPCWSTR text);
PLATFORM_API CString GetWindowTextW(HWND window);
/// The pictures that stand for a top-level in task lists and in the frame of a window manager: WM_SETICON
/// with the size as wParam and an icon's ToParam as lParam (0 takes it away) returns the one before,
/// WM_GETICON the present one. The picture is taken at that moment, at most 256 pixels a side; the icon stays
/// the caller's.
enum : WPARAM { ICON_SMALL = 0, ICON_BIG = 1 };
/// The topmost window at a point of the screen that takes the pointer there: shapes, colour keys and alpha 0
/// let it through.
PLATFORM_API HWND WindowFromPoint(POINT point);
PLATFORM_API HWND SetFocus(HWND window);
PLATFORM_API HWND GetFocus();
PLATFORM_API HWND GetActiveWindow();
PLATFORM_API HWND SetActiveWindow(HWND window);
/// Activates a top-level at once and asks the window system to follow. A window manager may refuse: then the
/// window loses its activation again, within a second.
PLATFORM_API BOOL SetForegroundWindow(HWND window);

// ---- Painting -----------------------------------------------------------------------------------------

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;  ///< the box of the update region
};
/// Null invalidates all. Update regions add up until a paint; what a WM_PAINT neither paints nor validates is
/// validated after it.
PLATFORM_API BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
PLATFORM_API BOOL ValidateRect(HWND window, const RECT* rect);
PLATFORM_API BOOL GetUpdateRect(HWND window, RECT* rect, BOOL erase);  ///< FALSE when nothing waits
PLATFORM_API BOOL UpdateWindow(HWND window);                           ///< paints at once what waits
/// Takes the update region, sends WM_ERASEBKGND when an erase was asked for, and gives a context clipped to
/// it. Every BeginPaint needs its EndPaint, which shows what was drawn.
PLATFORM_API HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
PLATFORM_API BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
/// A context on the whole window (null: on the screen, where nothing can be drawn), until ReleaseDC, which
/// shows what was drawn.
PLATFORM_API HDC GetDC(HWND window);
PLATFORM_API int ReleaseDC(HWND window, HDC context);
PLATFORM_API HWND
WindowFromDC(HDC context);  ///< that it draws on; null for the screen's, memory and stale ones

/// Layered windows (WS_EX_LAYERED). With attributes the window paints as usual and shows opaque pixels, those
/// of the key colour left out, or all with one alpha. Without attributes it shows what UpdateLayeredWindow
/// last pushed, and nothing before. Flags carrying neither bit take the attributes off and succeed: the
/// window is ready to be fed, and shows nothing until then.
enum : DWORD { LWA_COLORKEY = 1, LWA_ALPHA = 2 };
PLATFORM_API BOOL SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags);
enum : DWORD { ULW_COLORKEY = 1, ULW_ALPHA = 2, ULW_OPAQUE = 4 };
/// Places and sizes the window (null: as it is) and shows `size` pixels of `source` from `sourcePoint`; what
/// lies outside the source is transparent. Fails on a window that has attributes.
PLATFORM_API BOOL UpdateLayeredWindow(HWND window, HDC destination, const POINT* position, const SIZE* size,
                                      HDC source, const POINT* sourcePoint, COLORREF key,
                                      const BLENDFUNCTION* blend, DWORD flags);
/// The same, with a promise that spares looking for what changed: outside of `prcDirty` (window coordinates;
/// null: none) the bitmap is as it was pushed last. Counts only while that push shows, from the same point.
struct UPDATELAYEREDWINDOWINFO {
    DWORD cbSize = sizeof(UPDATELAYEREDWINDOWINFO);
    HDC hdcDst;  ///< ignored
    const POINT* pptDst = nullptr;
    const SIZE* psize = nullptr;
    HDC hdcSrc;
    const POINT* pptSrc = nullptr;
    COLORREF crKey = 0;
    const BLENDFUNCTION* pblend = nullptr;
    DWORD dwFlags = 0;
    const RECT* prcDirty = nullptr;
};
PLATFORM_API BOOL UpdateLayeredWindowIndirect(HWND window, const UPDATELAYEREDWINDOWINFO* info);
/// Clips the window, and its pointer input, to a region in window coordinates. The window takes the region:
/// the handle is stale afterwards. The empty handle removes the shape.
PLATFORM_API int SetWindowRgn(HWND window, HRGN region, BOOL redraw);

// ---- Messages -----------------------------------------------------------------------------------------

/// Runs the procedure at once and returns its result. From another thread it waits for the owner to dispatch;
/// 0 when the window or its thread goes first.
PLATFORM_API LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// An empty window posts to the calling thread itself. Fails without memory, or with 100 000 messages
/// waiting.
PLATFORM_API BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
PLATFORM_API void PostQuitMessage(int exitCode);
enum : UINT { PM_NOREMOVE = 0, PM_REMOVE = 1 };
/// Order: posted messages and input, then paint, then timers. Last of all WM_QUIT. Waiting for a message also
/// runs the sources of GLib's main context. GetMessageW returns 0 for WM_QUIT, and -1 with
/// ERROR_CONNECTION_UNAVAIL when the display server is gone.
PLATFORM_API BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove);
PLATFORM_API int GetMessageW(MSG* message, HWND window, UINT first, UINT last);
PLATFORM_API BOOL TranslateMessage(const MSG* message);
PLATFORM_API LRESULT DispatchMessageW(const MSG* message);

/// The window receives WM_TIMER with `id` every `interval` milliseconds (at least 10). The same id again
/// replaces the timer. Returns the id, 0 on failure: of no window, or ERROR_NOT_ENOUGH_MEMORY for a new one.
PLATFORM_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT interval, TIMERPROC procedure);
PLATFORM_API BOOL KillTimer(HWND window, UINT_PTR id);
/// Milliseconds of the window system's clock.
PLATFORM_API DWORD GetTickCount();

// ---- Pointer and keyboard -----------------------------------------------------------------------------

/// Returns the window that held it. Where another program holds the pointer it fails with
/// ERROR_ACCESS_DENIED, and no window has the capture.
PLATFORM_API HWND SetCapture(HWND window);
PLATFORM_API BOOL ReleaseCapture();
PLATFORM_API HWND GetCapture();
enum : DWORD { TME_LEAVE = 2, TME_CANCEL = 0x80000000 };
struct TRACKMOUSEEVENT {
    DWORD cbSize;
    DWORD dwFlags;
    HWND hwndTrack;
    DWORD dwHoverTime;
};
/// Asks for one WM_MOUSELEAVE when the pointer leaves the window; at once when it is not over it.
PLATFORM_API BOOL TrackMouseEvent(TRACKMOUSEEVENT* request);
PLATFORM_API BOOL GetCursorPos(POINT* point);
/// 0x8000 is set while the key is down, as of the message being handled; bit 0 toggles. No key is
/// down while another program has the keyboard.
PLATFORM_API std::int16_t GetKeyState(int virtualKey);
/// The same at this moment: input that waits is counted, too, and so is a key that went down elsewhere. The
/// lowest bit is never set.
PLATFORM_API std::int16_t GetAsyncKeyState(int virtualKey);
PLATFORM_API UINT GetDoubleClickTime();

#define IDC_ARROW MAKEINTRESOURCE(32512)
#define IDC_IBEAM MAKEINTRESOURCE(32513)
#define IDC_WAIT MAKEINTRESOURCE(32514)
#define IDC_CROSS MAKEINTRESOURCE(32515)
#define IDC_SIZENWSE MAKEINTRESOURCE(32642)
#define IDC_SIZENESW MAKEINTRESOURCE(32643)
#define IDC_SIZEWE MAKEINTRESOURCE(32644)
#define IDC_SIZENS MAKEINTRESOURCE(32645)
#define IDC_SIZEALL MAKEINTRESOURCE(32646)
#define IDC_NO MAKEINTRESOURCE(32648)
#define IDC_HAND MAKEINTRESOURCE(32649)
/// A shared cursor of the system; never freed. Empty for an unknown name.
PLATFORM_API HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name);
/// The largest picture of an icon of the resources (an ICON statement), as a new icon of the caller's, until
/// DestroyIcon. Empty with the errors of FindResourceW, or with ERROR_INVALID_DATA.
PLATFORM_API HICON LoadIconW(HINSTANCE module, LPCWSTR name);
///@{
/// Shows the cursor until the next pointer move decides anew. Returns the one before.
PLATFORM_API HCURSOR SetCursor(HCURSOR cursor);
PLATFORM_API HCURSOR GetCursor();
///@}

enum {
    SM_CXSCREEN = 0,
    SM_CYSCREEN = 1,
    SM_CXSIZEFRAME = 32,  ///< how far inside the edge of a window with WS_THICKFRAME it can be sized
    SM_CYSIZEFRAME = 33,
    SM_CXDOUBLECLK = 36,
    SM_CYDOUBLECLK = 37
};
PLATFORM_API int GetSystemMetrics(int index);

///@{
/// Opts in to dense screens: from now on all coordinates of the program are units of `scale` pixels each way,
/// on the screen as in its windows, which are drawn with all pixels that they have. 0: as many as the screen
/// asks for (192 dots to the inch: 2), 1: none, as without this call; up to 4. A picture "name.png" is then
/// looked for as `name@2x.png` first, which has twice its sides; see Gdiplus::Image. Before the program's
/// first window: FALSE with ERROR_NOT_SUPPORTED while there is one.
PLATFORM_API BOOL SetScreenScale(int scale);
PLATFORM_API int GetScreenScale();
///@}

/// How a desktop shows its icons.
struct ICONMETRICSW {
    UINT cbSize;  ///< of this record, set by the caller
    int iHorzSpacing;
    int iVertSpacing;
    int iTitleWrap;
    LOGFONTW lfFont;  ///< of their titles
};
static_assert(sizeof(ICONMETRICSW) == 108);
enum : UINT { SPI_GETICONMETRICS = 45, SPI_GETWORKAREA = 48 };
/// SPI_GETICONMETRICS fills an ICONMETRICSW: the font is the system's common one, of 9 points. `size` is the
/// record's own or 0. SPI_GETWORKAREA fills a RECT: the primary monitor without the panels that keep their
/// place; it fails as the creation of a window does where no window system can be reached. Other actions and
/// sizes fail with ERROR_INVALID_PARAMETER.
PLATFORM_API BOOL SystemParametersInfoW(UINT action, UINT size, LPVOID value, UINT flags);

/// The monitors that the screen is made of. A handle is stale as soon as they are arranged anew.
struct MONITORINFO {
    DWORD cbSize;    ///< of this record, set by the caller
    RECT rcMonitor;  ///< on the screen
    RECT rcWork;     ///< without the panels that keep their place
    DWORD dwFlags;   ///< MONITORINFOF_PRIMARY
};
enum : DWORD { MONITORINFOF_PRIMARY = 1 };
enum : DWORD { MONITOR_DEFAULTTONULL = 0, MONITOR_DEFAULTTOPRIMARY = 1, MONITOR_DEFAULTTONEAREST = 2 };
///@{
/// The monitor that a window covers most of, or that a point lies on. Where there is none: as `otherwise`
/// says. A child counts as its own rectangle on the screen, a minimised window as the place that it goes back
/// to; for no window it is the primary one, unless `otherwise` is MONITOR_DEFAULTTONULL.
PLATFORM_API HMONITOR MonitorFromWindow(HWND window, DWORD otherwise);
PLATFORM_API HMONITOR MonitorFromPoint(POINT point, DWORD otherwise);
///@}
/// FALSE with ERROR_INVALID_HANDLE for a stale monitor.
PLATFORM_API BOOL GetMonitorInfoW(HMONITOR monitor, MONITORINFO* info);

// ---- Dialogs from templates ---------------------------------------------------------------------------

/// Creates the window of a DIALOGEX (or DIALOG) template and its controls, hidden unless the template says
/// WS_VISIBLE. Sizes in the template are dialog units of its font. Fails with the resource errors, or
/// ERROR_INVALID_DATA for a template that is malformed or holds a control of an unknown class. The customary
/// classes are known (buttons, edit fields, lists, and so on), and each of their controls is a STATIC: a
/// place with a number and a text, for what the host draws there.
PLATFORM_API HWND CreateDialogFromTemplate(HINSTANCE module, LPCWSTR templateName, HWND parent,
                                           LPCWSTR windowClass, LPVOID parameter);
