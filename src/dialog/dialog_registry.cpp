// The dialog's items: pointers in the order of registration.
#include <qkui/dialog/dialog_base.h>
#include "dialog/item_tips.h"
#include "items/item_access.h"

int CQKDialogBase::AddQKItem(QKItemBase* item) {
    if (!item || GetQKItem(item)) return 0;
    item->SetParent(m_hWnd);
    qkui::GiveDefaultFont(*item, m_pDefaultFont);
    m_arItems.Add(item);
    if (item->GetType() == QKUI_GIFIMAGE) m_bHasGif = 1;
    return 1;
}

QKItemBase* CQKDialogBase::GetQKItem(QKItemBase* item) {
    for (QKItemBase* registered : m_arItems)
        if (registered == item) return item;
    return nullptr;
}

int CQKDialogBase::RemoveQKItem(QKItemBase* item) {
    for (INT_PTR i = 0; item && i < m_arItems.GetSize(); ++i) {
        if (m_arItems[i] == item) {
            m_pTips->Hide();
            m_arItems.RemoveAt(i);
            return 1;
        }
    }
    return 0;
}

void CQKDialogBase::RemoveAllQKItem() {
    m_pTips->Hide();
    m_arItems.RemoveAll();
}
