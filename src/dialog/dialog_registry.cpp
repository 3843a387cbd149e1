// The dialog's items: pointers in the order of registration.
#include <qkui/dialog/dialog_base.h>
#include <qkui/items/check_box.h>
#include <qkui/items/static_text.h>
#include <qkui/items/text_button.h>
#include "dialog/item_tips.h"

void CQKDialogBase::GiveDefaultFont(QKItemBase& item) const {
    if (!m_pDefaultFont) return;
    switch (item.GetType()) {
        case QKUI_STATICTEXT:
            return static_cast<QKStaticText&>(item).TakeDefaultFont(m_pDefaultFont);
        case QKUI_TEXTBUTTON:
            return static_cast<QKTextButton&>(item).TakeDefaultFont(m_pDefaultFont);
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
            return static_cast<QKCheckBox&>(item).TakeDefaultFont(m_pDefaultFont);
        default:
            return;
    }
}

int CQKDialogBase::AddQKItem(QKItemBase* item) {
    if (!item || GetQKItem(item)) return 0;
    item->SetParent(m_hWnd);
    GiveDefaultFont(*item);
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
