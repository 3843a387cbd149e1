// What the pointer does to the entries of a list.
//
// Entries are asked in their order, and an event changes at most two of them: the one it is about, and the
// first other one that still has the state which only one entry has at a time.
#include <qkui/list/list_ctrl.h>
#include "dialog/alive.h"
#include "list/list_access.h"
#include "list/uninterrupted.h"

using namespace qkui;

namespace {

constexpr int kNothingHit = -1;

Entry* FirstOther(const EntrySet& entries, int id) {
    for (Entry* entry : entries)
        if (entry->id != id) return entry;
    return nullptr;
}

}  // namespace

// Presses an entry and gives it the focus.
void CQKDialogBase::PressEntry(QKListCtrl& list, Entry& entry) {
    ListEntries& entries = ListAccess::Entries(list);
    entries.SetMouse(entry, QKItemBase::QK_MOUSEDOWN);
    if (entry.focus != 0) entries.SetFocus(entry, 0);
    ListAccess::Pressed(list, entry);
    m_pKeyList = &list;
}

// An entry that is selected already keeps the others selected.
void CQKDialogBase::SelectAlone(QKListCtrl& list, Entry& entry) {
    if (entry.unselected == 0) return;
    UnSelRcItem();
    ListAccess::Entries(list).SetSelected(entry, true);
}

int CQKDialogBase::MoveOnList(QKListCtrl* list, const CRect&, CPoint point) {
    const Uninterrupted uninterrupted;
    ListEntries& entries = ListAccess::Entries(*list);
    int hot = kNothingHit;
    int changed = 0;
    for (Entry* entry : ListAccess::HitBy(*list, point)) {
        hot = entry->id;
        if (entry->mouse == QKItemBase::QK_MOUSEON) continue;
        entries.SetMouse(*entry, QKItemBase::QK_MOUSEON);
        changed = 1;
        break;
    }
    if (Entry* left = FirstOther(entries.Hovered(), hot)) {
        entries.SetMouse(*left, QKItemBase::QK_NORMAL);
        changed = 1;
    }
    return changed;
}

int CQKDialogBase::MoveLeaveList(QKListCtrl* list, const CRect& rect) {
    ListEntries& entries = ListAccess::Entries(*list);
    if (entries.Hovered().empty()) return 0;
    while (!entries.Hovered().empty())
        entries.SetMouse(**entries.Hovered().begin(), QKItemBase::QK_NORMAL);
    UpdateViewRect(rect);
    return 1;
}

int CQKDialogBase::MoveLDownList(QKListCtrl* list, const CRect& rect, CPoint point) {
    ListEntries& entries = ListAccess::Entries(*list);
    int hot = kNothingHit;
    int pressed = 0;
    for (Entry* entry : ListAccess::HitBy(*list, point)) {
        hot = entry->id;
        if (entry->mouse == QKItemBase::QK_MOUSEDOWN) continue;
        PressEntry(*list, *entry);
        SelectAlone(*list, *entry);
        pressed = 1;
        break;
    }
    Entry* before = FirstOther(entries.Focused(), hot);
    if (before) entries.SetFocus(*before, 1);
    if (before || pressed) UpdateViewRect(rect);
    return pressed;
}

// The click function belongs to the entry under the release, wherever the press was.
int CQKDialogBase::MoveUpList(QKListCtrl* list, const CRect& rect, CPoint point) {
    const Alive alive(*this, ListAccess::Life(*list));
    ListEntries& entries = ListAccess::Entries(*list);
    POINT at = point;  // the host's function may change it
    int hot = kNothingHit;
    int changed = 0;
    for (int next = 0; !changed;) {
        Entry* entry = nullptr;
        for (Entry* hit : ListAccess::HitBy(*list, at))
            if (!entry && entries.PositionOf(*hit) >= next) entry = hit;
        if (!entry) break;
        hot = entry->id;
        next = entries.PositionOf(*entry) + 1;
        if (entry->mouse != QKItemBase::QK_MOUSEON) {
            entries.SetMouse(*entry, QKItemBase::QK_MOUSEON);
            changed = 1;
        }
        if (entry->ClickSelects() && m_rcSel.Width() == 0 && m_rcSel.Height() == 0) {
            UnSelRcItem();
            entries.SetSelected(*entry, true);
            changed = 1;
        }
        if (const auto call = ListAccess::ClickCall(*list)) {
            call(entries.Expose(*entry), &at);
            if (!alive) return 0;
        }
    }
    if (Entry* left = FirstOther(entries.Hovered(), hot)) {
        entries.SetMouse(*left, QKItemBase::QK_NORMAL);
        changed = 1;
    }
    if (changed) UpdateViewRect(rect);
    return changed;
}

// Afterwards the first focused entry loses the focus, and that is as a rule the double-clicked one: what a
// double click opens is no longer the list's business.
int CQKDialogBase::MoveLDBClickList(QKListCtrl* list, const CRect& rect, CPoint point) {
    const Alive alive(*this, ListAccess::Life(*list));
    ListEntries& entries = ListAccess::Entries(*list);
    int pressed = 0;
    for (Entry* entry : ListAccess::HitBy(*list, point)) {
        if (entry->mouse == QKItemBase::QK_MOUSEDOWN) continue;
        PressEntry(*list, *entry);
        SelectAlone(*list, *entry);
        pressed = 1;
        if (const auto call = ListAccess::DoubleClickCall(*list)) {
            call(entries.Expose(*entry));
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
    ListEntries& entries = ListAccess::Entries(*list);
    int hot = kNothingHit;
    int result = 0;
    const std::vector<Entry*> hits = ListAccess::HitBy(*list, point);
    for (Entry* entry : hits) {
        hot = entry->id;
        if (entry->mouse == QKItemBase::QK_MOUSEDOWN) continue;
        PressEntry(*list, *entry);
        result = 1;
        break;
    }
    if (m_bSelRect && hits.empty()) {
        m_rcSel.SetRectEmpty();
        UnSelRcItem();
        result = 1;
    }
    if (Entry* before = FirstOther(entries.Focused(), hot)) {
        entries.SetFocus(*before, 1);
        result = 1;
    }
    if (result) UpdateViewRect(rect);
    return result;
}

int CQKDialogBase::MoveRUpList(QKListCtrl* list, const CRect&, CPoint point) {
    ListEntries& entries = ListAccess::Entries(*list);
    const std::vector<Entry*> hits = ListAccess::HitBy(*list, point);
    POINT at = point;
    if (const auto call = ListAccess::RightClickCall(*list))
        call(hits.empty() ? nullptr : entries.Expose(*hits.front()), &at);
    return !hits.empty();
}

// A dialog that is no longer active shows no focus.
bool CQKDialogBase::DropListFocus() {
    bool changed = false;
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        if (m_arItems[i]->GetType() != QKUI_LISTCTRL || !TakesPointer(m_arItems[i])) continue;
        ListEntries& entries = ListAccess::Entries(static_cast<QKListCtrl&>(*m_arItems[i]));
        if (entries.Focused().empty()) continue;
        entries.SetFocus(**entries.Focused().begin(), 1);
        changed = true;
    }
    return changed;
}
