#include <qkui/items/static_text.h>

#include "items/item_access.h"

QKStaticText::QKStaticText() : QKItemBase(QKUI_STATICTEXT), QKItemText(9, Gdiplus::UnitPoint) {}

void qkui::ItemAccess::Record(const QKStaticText& text, OperationSink& sink) {
    Gdiplus::RectF layout;
    text.GetRect(&layout);
    sink.Add(TextOf(text, layout));
}
