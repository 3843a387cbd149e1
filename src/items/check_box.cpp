#include <qkui/items/check_box.h>

#include <utility>

#include "items/arithmetic.h"
#include "items/item_access.h"
#include "items/sprite_strip.h"

QKCheckBox::QKCheckBox() : QKCheckBox(QKUI_CHECKBOX) {}

QKCheckBox::QKCheckBox(QKUIType type) : QKButton(type), QKItemText(12, Gdiplus::UnitPixel) {}

QKRadio::QKRadio() : QKCheckBox(QKUI_RADIO) {}

int QKCheckBox::SetImage(UINT stripId, UINT checkId, LPCWSTR type, QKBT_IMGS images, QKBT_TYPE layout) {
    if (!QKButton::SetImage(stripId, type, images, layout)) return 0;
    std::shared_ptr<Gdiplus::Image> loaded = LoadShared(checkId, type);
    if (!loaded) return 0;  // the one before stays
    m_pCheckImage = std::move(loaded);
    return 1;
}

int QKCheckBox::SetImage(LPCWSTR stripPath, LPCWSTR checkPath, QKBT_IMGS images, QKBT_TYPE layout) {
    if (!QKButton::SetImage(stripPath, images, layout)) return 0;
    m_pCheckImage = LoadShared(checkPath);
    return 1;
}

Gdiplus::Color QKCheckBox::StateColor() const {
    if (m_nStatus == QK_MOUSEON && m_crTextOver.GetA() != 0) return m_crTextOver;
    if (m_nStatus == QK_MOUSEDOWN && m_crTextDown.GetA() != 0) return m_crTextDown;
    return GetTextColor();
}

Gdiplus::Color& QKCheckBox::GetTextStateColor() {
    m_crTextState = StateColor();
    return m_crTextState;
}

// Without the item's format, whatever that makes of the text. Every frame asks.
float QKCheckBox::TextHeight(const Gdiplus::RectF& layout) const {
    const Gdiplus::Font* const font = GetFont();
    const std::u16string_view text(GetText(), static_cast<std::size_t>(GetTextLen()));
    const std::uint64_t revision = font ? font->GetRevision() : 0;
    if (m_measured.font != revision || m_measured.width != layout.Width ||
        m_measured.height != layout.Height || m_measured.text.View() != text)
        m_measured = {GetText(), revision, layout.Width, layout.Height,
                      Gdiplus::GetTextExtent(GetText(), GetTextLen(), font, layout, nullptr).box.Height};
    return m_measured.textHeight;
}

void qkui::ItemAccess::Record(const QKCheckBox& box, OperationSink& sink) {
    Record(static_cast<const QKButton&>(box), sink);
    Gdiplus::Image* const check = box.m_pCheckImage.get();
    if (!box.GetImage() || !box.GetCheck() || !check) return;
    const CRect frame = SpriteOf(box).Place();
    const Gdiplus::RectF mark = WholeImage(check);
    const int left = Sum(frame.left, Difference(frame.Width(), static_cast<int>(mark.Width)) / 2);
    const int top = Sum(frame.top, Difference(frame.Height(), static_cast<int>(mark.Height)) / 2);
    sink.Add({check, {static_cast<float>(left), static_cast<float>(top), mark.Width, mark.Height}, mark});
}

// The text starts right of the whole strip, not of one frame of it, and is centred on the frame's height.
void qkui::ItemAccess::RecordText(const QKCheckBox& box, OperationSink& sink) {
    if (!box.GetText()) return;
    Gdiplus::RectF layout;
    box.GetRect(&layout);
    if (const Gdiplus::Image* const strip = box.GetImage()) {
        layout.X += static_cast<float>(strip->GetWidth());
        CRect frame;
        box.GetButtonRect(frame);
        layout.Y += (static_cast<float>(frame.Height()) - box.TextHeight(layout)) * 0.5F +
                    static_cast<float>(box.GetTextInerTop());
        layout.X += static_cast<float>(box.GetTextInerLeft());
    }
    TextOperation text = TextOf(box, layout);
    text.color = box.StateColor();
    sink.Add(text);
}
