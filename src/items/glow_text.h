// Text with a soft glow: its outlines, drawn small in a second colour and enlarged again behind it.
#pragma once

#include <platform/gdiplus.h>
#include <platform/types.h>

namespace qkui {

struct Glow {
    LPCWSTR text;
    const Gdiplus::Font& font;
    const Gdiplus::StringFormat& format;
    Gdiplus::Color color;  // of the glow
    float factor;          // of the reduction, above 0; more is wider and softer
};

// Draws the glow of a text into the rectangle (left, top, width, height). The text is laid into `layout`,
// seen from that rectangle's corner. The size of the font is taken as whole pixels, whatever its unit. A
// factor that leaves no pixel draws nothing.
void DrawGlow(Gdiplus::Graphics& graphics, const Glow& glow, const Gdiplus::RectF& layout,
              const Gdiplus::RectF& destination);

// A layout rectangle as glowing texts take it: from its corner, with its size cut to whole pixels.
Gdiplus::RectF GlowRect(const Gdiplus::RectF& rect);

}  // namespace qkui
