#include <platform/framework.h>

#include "platform/framework/centring.h"
#include "platform/framework/message_map.h"
#include "platform/framework/window_access.h"
#include "platform/framework/window_objects.h"

using platform::MessageFrame;
using platform::PendingCreation;

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
END_MESSAGE_MAP()

CWnd::~CWnd() {
    try {
        if (m_hWnd) ::DestroyWindow(m_hWnd);
    } catch (...) {
        // Thrown by a handler of another window that hears of it; the window is gone all the same.
    }
    // Still there when the destruction is already under way around this call: its last messages then go
    // without an object.
    if (m_hWnd) platform::UnbindObject(m_hWnd);
    for (MessageFrame* frame = m_frame; frame; frame = frame->outer)
        frame->object = nullptr;
    PendingCreation::Forget(*this);
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
    return IsWindow(window) ? platform::ObjectOf(window) : nullptr;
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCWSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    if (platform::WindowAccess::HasWindow(*this)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const HWND parentWindow = parent ? parent->m_hWnd : HWND();
    const CRect place(rect);
    PendingCreation pending(*this);
    // From here on the object may be gone: a refused window detaches, and PostNcDestroy may delete.
    const HWND window = CreateWindowExW(exStyle, platform::FrameworkWindowClass(), title, style, place.left,
                                        place.top, place.Width(), place.Height(), parentWindow, id, {}, this);
    return window ? TRUE : FALSE;
}

BOOL CWnd::DestroyWindow() {
    return ::DestroyWindow(m_hWnd);
}

DWORD CWnd::GetStyle() const {
    return static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_STYLE));
}

DWORD CWnd::GetExStyle() const {
    return static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE));
}

namespace {

BOOL ChangeStyle(HWND window, int index, DWORD remove, DWORD add, UINT flags) {
    if (!IsWindow(window)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    const DWORD before = static_cast<DWORD>(GetWindowLongPtrW(window, index));
    const DWORD after = (before & ~remove) | add;
    if (after == before) return FALSE;
    SetWindowLongPtrW(window, index, static_cast<LONG_PTR>(after));
    if (flags != 0)
        SetWindowPos(window, {}, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}

}  // namespace

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags) {
    return ChangeStyle(m_hWnd, GWL_STYLE, remove, add, flags);
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT flags) {
    return ChangeStyle(m_hWnd, GWL_EXSTYLE, remove, add, flags);
}

void CWnd::ScreenToClient(RECT* rect) const {
    POINT topLeft{rect->left, rect->top};
    POINT bottomRight{rect->right, rect->bottom};
    if (!::ScreenToClient(m_hWnd, &topLeft) || !::ScreenToClient(m_hWnd, &bottomRight)) return;
    *rect = RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

void CWnd::ClientToScreen(RECT* rect) const {
    POINT topLeft{rect->left, rect->top};
    POINT bottomRight{rect->right, rect->bottom};
    if (!::ClientToScreen(m_hWnd, &topLeft) || !::ClientToScreen(m_hWnd, &bottomRight)) return;
    *rect = RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

void CWnd::CenterWindow() {
    CRect own;
    if (!::GetWindowRect(m_hWnd, own)) return;
    const bool child = (GetStyle() & WS_CHILD) != 0;
    const CPoint place = platform::CentredOrigin(own.Size(), ::GetParent(m_hWnd), child);
    SetWindowPos({}, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CWnd::OnAmbientProperty(COleControlSite*, DISPID, VARIANT*) {
    return FALSE;
}

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(MSG* message) {
    // A filter that lets a message pass may still destroy windows on the way.
    for (HWND window = message->hwnd; IsWindow(window); window = ::GetParent(window)) {
        const bool child = (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0;
        CWnd* const object = FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(message)) return TRUE;
        if (!child) break;
    }
    return FALSE;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const AFX_MSGMAP_ENTRY* line = platform::FindLine(GetMessageMap(), message, wParam))
        return line->handle(this, wParam, lParam);
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MessageFrame* frame = m_frame;
    if (!frame || !m_hWnd || frame->window != m_hWnd) return 0;
    return DefWindowProc(frame->message, frame->wParam, frame->lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_hWnd ? DefWindowProcW(m_hWnd, message, wParam, lParam) : 0;
}

void CWnd::PostNcDestroy() {}
