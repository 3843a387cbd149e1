// The states of a list's entries: selection above all.
#include <algorithm>
#include <utility>
#include <vector>

#include "dialog/shown_lists.h"
#include "list/list_access.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

// Changing an entry's state takes it out of the set that it was found in, and others with the same record.
template <class Change>
int ForAll(const EntrySet& entries, Change change) {
    int changed = 0;
    for (Entry* entry : std::vector<Entry*>(entries.begin(), entries.end()))
        changed |= change(*entry);
    return changed;
}

}  // namespace

int QKListCtrl::SetSel(QKListItem* item, int select) {
    if (!item) return 0;
    return WithinMemory(0, [&] {
        const int wanted = select ? 0 : 1;
        const int changed = item->nSelState != wanted;
        if (Entry* entry = m_state->entries->Find(item)) {
            m_state->entries->SetSelected(*entry, select != 0);
        } else {
            if (select)
                m_state->entries->Select(item);
            else
                m_state->entries->Deselect(item);
            item->nSelState = wanted;
        }
        return changed;
    });
}

int QKListCtrl::SetSel(int index, int select) {
    return WithinMemory(0, [&] {
        Entry* entry = m_state->entries->At(index);
        if (!entry) return 0;
        const int changed = entry->unselected != (select ? 0 : 1);
        m_state->entries->SetSelected(*entry, select != 0);
        return changed;
    });
}

void QKListCtrl::SetSignalSel(int index) {
    SetSel(index, 1);
}

void QKListCtrl::SelectAll() {
    const Uninterrupted uninterrupted;
    WithinMemory([this] {
        for (int i = 0; i < m_state->entries->Count(); ++i)
            m_state->entries->SetSelected(m_state->entries->EntryAt(i), true);
    });
}

int QKListCtrl::UnSelRcItem() {
    const Uninterrupted uninterrupted;
    const int changed = ForAll(m_state->entries->Selected(), [this](Entry& entry) {
        m_state->entries->SetUnselected(entry, 1);
        return 1;
    });
    m_state->entries->DeselectEntries([](const Entry*) { return false; });
    return changed;
}

int QKListCtrl::ClearState() {
    const Uninterrupted uninterrupted;
    m_state->entries->SyncAll();
    int changed = UnSelRcItem();
    changed |= ForAll(m_state->entries->Focused(), [this](Entry& entry) {
        m_state->entries->SetFocus(entry, 1);
        return 1;
    });
    changed |= ForAll(m_state->entries->Hovered(), [this](Entry& entry) {
        m_state->entries->SetMouse(entry, QK_NORMAL);
        return 1;
    });
    m_state->entries->ClearSelection();
    return changed;
}

int QKListCtrl::RemoveMoveState() {
    return ForAll(m_state->entries->Hovered(), [this](Entry& entry) {
        if (entry.mouse != QK_MOUSEON) return 0;
        m_state->entries->SetMouse(entry, QK_NORMAL);
        return 1;
    });
}

int QKListCtrl::ClearAlphImage() {
    int freed = 0;
    for (const auto& held : m_state->entries->Records().All()) {  // nobody else's were ever set
        QKListItem& item = *held.item;
        freed |= item.pAlphaImage != nullptr;
        delete std::exchange(item.pAlphaImage, nullptr);
        item.nAlpha = 255;
    }
    return freed;
}

// ---- All shown lists of a dialog

int CQKDialogBase::GetNumsSel() {
    const Uninterrupted uninterrupted;
    int count = 0;
    ForEachList([&](QKListCtrl& list) {
        for (const Entry* entry : ListAccess::Entries(list).Selected())
            count += entry->unselected == 0;
    });
    return count;
}

void CQKDialogBase::UnSelRcItem() {
    ForEachList([](QKListCtrl& list) { list.UnSelRcItem(); });
}

// The selection is what the band touches now: what it left is unselected again.
void CQKDialogBase::CaleSelItem() {
    const Uninterrupted uninterrupted;
    ForEachList([this](QKListCtrl& list) {
        ListEntries& entries = ListAccess::Entries(list);
        const std::vector<Entry*> touched = entries.HitBy(ListAccess::BandArea(list, m_rcSel));
        const auto isTouched = [&](const Entry* entry) {
            return std::binary_search(touched.begin(), touched.end(), entry, InOrder());
        };
        ForAll(entries.Selected(), [&](Entry& entry) {
            if (!isTouched(&entry)) entries.SetUnselected(entry, 1);
            return 0;
        });
        entries.DeselectEntries(isTouched);
        for (Entry* entry : touched)
            entries.SetSelected(*entry, true);
    });
}
