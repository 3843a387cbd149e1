// The pointer: which item an event reaches, what it does to the item's state, and when a click completes.
#include <qkui/list/list_ctrl.h>
#include "dialog/alive.h"
#include "dialog/item_tips.h"
#include "dialog/press.h"
#include "dialog/selection_watch.h"
#include "items/item_access.h"
#include "list/list_access.h"

// Items are visited from the last registered to the first: the topmost drawn comes first. Every refresh is a
// call into the host, and so is default processing.

bool CQKDialogBase::TakesPointer(const QKItemBase* item) {
    return item->IsShow() && item->GetEnable();
}

bool CQKDialogBase::HitRect(const QKItemBase* item, CRect& rect) {
    switch (item->GetType()) {
        case QKUI_BUTTON:
        case QKUI_TEXTBUTTON:
            static_cast<const QKButton*>(item)->GetButtonRect(rect);
            return true;
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
        case QKUI_VSCROLLBAR:
            item->GetRect(&rect);
            return true;
        default:
            return false;
    }
}

int CQKDialogBase::MoveOnItem(QKItemBase* item, const CRect& rect, CPoint point) {
    if (item->GetCaptrue()) return m_pPress->DragThumb(item, point);
    const bool inside = rect.PtInRect(point);
    if (inside && item->GetMouseMoveHand()) SetCursor(LoadCursorW(nullptr, IDC_HAND));
    // A pressed item keeps its look outside its rectangle, too.
    const QKItemBase::QK_STATUS status = inside ? QKItemBase::QK_MOUSEON : QKItemBase::QK_NORMAL;
    if (item->GetStatus() == QKItemBase::QK_MOUSEDOWN || item->GetStatus() == status) return 0;
    item->SetStatus(status);
    return 1;
}

int CQKDialogBase::MoveDownItem(QKItemBase* item, const CRect& rect, CPoint point) {
    if (!rect.PtInRect(point) || item->GetStatus() == QKItemBase::QK_MOUSEDOWN) return 0;
    m_pDownItem = item;  // a scroll bar pressed beside its thumb, too
    if (item->GetType() == QKUI_VSCROLLBAR && !static_cast<QKVScrollBar*>(item)->ptOnBar(point)) return 0;
    item->SetStatus(QKItemBase::QK_MOUSEDOWN);
    qkui::ItemAccess::PressedAt(*item) = point;
    const qkui::Alive dialog(*this);
    const qkui::Alive pressed(*this, item);
    UpdateViewRect(rect);
    if (!dialog) return 1;
    SetCapture(m_hWnd);
    if (pressed) item->SetCaptrue(1);
    return 1;
}

int CQKDialogBase::MoveUpItem(QKItemBase* item, const CRect& rect, CPoint point) {
    if (!rect.PtInRect(point)) {
        if (item->GetStatus() == QKItemBase::QK_NORMAL) return 0;
        item->SetStatus(QKItemBase::QK_NORMAL);
        UpdateViewRect(rect);
        return 1;
    }

    bool changed = false;
    if (item->GetStatus() == QKItemBase::QK_MOUSEDOWN &&
        !m_pPress->Complete(item, qkui::Press::ClickedBy::Pointer, changed))
        return 0;

    const bool minimized = m_bMinimized == 1;
    m_bMinimized = 0;
    // A window that was just minimised is no longer under the pointer.
    const QKItemBase::QK_STATUS status = minimized ? QKItemBase::QK_NORMAL : QKItemBase::QK_MOUSEON;
    if (item->GetStatus() == status && !changed) return 0;
    item->SetStatus(status);
    UpdateViewRect(rect);
    return 1;
}

int CQKDialogBase::MoveLeaveItem(QKItemBase* item, const CRect& rect) {
    if (item->GetStatus() == QKItemBase::QK_NORMAL) return 0;
    item->SetStatus(QKItemBase::QK_NORMAL);
    UpdateViewRect(rect);
    return 1;
}

void CQKDialogBase::StartBand(CPoint point) {
    m_ptSelStart = point;
    m_bSelecting = 1;
    BeginBandAt(point);
    UnSelRcItem();
    m_rcSel.SetRectEmpty();
    UpdateView();
}

void CQKDialogBase::OnLbuttonClkDown(UINT, CPoint point) {
    const qkui::Alive alive(*this);
    qkui::SelectionWatch watch(*this, m_arItems);
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        QKItemBase* item = m_arItems[i];
        CRect rect;
        if (!TakesPointer(item)) continue;
        if (item->GetType() == QKUI_LISTCTRL) {
            auto* list = static_cast<QKListCtrl*>(item);
            const qkui::Alive pressed(*this, qkui::ListAccess::Life(*list));
            list->GetRect(&rect);
            const bool taken = MoveLDownList(list, rect, point);
            if (!alive) return;
            if (!taken && !(pressed && list->GetListMode() == QKLIST_DESKTOP)) continue;
            if (!taken && m_bSelRect) StartBand(point);
            break;
        }
        if (HitRect(item, rect) && MoveDownItem(item, rect, point)) {
            if (alive) SetCapture(m_hWnd);
            return;
        }
    }
    if (alive) watch.Notify();
    // A press that a list took moves the window, too.
    if (alive) m_pPress->DragWindow(point);
}

// Unlike the first press, the second one of a double click does not press a scroll bar, stops at the topmost
// list whatever that says, and starts the rubber band over every kind of list.
void CQKDialogBase::OnLbuttonDbClkDown(UINT, CPoint point) {
    enum { kNobody, kItem, kList } taker = kNobody;
    const qkui::Alive alive(*this);
    qkui::SelectionWatch watch(*this, m_arItems);
    for (INT_PTR i = m_arItems.GetSize() - 1; taker == kNobody && i >= 0; --i) {
        QKItemBase* item = m_arItems[i];
        CRect rect;
        if (!TakesPointer(item) || item->GetType() == QKUI_VSCROLLBAR) continue;
        if (item->GetType() == QKUI_LISTCTRL) {
            item->GetRect(&rect);
            if (MoveLDBClickList(static_cast<QKListCtrl*>(item), rect, point)) taker = kList;
            if (!alive) return;
            break;
        }
        if (HitRect(item, rect) && MoveDownItem(item, rect, point)) taker = kItem;
        if (!alive) return;
    }
    if (taker != kNobody && GetNumsSel() >= 1) m_bDragOut = 1;
    if (taker == kNobody && m_bSelRect) StartBand(point);
    if (alive) watch.Notify();
    if (!alive) return;
    if (taker == kItem)
        SetCapture(m_hWnd);
    else
        m_pPress->DragWindow(point);
}

void CQKDialogBase::OnLButtonDown(UINT flags, CPoint point) {
    const qkui::Alive alive(*this);
    m_pPress->Begin(point);
    if (!alive) return;
    OnLbuttonClkDown(flags, point);
    if (alive) CDialog::OnLButtonDown(flags, point);
}

void CQKDialogBase::OnLButtonDblClk(UINT flags, CPoint point) {
    const qkui::Alive alive(*this);
    m_pPress->Begin(point);
    if (!alive) return;
    OnLbuttonDbClkDown(flags, point);
    if (alive) CDialog::OnLButtonDblClk(flags, point);
}

QKItemBase* CQKDialogBase::CapturedItem() {
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i)
        if (TakesPointer(m_arItems[i]) && m_arItems[i]->GetCaptrue()) return m_arItems[i];
    return nullptr;
}

void CQKDialogBase::OnMouseMove(UINT flags, CPoint point) {
    TRACKMOUSEEVENT leave = {sizeof(TRACKMOUSEEVENT), TME_LEAVE, m_hWnd, 0};
    TrackMouseEvent(&leave);
    m_pTips->PointerOver(m_bSelecting ? nullptr : m_pPress->TippedAt(point), m_hWnd, m_pDefaultFont);

    const qkui::Alive alive(*this);
    qkui::SelectionWatch watch(*this, m_arItems);
    int changed = 0;
    if (QKItemBase* captured = CapturedItem()) {
        CRect rect;
        captured->GetRect(&rect);
        changed = MoveOnItem(captured, rect, point);
        if (!alive) return;
    } else {
        // All of them: overlapping items light up together.
        for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
            QKItemBase* item = m_arItems[i];
            CRect rect;
            if (!TakesPointer(item)) continue;
            if (item->GetType() == QKUI_LISTCTRL) {
                item->GetRect(&rect);
                changed |= MoveOnList(static_cast<QKListCtrl*>(item), rect, point);
            } else if (HitRect(item, rect)) {
                changed |= MoveOnItem(item, rect, point);
            }
        }
    }

    if (m_bSelRect && m_bSelecting) {
        StretchBand(point);
        UpdateView();
    } else if (m_bDragOut && m_pPress->DragOut()) {
        if (alive) UpdateView();
    } else if (alive && changed) {
        UpdateView();
    }
    if (alive) watch.Notify();
    if (alive) CDialog::OnMouseMove(flags, point);
}

void CQKDialogBase::OnMouseLeave() {
    m_pTips->PointerOver(nullptr, m_hWnd, nullptr);
    const qkui::Alive alive(*this);
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
        QKItemBase* item = m_arItems[i];
        CRect rect;
        const bool followsPointer = item->GetType() != QKUI_VSCROLLBAR;
        if (followsPointer && TakesPointer(item) && HitRect(item, rect)) MoveLeaveItem(item, rect);
        if (!alive) return;
    }
    CDialog::OnMouseLeave();
}

void CQKDialogBase::OnLButtonUp(UINT flags, CPoint point) {
    const qkui::Alive alive(*this);
    qkui::SelectionWatch watch(*this, m_arItems);
    try {
        for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i) {
            QKItemBase* item = m_arItems[i];  // raises when a callback shrank the registry below i
            CRect rect;
            if (!TakesPointer(item)) continue;
            if (item->GetType() == QKUI_LISTCTRL) {
                item->GetRect(&rect);
                MoveUpList(static_cast<QKListCtrl*>(item), rect, point);
            } else if (HitRect(item, rect)) {
                MoveUpItem(item, rect, point);
            }
            if (!alive) return;
        }
        // Where rubber bands select, a click that was none of one leaves nothing selected.
        if (m_bSelRect) {
            if (!m_bSelecting) UnSelRcItem();
            m_rcSel.SetRectEmpty();
            UpdateView();
        }
    } catch (...) {
        if (alive) m_pPress->End();
        throw;
    }
    if (alive) m_pPress->End();
    if (alive) watch.Notify();
    if (alive) CDialog::OnLButtonUp(flags, point);
}

// The right button concerns the topmost list alone.
QKListCtrl* CQKDialogBase::TopmostList() {
    for (INT_PTR i = m_arItems.GetSize() - 1; i >= 0; --i)
        if (m_arItems[i]->GetType() == QKUI_LISTCTRL && TakesPointer(m_arItems[i]))
            return static_cast<QKListCtrl*>(m_arItems[i]);
    return nullptr;
}

void CQKDialogBase::OnRButtonUp(UINT flags, CPoint point) {
    const qkui::Alive alive(*this);
    if (QKListCtrl* list = TopmostList()) {
        CRect rect;
        list->GetRect(&rect);
        MoveRUpList(list, rect, point);
    }
    if (alive) CDialog::OnRButtonUp(flags, point);
}

void CQKDialogBase::OnRButtonDown(UINT flags, CPoint point) {
    const qkui::Alive alive(*this);
    qkui::SelectionWatch watch(*this, m_arItems);
    if (QKListCtrl* list = TopmostList()) {
        CRect rect;
        list->GetRect(&rect);
        MoveRDownList(list, rect, point);
    }
    if (alive) watch.Notify();
    if (alive) CDialog::OnRButtonDown(flags, point);
}
