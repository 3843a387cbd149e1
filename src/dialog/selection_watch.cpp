#include "dialog/selection_watch.h"

#include <qkui/list/list_ctrl.h>
#include "list/list_access.h"

namespace qkui {

SelectionWatch::SelectionWatch(CQKDialogBase& dialog, const CArray<QKItemBase*>& items) : dialog_(dialog) {
    for (QKItemBase* item : items) {
        if (item->GetType() != QKUI_LISTCTRL) continue;
        auto* list = static_cast<QKListCtrl*>(item);
        if (ListAccess::Calls(*list).selection)
            watched_.push_back(
                {list, Alive(dialog, ListAccess::Life(*list)), ListAccess::Entries(*list).SelectionMark()});
    }
}

void SelectionWatch::Notify() {
    for (const Watched& watched : watched_) {
        // A list that was taken off the dialog is not asked for its selection any more.
        if (!watched.alive || !dialog_.GetQKItem(watched.list)) continue;
        const auto call = ListAccess::Calls(*watched.list).selection;
        if (call && ListAccess::Entries(*watched.list).SelectionMark() != watched.before) (*call)();
    }
}

}  // namespace qkui
