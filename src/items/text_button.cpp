#include <qkui/items/text_button.h>

#include "items/draw_operations.h"

QKTextButton::QKTextButton() : QKButton(QKUI_TEXTBUTTON), QKItemText(12, Gdiplus::UnitPixel) {
    GetFormat().SetAlignment(Gdiplus::StringAlignmentCenter);
    GetFormat().SetLineAlignment(Gdiplus::StringAlignmentCenter);
}

void QKTextButton::Compose(qkui::OperationSink& pieces) const {
    QKButton::Compose(pieces);
    const Cut cut = GetFrameCut();
    if (m_pImage) pieces.Add(TextPiece(qkui::ToRectF(CRect(cut.destination, cut.source.Size()))));
}
