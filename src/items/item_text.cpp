#include <qkui/items/item_text.h>

#include <new>

#include "items/item_access.h"

QKItemText::QKItemText(float fontSize, Gdiplus::Unit unit)
    : m_pFont(std::make_shared<Gdiplus::Font>(u"宋体", fontSize, Gdiplus::FontStyleRegular, unit)) {}

void QKItemText::SetText(LPCWSTR text) {
    m_bHasText = text != nullptr;
    try {
        m_strText = text;
    } catch (const std::bad_alloc&) {
        m_strText.Empty();
        m_bHasText = false;
    }
}

void QKItemText::ReleaseBuf() {
    SetText(nullptr);
}

void QKItemText::SetFont(const Gdiplus::Font& font) {
    m_pFont.reset(font.Clone());
    m_bOwnFont = true;
}

void QKItemText::TakeDefaultFont(const std::shared_ptr<Gdiplus::Font>& font) {
    if (!m_bOwnFont) m_pFont = font;
}

// Text never goes onto a per-pixel surface fully opaque; hosts compare with the value that they read back.
Gdiplus::Color QKItemText::WithoutFullAlpha(const Gdiplus::Color& color) {
    return color.GetA() == 255 ? Gdiplus::Color(254, color.GetR(), color.GetG(), color.GetB()) : color;
}

void QKItemText::SetTextColor(const Gdiplus::Color& color) {
    m_crText = WithoutFullAlpha(color);
}

void QKItemText::SetTextFormat(Gdiplus::StringAlignment alignment) {
    m_format.SetAlignment(alignment);
}

qkui::TextOperation qkui::TextOf(const QKItemText& item, const Gdiplus::RectF& layout) {
    return {item.GetText(), item.GetTextLen(), item.GetFont(),
            layout,         &item.GetFormat(), item.GetTextColor()};
}

void qkui::GiveDefaultFont(QKItemBase& item, const std::shared_ptr<Gdiplus::Font>& font) {
    if (!font) return;
    switch (item.GetType()) {
        case QKUI_STATICTEXT:
            return static_cast<QKStaticText&>(item).TakeDefaultFont(font);
        case QKUI_TEXTBUTTON:
            return static_cast<QKTextButton&>(item).TakeDefaultFont(font);
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
            return static_cast<QKCheckBox&>(item).TakeDefaultFont(font);
        default:
            return;
    }
}
