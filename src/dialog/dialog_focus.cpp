// The dialog's items under the keyboard.
#include "dialog/alive.h"
#include "dialog/tab_focus.h"

void CQKDialogBase::SetTabKeys(int enable) {
    m_pFocus->Enable(enable != 0);
    if (!enable) ShowFocus(nullptr, false);
}

int CQKDialogBase::SetFocusItem(QKItemBase* item) {
    if (item && !(GetQKItem(item) && qkui::TabFocus::CanHave(*item))) return 0;
    ShowFocus(item, true);
    return 1;
}

QKItemBase* CQKDialogBase::GetFocusItem() {
    return m_pFocus->Item(m_arItems);
}

void CQKDialogBase::SetFocusColor(const Gdiplus::Color& color) {
    m_pFocus->SetColor(color);
}

CRect CQKDialogBase::FocusFrame() const {
    const QKItemBase* item = m_pFocus->IsShown() ? m_pFocus->Item(m_arItems) : nullptr;
    CRect rect;
    if (!item || !IsWindow(m_hWnd) || !HitRect(item, rect)) return {};
    CRect client;
    GetClientRect(client);
    return qkui::TabFocus::Outside(rect, client);
}

void CQKDialogBase::ShowFocus(QKItemBase* item, bool shown) {
    const CRect before = FocusFrame();
    m_pFocus->Set(item, shown);
    const CRect after = FocusFrame();
    if (before == after) return;
    CRect both;
    both.UnionRect(before, after);
    UpdateViewRect(both);
}

// The next Tab goes on from where the mouse was pressed.
void CQKDialogBase::PressTakesFocus(CPoint point) {
    if (!m_pFocus->IsEnabled()) return;
    QKItemBase* pressed = GetFocusItem();
    for (QKItemBase* item : m_arItems) {
        CRect rect;
        if (qkui::TabFocus::CanHave(*item) && HitRect(item, rect) && rect.PtInRect(point)) pressed = item;
    }
    ShowFocus(pressed, false);
}

// True when the key was the focus's. The dialog may be gone then.
bool CQKDialogBase::TakeFocusKey(const MSG& message) {
    constexpr LPARAM kRepeated = LPARAM{1} << 30;
    if (!m_pFocus->IsEnabled() || message.message != WM_KEYDOWN || message.hwnd != m_hWnd) return false;
    if (message.wParam == VK_TAB && GetKeyState(VK_CONTROL) >= 0) {
        QKItemBase* const next = m_pFocus->Next(m_arItems, GetKeyState(VK_SHIFT) < 0);
        if (next) ShowFocus(next, true);
        return next != nullptr;
    }
    QKItemBase* const item = m_pFocus->IsShown() ? GetFocusItem() : nullptr;
    if (!item || (message.wParam != VK_SPACE && message.wParam != VK_RETURN)) return false;
    if ((message.lParam & kRepeated) == 0) ClickItem(item);
    return true;
}

void CQKDialogBase::ClickItem(QKItemBase* item) {
    const qkui::Alive dialog(*this);
    bool changed = false;
    if (!CompleteClick(item, ClickedBy::Key, changed)) return;
    m_bMinimized = 0;
    CRect rect;
    if (changed && HitRect(item, rect)) UpdateViewRect(rect);
}
