// All shown lists of a dialog, from the last registered to the first.
#pragma once

#include <qkui/dialog/dialog_base.h>
#include <qkui/list/list_ctrl.h>

template <class Visit>
void CQKDialogBase::ForEachList(Visit visit) {
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i)
        if (m_arItems[i]->GetType() == QKUI_LISTCTRL && m_arItems[i]->IsShow())
            visit(static_cast<QKListCtrl&>(*m_arItems[i]));
}
