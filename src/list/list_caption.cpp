#include "list/list_caption.h"

#include <cmath>
#include <memory>
#include <utility>

#include <qkui/dialog/dialog_base.h>
#include "items/arithmetic.h"
#include "items/draw_operations.h"
#include "items/glow_text.h"
#include "list/list_text.h"

std::unique_ptr<Gdiplus::Image> QKRenderCaption(std::u16string_view text, const QKCaptionLook& look,
                                                const SIZE& size) {
    const CString whole(text.data(), static_cast<int>(text.size()));
    const int scale = GetScreenScale();
    auto caption = std::make_unique<Gdiplus::Bitmap>(size.cx * scale, size.cy * scale);
    caption->SetScale(scale);
    if (caption->GetLastStatus() != Gdiplus::Ok) return nullptr;  // no size: it may have one next time
    const Gdiplus::RectF inside(0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy));
    Gdiplus::Graphics graphics(caption.get());
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    qkui::DrawGlow(graphics, {whole, look.font, look.format, look.glow, look.factor},
                   {std::trunc(look.origin.X), std::trunc(look.origin.Y), inside.Width, inside.Height},
                   inside);
    const Gdiplus::SolidBrush brush(look.text);
    graphics.DrawString(whole, -1, &look.font, inside, &look.format, &brush);
    return caption;
}

void CQKDialogBase::DrawShadowText(Gdiplus::Graphics* graphics, QKListItem* entry, const CString& text,
                                   const Gdiplus::Font& font, const Gdiplus::StringFormat& format,
                                   const Gdiplus::Color& textColor, const Gdiplus::Color& glowColor,
                                   const Gdiplus::RectF& rect, const Gdiplus::PointF& origin, float factor) {
    const Gdiplus::RectF place = qkui::GlowRect(rect);
    const SIZE size = {qkui::Whole(place.Width), qkui::Whole(place.Height)};
    if (!entry->pTextImage || text.View() != QKTextOf(entry->szTextCath)) {
        delete std::exchange(entry->pTextImage, nullptr);
        QKSetText(entry->szTextCath, text.View());  // a longer text is cut, and so never found equal
        entry->pTextImage =
            QKRenderCaption(text.View(), {font, format, textColor, glowColor, origin, factor}, size)
                .release();
    }
    Gdiplus::Image* const caption = entry->pTextImage;
    if (!caption) return;
    qkui::OperationPainter painter(*graphics);
    painter.Add(qkui::ImageOperation{caption, place, qkui::WholeImage(caption)});
}
