#include "items/check_box.h"

#include "items/pieces.h"

QKCheckBox::QKCheckBox() : QKCheckBox(QKUI_CHECKBOX) {}

QKCheckBox::QKCheckBox(QKUIType type) : QKButton(type), QKItemText(12, Gdiplus::UnitPixel) {}

QKCheckBox::~QKCheckBox() {
    DestroyCheckImage();
}

QKRadio::QKRadio() : QKCheckBox(QKUI_RADIO) {}

void QKCheckBox::DestroyCheckImage() {
    delete m_pCheckImage;
    m_pCheckImage = nullptr;
}

int QKCheckBox::SetImage(UINT stripId, UINT checkId, LPCWSTR type, QKBT_IMGS images, QKBT_TYPE layout) {
    return QKButton::SetImage(stripId, type, images, layout) &&
           QKItemBase::SetImage(checkId, type, &m_pCheckImage);
}

int QKCheckBox::SetImage(LPCWSTR stripPath, LPCWSTR checkPath, QKBT_IMGS images, QKBT_TYPE layout) {
    return QKButton::SetImage(stripPath, images, layout) && QKItemBase::SetImage(checkPath, &m_pCheckImage);
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

void QKCheckBox::Compose(QKPieces& pieces) const {
    QKButton::Compose(pieces);
    if (!m_pImage || !m_bCheck || !m_pCheckImage) return;
    const Cut cut = GetFrameCut();
    const Gdiplus::RectF mark = QKWholeImage(m_pCheckImage);
    const int left = cut.destination.x + (cut.source.Width() - static_cast<int>(mark.Width)) / 2;
    const int top = cut.destination.y + (cut.source.Height() - static_cast<int>(mark.Height)) / 2;
    pieces.Add(
        {m_pCheckImage, {static_cast<float>(left), static_cast<float>(top), mark.Width, mark.Height}, mark});
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

void QKCheckBox::ComposeText(QKPieces& pieces) const {
    if (!GetText()) return;
    QKTextPiece piece = TextPiece(TextLayout());
    piece.color = StateColor();
    pieces.Add(piece);
}
