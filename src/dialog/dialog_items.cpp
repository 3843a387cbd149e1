// The drawing routines of the items, one for each kind, as hosts may call them on a context of their own.
#include <qkui/dialog/dialog_base.h>
#include "items/item_access.h"

namespace {

template <class Item>
void Paint(HDC dc, const Item& item) {
    if (!item.IsShow()) return;
    Gdiplus::Graphics graphics(dc);
    qkui::OperationPainter painter(graphics);
    qkui::ItemAccess::Record(item, painter);
}

}  // namespace

void CQKDialogBase::DrawButton(HDC dc, QKButton* button) {
    switch (button->GetType()) {
        case QKUI_TEXTBUTTON:
            return Paint(dc, static_cast<const QKTextButton&>(*button));
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
            return Paint(dc, static_cast<const QKCheckBox&>(*button));
        default:
            return Paint(dc, *button);
    }
}

void CQKDialogBase::DrawCheckBoxText(HDC dc, QKCheckBox* box) {
    if (!box->IsShow()) return;
    Gdiplus::Graphics graphics(dc);
    qkui::OperationPainter painter(graphics);
    qkui::ItemAccess::RecordText(*box, painter);
}

void CQKDialogBase::DrawStaticText(HDC dc, QKStaticText* text) {
    Paint(dc, *text);
}

void CQKDialogBase::DrawImage(HDC dc, QKImage* image) {
    Paint(dc, *image);
}

void CQKDialogBase::DrawGifImage(HDC dc, QKImage* image) {
    DrawImage(dc, image);
}

void CQKDialogBase::DrawProgress(HDC dc, QKProgress* progress) {
    Paint(dc, *progress);
}

void CQKDialogBase::DrawVScroll(HDC dc, QKVScrollBar* bar) {
    Paint(dc, *bar);
}
