#include <qkui/items/check_box.h>

#include <utility>

#include "items/arithmetic.h"
#include "items/draw_operations.h"

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

void QKCheckBox::Compose(qkui::OperationSink& pieces) const {
    QKButton::Compose(pieces);
    if (!m_pImage || !m_bCheck || !m_pCheckImage) return;
    const Cut cut = GetFrameCut();
    const Gdiplus::RectF mark = qkui::WholeImage(m_pCheckImage.get());
    const int left =
        qkui::Sum(cut.destination.x, qkui::Difference(cut.source.Width(), static_cast<int>(mark.Width)) / 2);
    const int top = qkui::Sum(cut.destination.y,
                              qkui::Difference(cut.source.Height(), static_cast<int>(mark.Height)) / 2);
    pieces.Add({m_pCheckImage.get(),
                {static_cast<float>(left), static_cast<float>(top), mark.Width, mark.Height},
                mark});
}

Gdiplus::RectF QKCheckBox::TextLayout() const {
    Gdiplus::RectF layout;
    GetRect(&layout);
    if (!m_pImage) return layout;
    layout.X += static_cast<float>(m_pImage->GetWidth());
    // Measured without the item's format, whatever that makes of the text.
    const float text = Gdiplus::GetTextExtent(GetText(), GetTextLen(), GetFont(), layout, nullptr).box.Height;
    CRect frame;
    GetButtonRect(frame);
    layout.Y += (static_cast<float>(frame.Height()) - text) * 0.5F + static_cast<float>(m_nTextTop);
    layout.X += static_cast<float>(m_nTextLeft);
    return layout;
}

void QKCheckBox::ComposeText(qkui::OperationSink& pieces) const {
    if (!GetText()) return;
    qkui::TextOperation piece = TextPiece(TextLayout());
    piece.color = StateColor();
    pieces.Add(piece);
}
