#include <qkui/items/static_text.h>

#include "items/pieces.h"

QKStaticText::QKStaticText() : QKItemBase(QKUI_STATICTEXT), QKItemText(9, Gdiplus::UnitPoint) {}

void QKStaticText::Compose(QKPieces& pieces) const {
    Gdiplus::RectF layout;
    GetRect(&layout);
    pieces.Add(TextPiece(layout));
}
