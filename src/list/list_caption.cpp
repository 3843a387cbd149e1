#include "list/list_caption.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>

#include "dialog/dialog_base.h"
#include "items/glow_text.h"
#include "items/pieces.h"

namespace {

// A longer text is cut, and so never found equal: it is rendered each time.
void Remember(QKListItem& entry, std::u16string_view text) {
    const std::u16string_view kept = text.substr(0, QKListItem::kTextUnits - 1);
    *std::copy(kept.begin(), kept.end(), entry.szTextCath) = u'\0';
}

}  // namespace

bool QKHasCaption(const QKListItem& entry, LPCWSTR text) {
    return entry.pTextImage && std::u16string_view(text) == entry.szTextCath;
}

Gdiplus::Image* QKCaption(QKListItem& entry, LPCWSTR text, const QKCaptionLook& look, const SIZE& size) {
    if (QKHasCaption(entry, text)) return entry.pTextImage;
    delete std::exchange(entry.pTextImage, nullptr);
    Remember(entry, text);

    auto caption = std::make_unique<Gdiplus::Bitmap>(size.cx, size.cy);
    if (caption->GetLastStatus() != Gdiplus::Ok) return nullptr;  // no size: it may have one next time
    const Gdiplus::RectF inside(0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy));
    Gdiplus::Graphics graphics(caption.get());
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    QKDrawGlow(graphics, {text, look.font, look.format, look.glow, look.factor},
               {std::trunc(look.origin.X), std::trunc(look.origin.Y), inside.Width, inside.Height}, inside);
    const Gdiplus::SolidBrush brush(look.text);
    graphics.DrawString(text, -1, &look.font, inside, &look.format, &brush);
    entry.pTextImage = caption.release();
    return entry.pTextImage;
}

void CQKDialogBase::DrawShadowText(Gdiplus::Graphics* graphics, QKListItem* entry, const CString& text,
                                   const Gdiplus::Font& font, const Gdiplus::StringFormat& format,
                                   const Gdiplus::Color& textColor, const Gdiplus::Color& glowColor,
                                   const Gdiplus::RectF& rect, const Gdiplus::PointF& origin, float factor) {
    const Gdiplus::RectF place = QKGlowRect(rect);
    const SIZE size = {static_cast<int>(place.Width), static_cast<int>(place.Height)};
    Gdiplus::Image* caption =
        QKCaption(*entry, text, {font, format, textColor, glowColor, origin, factor}, size);
    if (!caption) return;
    QKPiecePainter painter(*graphics);
    painter.Add(QKImagePiece{caption, place, QKWholeImage(caption)});
}
