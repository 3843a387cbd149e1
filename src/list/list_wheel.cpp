// What scrolls the lists of a dialog, and what goes along: their bars, the hover, a rubber band.
#include <algorithm>

#include <platform/window.h>

#include <qkui/items/scroll_bar.h>
#include "dialog/alive.h"
#include "dialog/selection_watch.h"
#include "dialog/shown_lists.h"
#include "list/list_access.h"

using namespace qkui;

// A list knows the bar by its address alone: what is registered there may be another item by now.
QKVScrollBar* CQKDialogBase::BarOf(const QKListCtrl& list) const {
    if (!ListAccess::Scroll(list).on) return nullptr;
    for (QKItemBase* item : m_arItems)
        if (item == ListAccess::Scroll(list).bar && item->GetType() == QKUI_VSCROLLBAR)
            return ListAccess::Scroll(list).bar;
    return nullptr;
}

// Lists end at the end of their contents, and bars say where they are.
void CQKDialogBase::SettleScrolling() const {
    for (QKItemBase* item : m_arItems) {
        if (item->GetType() != QKUI_LISTCTRL) continue;
        auto& list = static_cast<QKListCtrl&>(*item);
        if (!ListAccess::Scroll(list).on) continue;
        ListAccess::KeepInRange(list);
        if (BarOf(list)) ListAccess::ShowOnBar(list);
    }
}

// The thumb was dragged.
void CQKDialogBase::FollowThumb(const QKVScrollBar* bar) {
    ForEachList([&](QKListCtrl& list) {
        if (ListAccess::Scroll(list).bar == bar && BarOf(list)) ListAccess::FollowBar(list);
    });
}

// The topmost list that scrolls, by the place of its own or of its bar.
QKListCtrl* CQKDialogBase::ScrollingListAt(CPoint point) {
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        if (m_arItems[i]->GetType() != QKUI_LISTCTRL || !TakesPointer(m_arItems[i])) continue;
        auto* list = static_cast<QKListCtrl*>(m_arItems[i]);
        if (!ListAccess::Scroll(*list).on) continue;
        CRect barPlace;
        if (const QKVScrollBar* bar = BarOf(*list); bar && bar->IsShow()) bar->GetRect(&barPlace);
        if (ListAccess::View(*list).PtInRect(point) || barPlace.PtInRect(point)) return list;
    }
    return nullptr;
}

// Shows what has changed in a list that may have been scrolled. The dialog may be gone afterwards.
void CQKDialogBase::ShowScrolled(QKListCtrl& list) {
    SettleScrolling();
    CRect rect, barPlace;
    list.GetRect(&rect);
    if (const QKVScrollBar* bar = BarOf(list)) bar->GetRect(&barPlace);
    const Alive alive(*this);
    UpdateViewRect(rect);
    if (alive && !barPlace.IsRectEmpty() && m_nLayStyle != LAY_OPAQUE) UpdateViewRect(barPlace);
}

BOOL CQKDialogBase::OnMouseWheel(UINT flags, short delta, CPoint screen) {
    CPoint point = screen;
    ScreenToClient(&point);
    QKListCtrl* list = ScrollingListAt(point);
    if (!list || !ListAccess::Turn(*list, delta)) return CDialog::OnMouseWheel(flags, delta, screen);
    const Alive alive(*this);
    SelectionWatch watch(*this, m_arItems);
    // Other entries lie under the pointer now, and in the band.
    if (!CapturedItem()) MoveOnList(list, ListAccess::View(*list), point);
    if (m_bSelRect && m_bSelecting) {
        StretchBand(point);
        UpdateView();
    }
    if (alive) ShowScrolled(*list);
    if (alive) watch.Notify();
    return TRUE;
}

// ---- The rubber band

// The list that scrolls and that the band began in.
QKListCtrl* CQKDialogBase::BandList() const {
    for (QKItemBase* item : m_arItems) {
        if (item->GetType() != QKUI_LISTCTRL) continue;
        auto* list = static_cast<QKListCtrl*>(item);
        if (ListAccess::Scroll(*list).on && ListAccess::Scroll(*list).hasBand) return list;
    }
    return nullptr;
}

void CQKDialogBase::BeginBandAt(CPoint point) {
    bool begun = false;
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        if (m_arItems[i]->GetType() != QKUI_LISTCTRL) continue;
        auto& list = static_cast<QKListCtrl&>(*m_arItems[i]);
        ListAccess::Scroll(list).hasBand =
            !begun && ListAccess::Scroll(list).on && list.IsShow() && ListAccess::View(list).PtInRect(point);
        ListAccess::Scroll(list).carried = CPoint();
        begun = begun || ListAccess::Scroll(list).hasBand;
    }
}

// Up to the pointer, from where it began: from that place in the content, when that has been scrolled since.
void CQKDialogBase::StretchBand(CPoint point) {
    CPoint start = m_ptSelStart;
    if (const QKListCtrl* list = BandList()) start.Offset(ListAccess::Scroll(*list).carried);
    m_ptSelEnd = point;
    m_rcSel = CRect(std::min(start.x, m_ptSelEnd.x), std::min(start.y, m_ptSelEnd.y),
                    std::max(start.x, m_ptSelEnd.x), std::max(start.y, m_ptSelEnd.y));
    CaleSelItem();
}
