// What the captions of a list look like.
#include <platform/gdi.h>

#include <qkui/list/list_ctrl.h>
#include "list/list_access.h"
#include "list/memory.h"

using namespace qkui;

void QKListCtrl::SetFont(const Gdiplus::Font& font) {
    m_pFont.reset(font.Clone());
    m_state->entries->Captions().EmptyAll();
    if (!m_hParent) return;  // nothing has been measured yet
    WithinMemory([this] { m_state->entries->MeasureAnew(ListAccess::Measure(*this)); });
}

// As texts of items have it: never fully opaque.
void QKListCtrl::SetTextColor(const Gdiplus::Color& color) {
    constexpr Gdiplus::ARGB kOneAlpha = 0x01000000;
    m_crText = color.GetA() == 255 ? Gdiplus::Color(color.GetValue() - kOneAlpha) : color;
    m_state->entries->Captions().EmptyAll();
}

void QKListCtrl::SetGlowColor(const Gdiplus::Color& color) {
    m_crGlow = color;
    m_state->entries->Captions().EmptyAll();
}
