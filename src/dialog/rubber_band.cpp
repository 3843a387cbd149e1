#include "dialog/rubber_band.h"

#include "dialog/display_list.h"
#include "items/draw_operations.h"

namespace qkui {

void RubberBand::Draw(Gdiplus::Graphics& graphics) const {
    constexpr Gdiplus::ARGB kFill = 0x643399FF;
    constexpr Gdiplus::ARGB kOutline = 0xFF3399FF;
    const Gdiplus::RectF band = ToRectF(rect);
    if (clip) graphics.SetClip(Gdiplus::Rect(clip->left, clip->top, clip->Width(), clip->Height()));
    const Gdiplus::SolidBrush fill{Gdiplus::Color(kFill)};
    graphics.FillRectangle(&fill, band);
    const Gdiplus::Pen outline(Gdiplus::Color(kOutline), 1.0F);
    graphics.DrawRectangle(&outline, band);
    if (clip) graphics.ResetClip();
}

void RubberBand::Record(DisplayList& list) const {
    constexpr int kEdge = 1;  // pixels that an outline may reach to either side
    const auto shown = [&](const CRect& whole) {
        CRect inside(whole);
        if (clip) inside.IntersectRect(whole, *clip);
        return inside;
    };
    list.Begin();
    list.Fills(shown(rect));
    for (const CRect& edge : {CRect(rect.left, rect.top, rect.left, rect.bottom),
                              CRect(rect.right, rect.top, rect.right, rect.bottom),
                              CRect(rect.left, rect.top, rect.right, rect.top),
                              CRect(rect.left, rect.bottom, rect.right, rect.bottom)}) {
        CRect outlined(edge);
        outlined.InflateRect(kEdge, kEdge);
        list.Begin();
        list.Touches(shown(outlined));
    }
}

}  // namespace qkui
