// What a window does with a message that its procedure leaves alone.
#include "platform/window/core/activation.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/core.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/tree.h"

using namespace platform;

namespace {

void DefaultPaint(HWND window) {
    PAINTSTRUCT paint;
    if (BeginPaint(window, &paint)) EndPaint(window, &paint);
}

// Once it is active a window has the keyboard, unless one of its children has it already.
void DefaultActivate(HWND window, WPARAM wParam) {
    const bool minimised = HIWORD(wParam) != 0;
    if (LOWORD(wParam) == WA_INACTIVE || minimised) return;
    if (!IsSameOrInside(Core::Get().activation.focus, window)) MoveFocus(window);
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
        case SC_MOVE:
            MoveByCaption(window);
            return 0;
        default:
            return 0;
    }
}

LRESULT DefaultSystemKey(const Window& window, WPARAM key) {
    const HWND top = TopLevelOf(window.handle);
    const Window* record = Core::Get().Peek(top);
    if (key == VK_F4 && (GetKeyState(VK_MENU) & 0x8000) && record && !record->IsDisabled())
        CallProcedure(top, WM_SYSCOMMAND, SC_CLOSE, 0);
    return 0;
}

}  // namespace

LRESULT DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> window = Core::Get().Share(handle);
    if (!window) return 0;
    switch (message) {
        case WM_NCCREATE:
            return TRUE;
        case WM_SETTEXT:
            window->title = CString(reinterpret_cast<LPCWSTR>(lParam));
            UpdateTraits(*window);
            return TRUE;
        case WM_PAINT:
            DefaultPaint(handle);
            return 0;
        case WM_CLOSE:
            DestroyWindow(handle);
            return 0;
        case WM_NCHITTEST:
            return HTCLIENT;
        case WM_SETCURSOR:
            return DefaultSetCursor(*window, wParam, lParam);
        case WM_NCLBUTTONDOWN:
            if (wParam == HTCAPTION) MoveByCaption(handle);
            return 0;
        case WM_ACTIVATE:
            DefaultActivate(handle, wParam);
            return 0;
        case WM_SYSCOMMAND:
            return DefaultSystemCommand(handle, wParam);
        case WM_SYSKEYDOWN:
            return DefaultSystemKey(*window, wParam);
        case WM_MOUSEWHEEL:
            return window->IsChild() ? CallProcedure(window->parent, message, wParam, lParam) : 0;
        default:
            return 0;
    }
}
