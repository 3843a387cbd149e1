// The dialog's drawing routine for everything that is a button.
#include "dialog/dialog_base.h"
#include "items/button.h"

void CQKDialogBase::DrawButton(HDC dc, QKButton* button) {
    const QKButton::Cut cut = button->GetFrameCut();
    if (cut.source.IsRectEmpty()) return;
    Gdiplus::Graphics graphics(dc);
    graphics.DrawImage(
        button->GetImage(),
        Gdiplus::Rect(cut.destination.x, cut.destination.y, cut.source.Width(), cut.source.Height()),
        cut.source.left, cut.source.top, cut.source.Width(), cut.source.Height(), Gdiplus::UnitPixel);
}
