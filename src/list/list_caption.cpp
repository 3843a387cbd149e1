#include "list/list_caption.h"

#include <cmath>
#include <memory>
#include <utility>

#include <qkui/dialog/dialog_base.h>
#include "items/arithmetic.h"
#include "items/draw_operations.h"
#include "items/glow_text.h"
#include "list/list_text.h"

using namespace qkui;

std::unique_ptr<Gdiplus::Image> qkui::RenderCaption(std::u16string_view text, const CaptionLook& look,
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
    DrawGlow(graphics, {whole, look.font, look.format, look.glow, look.factor},
             {std::trunc(look.origin.X), std::trunc(look.origin.Y), inside.Width, inside.Height}, inside);
    const Gdiplus::SolidBrush brush(look.text);
    graphics.DrawString(whole, -1, &look.font, inside, &look.format, &brush);
    return caption;
}

void CQKDialogBase::DrawShadowText(Gdiplus::Graphics* graphics, QKListItem* entry, const CString& text,
                                   const Gdiplus::Font& font, const Gdiplus::StringFormat& format,
                                   const Gdiplus::Color& textColor, const Gdiplus::Color& glowColor,
                                   const Gdiplus::RectF& rect, const Gdiplus::PointF& origin, float factor) {
    const Gdiplus::RectF place = GlowRect(rect);
    const SIZE size = {Whole(place.Width), Whole(place.Height)};
    if (!entry->pTextImage || text.View() != TextOf(entry->szTextCath)) {
        delete std::exchange(entry->pTextImage, nullptr);
        CopyText(entry->szTextCath, text.View());  // a longer text is cut, and so never found equal
        entry->pTextImage =
            RenderCaption(text.View(), {font, format, textColor, glowColor, origin, factor}, size).release();
    }
    Gdiplus::Image* const caption = entry->pTextImage;
    if (!caption) return;
    OperationPainter painter(*graphics);
    painter.Add(ImageOperation{caption, place, WholeImage(caption)});
}
