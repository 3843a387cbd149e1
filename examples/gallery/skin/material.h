// The one material that all controls are made of: how a raised, lit, pressed, active or disabled body looks.
#pragma once

#include "examples/gallery/skin/canvas.h"
#include "examples/gallery/skin/glyphs.h"
#include "examples/gallery/skin/strips.h"

namespace skin {

struct Material {
    Colour top;
    Colour bottom;
    Colour rim;        // hairline outside the body
    Colour edge;       // light along the upper edge, inside
    Colour glow;       // around the body; alpha 0 for none
    Colour shade;      // inner shadow; alpha 0 for none
    double gloss = 0;  // strength of the reflection on the upper half
};

Material MaterialOf(State state);

// A closed body. The outline may be asked for smaller by a distance, for hairlines inside it.
struct Body {
    Box box;
    double radius;

    Outline Inset(double by) const { return RoundedBox(box.Inset(by), radius - by); }
};

void PaintBody(Canvas& canvas, const Body& body, const Material& material);
// A small lamp, lit or dark.
void PaintLamp(Canvas& canvas, double x, double y, double radius, State state);
// A glyph that stands a hair above the body.
void PaintGlyph(Canvas& canvas, Glyph glyph, double x, double y, double size, State state);

}  // namespace skin
