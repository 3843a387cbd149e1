#include "dialog/selection_watch.h"

#include <qkui/list/list_ctrl.h>
#include "list/list_entries.h"

namespace qkui {

SelectionWatch::SelectionWatch(CQKDialogBase& dialog, const CArray<QKItemBase*>& items) : dialog_(dialog) {
    for (QKItemBase* item : items) {
        if (item->GetType() != QKUI_LISTCTRL) continue;
        auto* list = static_cast<QKListCtrl*>(item);
        if (list->m_calls.selection)
            watched_.push_back({list, Alive(dialog, list->m_lstItems), list->m_lstItems->SelectionMark()});
    }
}

void SelectionWatch::Tell() {
    for (const Watched& watched : watched_) {
        // A list that was taken off the dialog is not asked for its selection any more.
        if (!watched.alive || !dialog_.GetQKItem(watched.list)) continue;
        const auto call = watched.list->m_calls.selection;
        if (call && watched.list->m_lstItems->SelectionMark() != watched.before) (*call)();
    }
}

}  // namespace qkui
