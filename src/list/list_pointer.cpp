// What the pointer does to the entries of a list.
//
// Entries are asked in their order, and an event changes at most two of them: the one it is about, and the
// first other one that still has the state which only one entry has at a time.
#include <qkui/list/list_ctrl.h>
#include "dialog/alive.h"
#include "list/list_entries.h"
#include "list/uninterrupted.h"

namespace {

constexpr int kNothingHit = -1;

QKListNode* FirstOther(const QKListEntries::NodeSet& nodes, int id) {
    for (QKListNode* node : nodes)
        if (node->id != id) return node;
    return nullptr;
}

}  // namespace

// Presses an entry and gives it the focus.
void CQKDialogBase::PressEntry(QKListCtrl& list, QKListNode& node) {
    QKListEntries& entries = *list.m_lstItems;
    entries.SetMouse(node, QKItemBase::QK_MOUSEDOWN);
    if (node.focus != 0) entries.SetFocus(node, 0);
    list.Pressed(node);
    m_pKeyList = &list;
}

// An entry that is selected already keeps the others selected.
void CQKDialogBase::SelectAlone(QKListCtrl& list, QKListNode& node) {
    if (node.unselected == 0) return;
    UnSelRcItem();
    list.m_lstItems->SetSelected(node, true);
}

int CQKDialogBase::MoveOnList(QKListCtrl* list, const CRect&, CPoint point) {
    const QKUninterrupted uninterrupted;
    QKListEntries& entries = *list->m_lstItems;
    int hot = kNothingHit;
    int changed = 0;
    for (QKListNode* node : list->HitBy(point)) {
        hot = node->id;
        if (node->mouse == QKItemBase::QK_MOUSEON) continue;
        entries.SetMouse(*node, QKItemBase::QK_MOUSEON);
        changed = 1;
        break;
    }
    if (QKListNode* left = FirstOther(entries.Hovered(), hot)) {
        entries.SetMouse(*left, QKItemBase::QK_NORMAL);
        changed = 1;
    }
    return changed;
}

int CQKDialogBase::MoveLeaveList(QKListCtrl* list, const CRect& rect) {
    QKListEntries& entries = *list->m_lstItems;
    if (entries.Hovered().empty()) return 0;
    while (!entries.Hovered().empty())
        entries.SetMouse(**entries.Hovered().begin(), QKItemBase::QK_NORMAL);
    UpdateViewRect(rect);
    return 1;
}

int CQKDialogBase::MoveLDownList(QKListCtrl* list, const CRect& rect, CPoint point) {
    QKListEntries& entries = *list->m_lstItems;
    int hot = kNothingHit;
    int pressed = 0;
    for (QKListNode* node : list->HitBy(point)) {
        hot = node->id;
        if (node->mouse == QKItemBase::QK_MOUSEDOWN) continue;
        PressEntry(*list, *node);
        SelectAlone(*list, *node);
        pressed = 1;
        break;
    }
    QKListNode* before = FirstOther(entries.Focused(), hot);
    if (before) entries.SetFocus(*before, 1);
    if (before || pressed) UpdateViewRect(rect);
    return pressed;
}

// The click function belongs to the entry under the release, wherever the press was.
int CQKDialogBase::MoveUpList(QKListCtrl* list, const CRect& rect, CPoint point) {
    const qkui::Alive alive(*this, list->m_lstItems);
    QKListEntries& entries = *list->m_lstItems;
    POINT at = point;  // the host's function may change it
    int hot = kNothingHit;
    int changed = 0;
    for (int next = 0; !changed;) {
        QKListNode* node = nullptr;
        for (QKListNode* hit : list->HitBy(at))
            if (!node && entries.PositionOf(*hit) >= next) node = hit;
        if (!node) break;
        hot = node->id;
        next = entries.PositionOf(*node) + 1;
        if (node->mouse != QKItemBase::QK_MOUSEON) {
            entries.SetMouse(*node, QKItemBase::QK_MOUSEON);
            changed = 1;
        }
        if (node->ClickSelects() && m_rcSel.Width() == 0 && m_rcSel.Height() == 0) {
            UnSelRcItem();
            entries.SetSelected(*node, true);
            changed = 1;
        }
        if (const auto call = list->ClickCall()) {
            call(entries.HandOut(*node), &at);
            if (!alive) return 0;
        }
    }
    if (QKListNode* left = FirstOther(entries.Hovered(), hot)) {
        entries.SetMouse(*left, QKItemBase::QK_NORMAL);
        changed = 1;
    }
    if (changed) UpdateViewRect(rect);
    return changed;
}

// Afterwards the first focused entry loses the focus, and that is as a rule the double-clicked one: what a
// double click opens is no longer the list's business.
int CQKDialogBase::MoveLDBClickList(QKListCtrl* list, const CRect& rect, CPoint point) {
    const qkui::Alive alive(*this, list->m_lstItems);
    QKListEntries& entries = *list->m_lstItems;
    int pressed = 0;
    for (QKListNode* node : list->HitBy(point)) {
        if (node->mouse == QKItemBase::QK_MOUSEDOWN) continue;
        PressEntry(*list, *node);
        SelectAlone(*list, *node);
        pressed = 1;
        if (const auto call = list->DoubleClickCall()) {
            call(entries.HandOut(*node));
            if (!alive) return pressed;
        }
        break;
    }
    const bool focused = !entries.Focused().empty();
    if (focused) entries.SetFocus(**entries.Focused().begin(), 1);
    if (focused || pressed) UpdateViewRect(rect);
    return pressed;
}

int CQKDialogBase::MoveRDownList(QKListCtrl* list, const CRect& rect, CPoint point) {
    QKListEntries& entries = *list->m_lstItems;
    int hot = kNothingHit;
    int result = 0;
    const std::vector<QKListNode*> hits = list->HitBy(point);
    for (QKListNode* node : hits) {
        hot = node->id;
        if (node->mouse == QKItemBase::QK_MOUSEDOWN) continue;
        PressEntry(*list, *node);
        result = 1;
        break;
    }
    if (m_bSelRect && hits.empty()) {
        m_rcSel.SetRectEmpty();
        UnSelRcItem();
        result = 1;
    }
    if (QKListNode* before = FirstOther(entries.Focused(), hot)) {
        entries.SetFocus(*before, 1);
        result = 1;
    }
    if (result) UpdateViewRect(rect);
    return result;
}

int CQKDialogBase::MoveRUpList(QKListCtrl* list, const CRect&, CPoint point) {
    QKListEntries& entries = *list->m_lstItems;
    const std::vector<QKListNode*> hits = list->HitBy(point);
    POINT at = point;
    if (const auto call = list->RightClickCall())
        call(hits.empty() ? nullptr : entries.HandOut(*hits.front()), &at);
    return !hits.empty();
}

// A dialog that is no longer active shows no focus.
bool CQKDialogBase::DropListFocus() {
    bool changed = false;
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        if (m_arItems[i]->GetType() != QKUI_LISTCTRL || !TakesPointer(m_arItems[i])) continue;
        QKListEntries& entries = *static_cast<QKListCtrl*>(m_arItems[i])->m_lstItems;
        if (entries.Focused().empty()) continue;
        entries.SetFocus(**entries.Focused().begin(), 1);
        changed = true;
    }
    return changed;
}
