// The states of a list's entries: selection above all.
#include <algorithm>
#include <utility>
#include <vector>

#include "dialog/shown_lists.h"
#include "list/list_entries.h"
#include "list/memory.h"
#include "list/uninterrupted.h"

namespace {

// Changing a node's state takes it out of the set that it was found in, and others with the same record.
template <class Change>
int ForAll(const QKListEntries::NodeSet& nodes, Change change) {
    int changed = 0;
    for (QKListNode* node : std::vector<QKListNode*>(nodes.begin(), nodes.end()))
        changed |= change(*node);
    return changed;
}

}  // namespace

int QKListCtrl::SetSel(QKListItem* entry, int select) {
    if (!entry) return 0;
    return QKWithinMemory(0, [&] {
        const int wanted = select ? 0 : 1;
        const int changed = entry->nSelState != wanted;
        if (QKListNode* node = m_lstItems->Find(entry)) {
            m_lstItems->SetSelected(*node, select != 0);
        } else {
            if (select)
                m_lstItems->Select(entry);
            else
                m_lstItems->Deselect(entry);
            entry->nSelState = wanted;
        }
        return changed;
    });
}

int QKListCtrl::SetSel(int index, int select) {
    return QKWithinMemory(0, [&] {
        QKListNode* node = m_lstItems->At(index);
        if (!node) return 0;
        const int changed = node->unselected != (select ? 0 : 1);
        m_lstItems->SetSelected(*node, select != 0);
        return changed;
    });
}

void QKListCtrl::SetSignalSel(int index) {
    SetSel(index, 1);
}

void QKListCtrl::SelectAll() {
    const QKUninterrupted uninterrupted;
    QKWithinMemory([this] {
        for (int i = 0; i < m_lstItems->Count(); ++i)
            m_lstItems->SetSelected(m_lstItems->Node(i), true);
    });
}

int QKListCtrl::UnSelRcItem() {
    const QKUninterrupted uninterrupted;
    const int changed = ForAll(m_lstItems->Selected(), [this](QKListNode& node) {
        m_lstItems->SetUnselected(node, 1);
        return 1;
    });
    m_lstItems->DeselectEntries([](const QKListNode*) { return false; });
    return changed;
}

int QKListCtrl::ClearState() {
    const QKUninterrupted uninterrupted;
    m_lstItems->LookAtAll();
    int changed = UnSelRcItem();
    changed |= ForAll(m_lstItems->Focused(), [this](QKListNode& node) {
        m_lstItems->SetFocus(node, 1);
        return 1;
    });
    changed |= ForAll(m_lstItems->Hovered(), [this](QKListNode& node) {
        m_lstItems->SetMouse(node, QK_NORMAL);
        return 1;
    });
    m_lstItems->ClearSelection();
    return changed;
}

int QKListCtrl::RemoveMoveState() {
    return ForAll(m_lstItems->Hovered(), [this](QKListNode& node) {
        if (node.mouse != QK_MOUSEON) return 0;
        m_lstItems->SetMouse(node, QK_NORMAL);
        return 1;
    });
}

int QKListCtrl::ClearAlphImage() {
    int freed = 0;
    for (const auto& held : m_lstItems->Held()) {  // nobody else's were ever set
        QKListItem& entry = *held.item;
        freed |= entry.pAlphaImage != nullptr;
        delete std::exchange(entry.pAlphaImage, nullptr);
        entry.nAlpha = 255;
    }
    return freed;
}

// ---- All shown lists of a dialog

int CQKDialogBase::GetNumsSel() {
    const QKUninterrupted uninterrupted;
    int count = 0;
    ForEachList([&](QKListCtrl& list) {
        for (const QKListNode* node : list.m_lstItems->Selected())
            count += node->unselected == 0;
    });
    return count;
}

void CQKDialogBase::UnSelRcItem() {
    ForEachList([](QKListCtrl& list) { list.UnSelRcItem(); });
}

// The selection is what the band touches now: what it left is unselected again.
void CQKDialogBase::CaleSelItem() {
    const QKUninterrupted uninterrupted;
    ForEachList([this](QKListCtrl& list) {
        QKListEntries& entries = *list.m_lstItems;
        const std::vector<QKListNode*> touched = entries.HitBy(list.BandArea(m_rcSel));
        const auto isTouched = [&](const QKListNode* node) {
            return std::binary_search(touched.begin(), touched.end(), node, QKListEntries::InOrder());
        };
        ForAll(entries.Selected(), [&](QKListNode& node) {
            if (!isTouched(&node)) entries.SetUnselected(node, 1);
            return 0;
        });
        entries.DeselectEntries(isTouched);
        for (QKListNode* node : touched)
            entries.SetSelected(*node, true);
    });
}
