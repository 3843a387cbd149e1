#include <qkui/items/text_button.h>

#include "items/item_access.h"
#include "items/sprite_strip.h"

QKTextButton::QKTextButton() : QKButton(QKUI_TEXTBUTTON), QKItemText(12, Gdiplus::UnitPixel) {
    GetFormat().SetAlignment(Gdiplus::StringAlignmentCenter);
    GetFormat().SetLineAlignment(Gdiplus::StringAlignmentCenter);
}

void qkui::ItemAccess::Record(const QKTextButton& button, OperationSink& sink) {
    Record(static_cast<const QKButton&>(button), sink);
    if (button.GetImage()) sink.Add(TextOf(button, ToRectF(SpriteOf(button).Place())));
}
