// The selected entries, as a host asks for them.
#include <qkui/list/list_ctrl.h>
#include "list/list_access.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

// Flags may hold other numbers than the two that mean something.
template <class Visit>
void ForEachSelected(ListEntries& entries, Visit visit) {
    const Uninterrupted uninterrupted;
    for (const Entry* entry : entries.Selected())
        if (entry->unselected == 0) visit(*entry);
}

}  // namespace

std::vector<int> QKListCtrl::GetSelectedIndexes() const {
    return WithinMemory(std::vector<int>(), [this] {
        std::vector<int> indexes;
        ForEachSelected(*m_state->entries,
                        [&](const Entry& entry) { indexes.push_back(m_state->entries->PositionOf(entry)); });
        return indexes;
    });
}

std::vector<QKListItem*> QKListCtrl::GetSelectedItems() {
    std::vector<QKListItem*> items;
    for (const int index : GetSelectedIndexes())
        items.push_back(GetItem(index));
    return items;
}

std::vector<const QKListItem*> QKListCtrl::GetSelectedItems() const {
    std::vector<const QKListItem*> items;
    for (const int index : GetSelectedIndexes())
        items.push_back(GetItem(index));
    return items;
}

int QKListCtrl::GetSelectedCount() const {
    return WithinMemory(0, [this] {
        int count = 0;
        ForEachSelected(*m_state->entries, [&](const Entry&) { ++count; });
        return count;
    });
}
