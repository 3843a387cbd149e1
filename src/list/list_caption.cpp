// Glowing captions of list entries, rendered once and kept in the entry.
#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>

#include "dialog/dialog_base.h"
#include "items/glow_text.h"
#include "items/pieces.h"
#include "list/list_item.h"

namespace {

// A longer text is cut, and so never found equal: it is rendered each time.
void Remember(QKListItem& entry, const CString& text) {
    const int length = std::min(text.GetLength(), QKListItem::kTextUnits - 1);
    *std::copy_n(text.GetString(), length, entry.szTextCath) = u'\0';
    delete entry.pTextImage;
    entry.pTextImage = nullptr;
}

void DrawWhole(Gdiplus::Graphics& graphics, Gdiplus::Image* image, const Gdiplus::RectF& place) {
    const Gdiplus::RectF whole = QKWholeImage(image);
    graphics.DrawImage(image, place, 0, 0, whole.Width, whole.Height, Gdiplus::UnitPixel);
}

}  // namespace

void CQKDialogBase::DrawShadowText(Gdiplus::Graphics* graphics, QKListItem* entry, const CString& text,
                                   const Gdiplus::Font& font, const Gdiplus::StringFormat& format,
                                   const Gdiplus::Color& textColor, const Gdiplus::Color& glowColor,
                                   const Gdiplus::RectF& rect, const Gdiplus::PointF& origin, float factor) {
    const Gdiplus::RectF place = QKGlowRect(rect);
    if (std::u16string_view(text.GetString()) != entry->szTextCath)
        Remember(*entry, text);
    else if (entry->pTextImage)
        return DrawWhole(*graphics, entry->pTextImage, place);

    auto caption = std::make_unique<Gdiplus::Bitmap>(static_cast<int>(place.Width),
                                                     static_cast<int>(place.Height), graphics);
    if (caption->GetLastStatus() != Gdiplus::Ok) return;  // no size: it may have one next time
    const Gdiplus::RectF inside(0, 0, place.Width, place.Height);
    {
        Gdiplus::Graphics onCaption(caption.get());
        onCaption.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        onCaption.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
        QKDrawGlow(onCaption, {text, font, format, glowColor, factor},
                   {std::trunc(origin.X), std::trunc(origin.Y), place.Width, place.Height}, inside);
        const Gdiplus::SolidBrush brush(textColor);
        onCaption.DrawString(text, -1, &font, inside, &format, &brush);
    }
    DrawWhole(*graphics, caption.get(), place);
    entry->pTextImage = caption.release();
}
