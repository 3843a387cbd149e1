#include "dialog/tab_focus.h"

#include "dialog/alive.h"
#include "dialog/press.h"

namespace qkui {

namespace {

// A line of white around two of the colour, so that one of them shows on any background.
constexpr int kHalo = 1;
constexpr int kLine = 2;
constexpr int kGap = 1;  // to the item
constexpr Gdiplus::ARGB kHaloColor = 0xFFFFFFFF;

void FillSides(Gdiplus::Graphics& graphics, const Gdiplus::Color& color, const CRect& outside,
               int thickness) {
    const Gdiplus::SolidBrush brush(color);
    const auto [left, top, right, bottom] = static_cast<const RECT&>(outside);
    const int height = bottom - top - 2 * thickness;
    graphics.FillRectangle(&brush, left, top, right - left, thickness);
    graphics.FillRectangle(&brush, left, bottom - thickness, right - left, thickness);
    graphics.FillRectangle(&brush, left, top + thickness, thickness, height);
    graphics.FillRectangle(&brush, right - thickness, top + thickness, thickness, height);
}

// Where the frame of an item with this rectangle lies, as far as the client area reaches.
CRect Outside(const CRect& item, const CRect& client) {
    constexpr int kReach = kGap + kLine + kHalo;
    CRect outside(item);
    outside.InflateRect(kReach, kReach);
    CRect visible;
    visible.IntersectRect(outside, client);
    return visible;
}

}  // namespace

bool TabFocus::CanHave(const QKItemBase& item) {
    switch (item.GetType()) {
        case QKUI_BUTTON:
        case QKUI_TEXTBUTTON:
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
            return item.IsShow() && item.GetEnable() && item.GetTabStop();
        default:
            return false;
    }
}

QKItemBase* TabFocus::Item() const {
    const CArray<QKItemBase*>& items = dialog_.m_arItems;
    for (INT_PTR i = 0; item_ && i < items.GetSize(); ++i)
        if (items[i] == item_) return CanHave(*item_) ? item_ : nullptr;
    return nullptr;
}

QKItemBase* TabFocus::Next(bool backwards) const {
    const CArray<QKItemBase*>& items = dialog_.m_arItems;
    const INT_PTR count = items.GetSize();
    INT_PTR at = backwards ? count : -1;  // nobody: before the first, or behind the last
    for (INT_PTR i = 0; i < count; ++i)
        if (items[i] == item_) at = i;
    for (INT_PTR step = 0; step < count; ++step) {
        at += backwards ? -1 : 1;
        if (at < 0) at = count - 1;
        if (at >= count) at = 0;
        if (CanHave(*items[at])) return items[at];
    }
    return nullptr;
}

void TabFocus::Draw(Gdiplus::Graphics& graphics, const CRect& frame) const {
    FillSides(graphics, Gdiplus::Color(kHaloColor), frame, kHalo);
    CRect line(frame);
    line.DeflateRect(kHalo, kHalo);
    if (line.Width() > 2 * kLine && line.Height() > 2 * kLine) FillSides(graphics, color_, line, kLine);
}

CRect TabFocus::Frame() const {
    const QKItemBase* item = shown_ ? Item() : nullptr;
    CRect rect;
    if (!item || !IsWindow(dialog_.m_hWnd) || !CQKDialogBase::HitRect(item, rect)) return {};
    CRect client;
    dialog_.GetClientRect(client);
    return Outside(rect, client);
}

void TabFocus::Show(QKItemBase* item, bool shown) {
    const CRect before = Frame();
    Set(item, shown);
    const CRect after = Frame();
    if (before == after) return;
    CRect both;
    both.UnionRect(before, after);
    dialog_.UpdateViewRect(both);
}

void TabFocus::PressedAt(CPoint point) {
    if (!enabled_) return;
    QKItemBase* pressed = Item();
    for (QKItemBase* item : dialog_.m_arItems) {
        CRect rect;
        if (CanHave(*item) && CQKDialogBase::HitRect(item, rect) && rect.PtInRect(point)) pressed = item;
    }
    Show(pressed, false);
}

bool TabFocus::TakeKey(const MSG& message) {
    constexpr LPARAM kRepeated = LPARAM{1} << 30;
    if (!enabled_ || message.message != WM_KEYDOWN || message.hwnd != dialog_.m_hWnd) return false;
    if (message.wParam == VK_TAB && GetKeyState(VK_CONTROL) >= 0) {
        QKItemBase* const next = Next(GetKeyState(VK_SHIFT) < 0);
        if (next) Show(next, true);
        return next != nullptr;
    }
    QKItemBase* const item = shown_ ? Item() : nullptr;
    if (!item || (message.wParam != VK_SPACE && message.wParam != VK_RETURN)) return false;
    if ((message.lParam & kRepeated) == 0) dialog_.m_pPress->ClickByKey(item);
    return true;
}

}  // namespace qkui

void CQKDialogBase::SetTabKeys(int enable) {
    m_pFocus->Enable(enable != 0);
    if (!enable) m_pFocus->Show(nullptr, false);
}

int CQKDialogBase::SetFocusItem(QKItemBase* item) {
    if (item && !(GetQKItem(item) && qkui::TabFocus::CanHave(*item))) return 0;
    m_pFocus->Show(item, true);
    return 1;
}

QKItemBase* CQKDialogBase::GetFocusItem() {
    return m_pFocus->Item();
}

void CQKDialogBase::SetFocusColor(const Gdiplus::Color& color) {
    m_pFocus->SetColor(color);
}
