// What a window does with a message that its procedure leaves alone.
#include <new>
#include <utility>

#include "platform/graphics/gdi_objects.h"
#include "platform/window/core/activation.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/cursor.h"
#include "platform/window/core/sizing.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/tree.h"

using namespace platform;

namespace {

void DefaultPaint(HWND window) {
    PAINTSTRUCT paint;
    if (BeginPaint(window, &paint)) EndPaint(window, &paint);
}

// Once it is active a window has the keyboard, unless one of its children has it already or had it last.
void DefaultActivate(HWND window, WPARAM wParam) {
    const bool minimised = HIWORD(wParam) != 0;
    if (LOWORD(wParam) == WA_INACTIVE || minimised) return;
    if (IsSameOrInside(FocusedWindow(), window)) return;
    const HWND last = Peek(window)->lastFocus;
    const Window* child = IsSameOrInside(last, window) ? Peek(last) : nullptr;
    const bool takes = child && IsVisibleInTree(*child) && IsEnabledInTree(*child);
    MoveFocus(takes ? last : window);
}

LRESULT DefaultSystemCommand(HWND window, WPARAM wParam) {
    // The low four bits are for the system's own use.
    switch (wParam & 0xFFF0) {
        case SC_CLOSE:
            return CallProcedure(window, WM_CLOSE, 0, 0);
        case SC_MINIMIZE:
            ShowWindow(window, SW_MINIMIZE);
            return 0;
        case SC_RESTORE:
            ShowWindow(window, SW_RESTORE);
            return 0;
        case SC_MAXIMIZE:
            ShowWindow(window, SW_MAXIMIZE);
            return 0;
        case SC_MOVE:
            MoveByFrame(window, HTCAPTION);
            return 0;
        case SC_SIZE:
            if (const int hit = static_cast<int>(wParam & 0xF) + HTLEFT - 1; IsSizingHit(hit))
                MoveByFrame(window, hit);
            return 0;
        default:
            return 0;
    }
}

bool IsSizedByBorder(const Window& window) {
    return !window.IsChild() && window.style & WS_THICKFRAME && !window.IsDecorated() &&
           !window.IsMaximised() && !window.IsMinimised();
}

LRESULT DefaultHitTest(const Window& window, LPARAM lParam) {
    if (!IsSizedByBorder(window)) return HTCLIENT;
    const CSize inside = CPoint(lParam) - ScreenOrigin(window);
    return SizingHit(window.rect.Size(), POINT{inside.cx, inside.cy});
}

// A double click on what moves the window.
void DefaultCaptionDoubleClick(const Window& window) {
    if (window.style & WS_MAXIMIZEBOX)
        CallProcedure(window.handle, WM_SYSCOMMAND, window.IsMaximised() ? SC_RESTORE : SC_MAXIMIZE, 0);
}

// The key asks for the window that has the keyboard, and says no place; the pointer for what lies under it.
void AskForContextMenu(HWND window, LPARAM screen) {
    CallProcedure(window, WM_CONTEXTMENU, ToWParam(window), screen);
}

LRESULT DefaultSetText(Window& window, LPCWSTR text) try {
    window.title = CString(text);
    UpdateTraits(window);
    return TRUE;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}

LRESULT SetIcon(Window& window, WPARAM size, HICON icon) {
    constexpr int kLongestSide = 256;
    if (size > ICON_BIG) return 0;
    auto& slot = window.icons[size];
    std::shared_ptr<const Surface> picture = icon ? IconPicture(icon, kLongestSide) : nullptr;
    if (icon && !picture) return 0;
    slot.picture = std::move(picture);
    const HICON before = std::exchange(slot.handle, icon);
    UpdateTraits(window);
    return static_cast<LRESULT>(before.ToParam());
}

LRESULT DefaultSystemKey(const Window& window, WPARAM key) {
    const HWND top = TopLevelOf(window.handle);
    const Window* record = Peek(top);
    if (key == VK_F4 && (GetKeyState(VK_MENU) & 0x8000) && record && !record->IsDisabled())
        CallProcedure(top, WM_SYSCOMMAND, SC_CLOSE, 0);
    return 0;
}

}  // namespace

LRESULT DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (!window) return 0;
    switch (message) {
        case WM_NCCREATE:
            return TRUE;
        case WM_SETTEXT:
            return DefaultSetText(*window, reinterpret_cast<LPCWSTR>(lParam));
        case WM_GETICON:
            return wParam <= ICON_BIG ? static_cast<LRESULT>(window->icons[wParam].handle.ToParam()) : 0;
        case WM_SETICON:
            return SetIcon(*window, wParam, HICON::FromParam(static_cast<std::uint64_t>(lParam)));
        case WM_PAINT:
            DefaultPaint(handle);
            return 0;
        case WM_CLOSE:
            DestroyWindow(handle);
            return 0;
        case WM_NCHITTEST:
            return DefaultHitTest(*window, lParam);
        case WM_SETCURSOR:
            return DefaultSetCursor(*window, wParam, lParam);
        case WM_NCLBUTTONDOWN:
            if (wParam == HTCAPTION || IsSizingHit(static_cast<int>(wParam)))
                MoveByFrame(handle, static_cast<int>(wParam));
            return 0;
        case WM_NCLBUTTONDBLCLK:
            if (wParam == HTCAPTION) DefaultCaptionDoubleClick(*window);
            return 0;
        case WM_RBUTTONUP: {
            const CPoint at = ScreenOrigin(*window) + CPoint(lParam);
            AskForContextMenu(handle, MAKELPARAM(at.x, at.y));
            return 0;
        }
        case WM_KEYUP:
            if (wParam == VK_APPS) AskForContextMenu(handle, -1);
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_F10 && GetKeyState(VK_SHIFT) & 0x8000) AskForContextMenu(handle, -1);
            return 0;
        case WM_CONTEXTMENU:
            return window->IsChild() ? CallProcedure(window->parent, message, wParam, lParam) : 0;
        case WM_ACTIVATE:
            DefaultActivate(handle, wParam);
            return 0;
        case WM_SYSCOMMAND:
            return DefaultSystemCommand(handle, wParam);
        case WM_SYSKEYDOWN:
            return DefaultSystemKey(*window, wParam);
        case WM_DROPFILES:
            DragFinish(HDROP::FromParam(wParam));
            return 0;
        case WM_MOUSEACTIVATE:
            if (!window->IsChild()) return MA_ACTIVATE;
            return CallProcedure(window->parent, message, wParam, lParam);
        case WM_MOUSEWHEEL:
            return window->IsChild() ? CallProcedure(window->parent, message, wParam, lParam) : 0;
        default:
            return 0;
    }
}
