#include "dialog/press.h"

#include <qkui/dialog/dialog_base.h>
#include "dialog/alive.h"
#include "dialog/item_tips.h"
#include "dialog/tab_focus.h"
#include "items/arithmetic.h"
#include "items/item_access.h"

namespace qkui {

// Of all captured items only a scroll bar moves. The
// host's function may end the dialog or the bar: neither is touched after it.
int Press::DragThumb(QKItemBase* item, CPoint point) {
    POINT& pressedAt = ItemAccess::PressedAt(*item);
    if (item->GetType() != QKUI_VSCROLLBAR || item->GetStatus() != QKItemBase::QK_MOUSEDOWN ||
        point.y == pressedAt.y)
        return 0;
    auto* bar = static_cast<QKVScrollBar*>(item);
    bar->SetBarPos(Sum(bar->GetBarPos(), Difference(point.y, pressedAt.y)));
    pressedAt = point;
    dialog_.FollowThumb(bar);
    const Alive dragged(dialog_, item);
    const ItemAccess::Dragged calls = ItemAccess::CallsOf(*bar);
    if (calls.position) calls.position(bar->GetBarPos(), calls.argument);
    if (dragged && calls.scrolled) (*calls.scrolled)(bar->GetScrollPos());
    return 1;
}

// Of one group at most one radio button stays checked by clicks.
void Press::UncheckOthers(const QKItemBase* radio) {
    const Alive alive(dialog_);
    const unsigned int group = static_cast<const QKRadio*>(radio)->GetGroupID();
    for (INT_PTR i = 0; i < dialog_.m_arItems.GetSize(); ++i) {
        if (dialog_.m_arItems[i] == radio || dialog_.m_arItems[i]->GetType() != QKUI_RADIO) continue;
        auto* other = static_cast<QKRadio*>(dialog_.m_arItems[i]);
        if (other->GetGroupID() != group || !other->GetCheck()) continue;
        other->SetCheck(0);
        if (dialog_.m_nLayStyle == LAY_OPAQUE) continue;  // the clicked one refreshes everything
        CRect rect;
        other->GetRect(&rect);
        dialog_.UpdateViewRect(rect);
        if (!alive) return;
    }
}

// What a completed click does to the item's check; true when it changed. The item may be gone afterwards.
bool Press::ToggleCheck(QKItemBase* item) {
    if (item->GetType() == QKUI_CHECKBOX) {
        auto* box = static_cast<QKCheckBox*>(item);
        box->SetCheck(!box->GetCheck());
        return true;
    }
    if (item->GetType() != QKUI_RADIO || static_cast<QKRadio*>(item)->GetCheck()) return false;
    const Alive alive(dialog_, item);
    UncheckOthers(item);
    if (alive) static_cast<QKRadio*>(item)->SetCheck(1);
    return true;
}

bool Press::Complete(QKItemBase* item, ClickedBy by, bool& changed) {
    const Alive dialog(dialog_);
    const Alive clicked(dialog_, item);
    changed = ToggleCheck(item);
    if (clicked && (by == ClickedBy::Key || item == dialog_.m_pDownItem)) ItemAccess::CallClicked(*item);
    if (!dialog || !IsWindow(dialog_.m_hWnd)) return false;
    if (clicked) return true;
    dialog_.m_bMinimized = 0;  // this was the release that MinQKDlg waited for
    return false;
}

void Press::DragWindow(CPoint point) {
    if (dialog_.m_bMove)
        dialog_.SendMessage(WM_NCLBUTTONDOWN, HTCAPTION, MAKELPARAM(point.x, point.y));
    else
        SetCapture(dialog_.m_hWnd);
}

void Press::Begin(CPoint point) {
    dialog_.m_pTips->Hide();
    dialog_.m_pFocus->PressedAt(point);
}

const QKItemBase* Press::TippedAt(CPoint point) const {
    for (INT_PTR i = dialog_.m_arItems.GetSize() - 1; i >= 0; --i) {
        const QKItemBase* item = dialog_.m_arItems[i];
        if (!item->IsShow() || item->GetType() == QKUI_LISTCTRL) continue;
        CRect rect;
        const bool takesPointer = CQKDialogBase::HitRect(item, rect);
        if (!takesPointer) item->GetRect(&rect);
        if (rect.PtInRect(point) && (takesPointer || !item->GetTooltip().IsEmpty())) return item;
    }
    return nullptr;
}

// The release that drops the files never comes here: the press that they were dragged by is over then.
int Press::DragOut() {
    const Alive alive(dialog_);
    const int moved = dialog_.DoDropSource();
    if (!alive || GetKeyState(VK_LBUTTON) < 0) return moved;
    if (QKItemBase* pressed = dialog_.CapturedItem()) {
        CRect rect;
        pressed->GetRect(&rect);
        dialog_.MoveLeaveItem(pressed, rect);
    }
    if (alive) End();
    return moved;
}

void Press::End() {
    dialog_.m_bSelecting = 0;
    dialog_.m_bDragOut = 0;
    for (QKItemBase* item : dialog_.m_arItems)
        item->SetCaptrue(0);
    dialog_.m_pDownItem = nullptr;
    ReleaseCapture();  // last: it ends a move of the window, and the host hears of that
}

void Press::ClickByKey(QKItemBase* item) {
    const Alive dialog(dialog_);
    bool changed = false;
    if (!Complete(item, ClickedBy::Key, changed)) return;
    dialog_.m_bMinimized = 0;
    CRect rect;
    if (changed && CQKDialogBase::HitRect(item, rect)) dialog_.UpdateViewRect(rect);
}

}  // namespace qkui
