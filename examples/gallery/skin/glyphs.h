// The icons of the skin, drawn as paths.
#pragma once

#include "examples/gallery/skin/canvas.h"

namespace skin {

enum class Glyph {
    Close,
    Minimise,
    Play,
    Pause,
    Previous,
    Next,
    Layers,
    Background,
    Shape,
    Buttons,
    States,
    Areas,
    Texts,
    Choices,
    Images,
    Progress,
    Requests,
    Scrolling,
    Frames,
    List,
    Files,
    Web,
};

// Draws the glyph centred on (x, y) in a square of `size` pixels, in one colour.
void DrawGlyph(cairo_t* context, Glyph glyph, double x, double y, double size, Colour colour);

}  // namespace skin
