// The gallery's looks for items of the library that bring none of their own.
#pragma once

#include <QKUILib.h>

#include "examples/gallery/ink.h"
#include "examples/gallery/push_button.h"

namespace gallery {

// Font and colour of a style.
void Dress(QKItemText& text, TextStyle style);
// One line in the middle of a place, cut with an ellipsis.
void Dress(QKStaticText& label, TextStyle style, const CRect& place, const CString& text,
           Align align = Align::Left);
// A pill of 96 pixels with a caption and a hand, its top left corner at a place.
void Dress(TextButton& button, CPoint place, const CString& caption);

// A sunken field beneath other items. Painted for its size, so that its edge stays sharp.
class Well : public QKImage {
  public:
    void PlaceAt(const CRect& place);
};

// A part of the shell's own background: what moves beneath it seems to be cut off at its edge.
class BackgroundPiece : public QKImage {
  public:
    void PlaceAt(const CRect& place);
};

}  // namespace gallery
