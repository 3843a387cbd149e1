#include <qkui/items/static_text.h>

#include "items/draw_operations.h"

QKStaticText::QKStaticText() : QKItemBase(QKUI_STATICTEXT), QKItemText(9, Gdiplus::UnitPoint) {}

void QKStaticText::Compose(qkui::OperationSink& pieces) const {
    Gdiplus::RectF layout;
    GetRect(&layout);
    pieces.Add(TextPiece(layout));
}
