// What the gallery writes and draws with: a few text styles, and the colours of the skin.
#pragma once

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "examples/gallery/skin/palette.h"

namespace gallery {

enum class TextStyle {
    Heading,  // of a page
    Title,    // of a card or a column
    Body,
    Note,    // small, dim
    Button,  // on buttons and tabs
};
enum class Align { Left, Centre, Right };

Gdiplus::Color Tint(skin::Colour colour);
const Gdiplus::Font& FontOf(TextStyle style);
skin::Colour ColourOf(TextStyle style);
Gdiplus::StringAlignment ToAlignment(Align align);

// A disc around the middle of a pixel.
void FillDot(Gdiplus::Graphics& graphics, int x, int y, float radius, skin::Colour colour);
// A sunken field for samples.
void PaintWell(Gdiplus::Graphics& graphics, const CRect& place);

// Draws onto one device context for the length of a paint. Coordinates are client pixels.
class Ink {
  public:
    explicit Ink(HDC context);

    HDC Context() const { return context_; }
    Gdiplus::Graphics& Graphics() { return graphics_; }

    // In the style's own colour, wrapped and clipped to the rectangle; a single line is centred in its height
    // when `middle` is set.
    void Text(TextStyle style, const CRect& place, const CString& text, Align align = Align::Left);
    void Text(TextStyle style, const CRect& place, const CString& text, Align align, skin::Colour colour);
    // One line, in the middle of a rectangle's height.
    void Label(TextStyle style, const CRect& place, const CString& text, Align align = Align::Centre);
    void Label(TextStyle style, const CRect& place, const CString& text, Align align, skin::Colour colour);

    void Fill(const CRect& place, skin::Colour colour);
    // A line of one pixel along the inside of the rectangle's edge.
    void Frame(const CRect& place, skin::Colour colour);
    void Well(const CRect& place) { PaintWell(graphics_, place); }
    void Dot(int x, int y, float radius, skin::Colour colour) { FillDot(graphics_, x, y, radius, colour); }

  private:
    void Write(TextStyle style, const CRect& place, const CString& text, const Gdiplus::StringFormat& format,
               skin::Colour colour);

    HDC context_;
    Gdiplus::Graphics graphics_;
};

}  // namespace gallery
