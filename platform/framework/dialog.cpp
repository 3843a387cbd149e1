#include <platform/framework.h>

#include "platform/framework/centring.h"
#include "platform/framework/dialog_builder.h"
#include "platform/framework/modal_loop.h"
#include "platform/framework/window_access.h"

using platform::BuiltDialog;
using platform::ModalLoop;
using platform::PendingCreation;

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
END_MESSAGE_MAP()

namespace {

// The hidden window of a dialog, attached to its object. The object may be gone when this fails.
std::optional<BuiltDialog> BuildFor(CDialog& dialog, UINT templateId, HWND parent) {
    if (platform::WindowAccess::HasWindow(dialog)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return std::nullopt;
    }
    if (templateId == 0 || templateId > 0xFFFF) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return std::nullopt;
    }
    PendingCreation pending(dialog);
    // The creation parameter names the object by the address of its CWnd.
    return platform::BuildDialog({}, MAKEINTRESOURCE(templateId), parent, platform::FrameworkWindowClass(),
                                 static_cast<CWnd*>(&dialog));
}

}  // namespace

CDialog::CDialog(UINT templateId, CWnd* parent) : m_nTemplateId(templateId), m_pParentWnd(parent) {}

CDialog::~CDialog() {
    if (m_modalLoop) m_modalLoop->Forget();
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) {
    m_nTemplateId = templateId;
    m_pParentWnd = parent;
    const std::optional<BuiltDialog> built = BuildFor(*this, templateId, parent ? parent->m_hWnd : HWND());
    if (!built) return FALSE;
    // Handlers may destroy the window, and with it the object.
    SendMessageW(built->window, WM_INITDIALOG, 0, 0);
    if (built->visible) ::ShowWindow(built->window, SW_SHOW);
    if (IsWindow(built->window)) return TRUE;
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
}

INT_PTR CDialog::DoModal() {
    if (m_modalLoop) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    ModalLoop loop(*this);
    const HWND parent = m_pParentWnd ? m_pParentWnd->m_hWnd : HWND();
    const std::optional<BuiltDialog> built = BuildFor(*this, m_nTemplateId, parent);
    if (!built) return -1;
    loop.Begin(built->window, platform::EnclosingTopLevel(parent));
    SendMessageW(built->window, WM_INITDIALOG, 0, 0);
    loop.Run();
    return loop.Finish();
}

void CDialog::EndDialog(int result) {
    if (m_modalLoop)
        m_modalLoop->End(result);
    else if (m_hWnd)
        DestroyWindow();
}

BOOL CDialog::OnInitDialog() {
    return TRUE;
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN) {
        if (message->wParam == VK_ESCAPE || message->wParam == VK_RETURN) {
            SendMessage(WM_COMMAND, message->wParam == VK_RETURN ? IDOK : IDCANCEL);
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(message);
}

void CDialog::OnOK() {
    EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

void CDialog::DoDataExchange(CDataExchange*) {}

LRESULT CDialog::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            return OnInitDialog();
        case WM_CLOSE:
            SendMessage(WM_COMMAND, IDCANCEL);
            return 0;
        case WM_COMMAND:
            // A notification other than a click is nobody's order.
            if (HIWORD(wParam) != 0) break;
            if (LOWORD(wParam) == IDOK) return OnOK(), 1;
            if (LOWORD(wParam) == IDCANCEL) return OnCancel(), 1;
            break;
        default:
            break;
    }
    return CWnd::DefWindowProc(message, wParam, lParam);
}
