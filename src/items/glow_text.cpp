#include "items/glow_text.h"

#include <cmath>

#include <qkui/dialog/dialog_base.h>
#include "items/draw_operations.h"

namespace {

// A side of the small bitmap; nothing where that is not a number of pixels.
int Reduced(float length, float factor) {
    constexpr float kMostPixels = 16384;
    const float reduced = length / factor;
    return factor > 0 && reduced >= 1 && reduced <= kMostPixels ? static_cast<int>(reduced) : 0;
}

}  // namespace

Gdiplus::RectF qkui::GlowRect(const Gdiplus::RectF& rect) {
    return {rect.X, rect.Y, std::trunc(rect.Width), std::trunc(rect.Height)};
}

void qkui::DrawGlow(Gdiplus::Graphics& graphics, const qkui::Glow& glow, const Gdiplus::RectF& layout,
                    const Gdiplus::RectF& destination) {
    const int width = Reduced(destination.Width, glow.factor);
    const int height = Reduced(destination.Height, glow.factor);
    if (width < 1 || height < 1) return;
    Gdiplus::Bitmap small(width, height);  // as soft on every screen

    Gdiplus::FontFamily family;
    glow.font.GetFamily(&family);
    const float scale = 1 / glow.factor;
    const Gdiplus::Matrix shrink(scale, 0, 0, scale, -scale, -scale);
    const Gdiplus::Pen pen(glow.color, 1.0F);
    Gdiplus::Graphics onSmall(&small);
    onSmall.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    onSmall.SetTransform(&shrink);
    onSmall.DrawWidenedString(glow.text, -1, &family, glow.font.GetStyle(), std::trunc(glow.font.GetSize()),
                              layout, &glow.format, &pen);

    const Gdiplus::RectF whole = qkui::WholeImage(&small);
    graphics.DrawImage(&small, destination, 0, 0, whole.Width, whole.Height, Gdiplus::UnitPixel);
}

void CQKDialogBase::DrawShadowText(Gdiplus::Graphics* graphics, const CString& text,
                                   const Gdiplus::Font& font, const Gdiplus::StringFormat& format,
                                   const Gdiplus::Color& textColor, const Gdiplus::Color& glowColor,
                                   const Gdiplus::RectF& rect, const Gdiplus::PointF& origin, float factor) {
    const Gdiplus::RectF place = qkui::GlowRect(rect);
    qkui::DrawGlow(*graphics, {text, font, format, glowColor, factor},
                   {origin.X, origin.Y, rect.Width, rect.Height}, place);
    const Gdiplus::SolidBrush brush(textColor);
    graphics->DrawString(text, -1, &font, place, &format, &brush);
}
