#include "dialog/tab_focus.h"

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

QKItemBase* TabFocus::Item(const CArray<QKItemBase*>& items) const {
    for (INT_PTR i = 0; item_ && i < items.GetSize(); ++i)
        if (items[i] == item_) return CanHave(*item_) ? item_ : nullptr;
    return nullptr;
}

QKItemBase* TabFocus::Next(const CArray<QKItemBase*>& items, bool backwards) const {
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

CRect TabFocus::Outside(const CRect& item, const CRect& client) {
    constexpr int kReach = kGap + kLine + kHalo;
    CRect outside(item);
    outside.InflateRect(kReach, kReach);
    CRect visible;
    visible.IntersectRect(outside, client);
    return visible;
}

void TabFocus::Draw(Gdiplus::Graphics& graphics, const CRect& outside) const {
    FillSides(graphics, Gdiplus::Color(kHaloColor), outside, kHalo);
    CRect line(outside);
    line.DeflateRect(kHalo, kHalo);
    if (line.Width() > 2 * kLine && line.Height() > 2 * kLine) FillSides(graphics, color_, line, kLine);
}

}  // namespace qkui
