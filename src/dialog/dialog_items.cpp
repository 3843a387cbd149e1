// The drawing routines of the items, one for each kind, as hosts may call them on a context of their own.
#include <qkui/dialog/dialog_base.h>
#include <qkui/items/check_box.h>
#include <qkui/items/image.h>
#include <qkui/items/progress.h>
#include <qkui/items/scroll_bar.h>
#include <qkui/items/static_text.h>
#include <qkui/items/text_button.h>
#include "items/draw_operations.h"

namespace {

template <class Compose>
void Paint(HDC dc, const QKItemBase* item, Compose compose) {
    if (!item->IsShow()) return;
    Gdiplus::Graphics graphics(dc);
    qkui::OperationPainter painter(graphics);
    compose(painter);
}

}  // namespace

void CQKDialogBase::DrawButton(HDC dc, QKButton* button) {
    Paint(dc, button, [button](qkui::OperationSink& pieces) {
        switch (button->GetType()) {
            case QKUI_TEXTBUTTON:
                return static_cast<QKTextButton*>(button)->Compose(pieces);
            case QKUI_CHECKBOX:
            case QKUI_RADIO:
                return static_cast<QKCheckBox*>(button)->Compose(pieces);
            default:
                return button->Compose(pieces);
        }
    });
}

void CQKDialogBase::DrawStaticText(HDC dc, QKStaticText* text) {
    Paint(dc, text, [text](qkui::OperationSink& pieces) { text->Compose(pieces); });
}

void CQKDialogBase::DrawCheckBoxText(HDC dc, QKCheckBox* box) {
    Paint(dc, box, [box](qkui::OperationSink& pieces) { box->ComposeText(pieces); });
}

void CQKDialogBase::DrawImage(HDC dc, QKImage* image) {
    Paint(dc, image, [image](qkui::OperationSink& pieces) { image->Compose(pieces); });
}

void CQKDialogBase::DrawGifImage(HDC dc, QKImage* image) {
    DrawImage(dc, image);
}

void CQKDialogBase::DrawProgress(HDC dc, QKProgress* progress) {
    Paint(dc, progress, [progress](qkui::OperationSink& pieces) { progress->Compose(pieces); });
}

void CQKDialogBase::DrawVScroll(HDC dc, QKVScrollBar* bar) {
    Paint(dc, bar, [bar](qkui::OperationSink& pieces) { bar->Compose(pieces); });
}
