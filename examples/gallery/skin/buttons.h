// Every button of the skin, frame by frame.
#pragma once

#include "examples/gallery/skin/glyphs.h"
#include "examples/gallery/skin/strips.h"

namespace skin {

enum class Lamp { None, Left };

FramePainter PillButton(Lamp lamp);
FramePainter WindowButton(Glyph glyph);
FramePainter RoundButton(Glyph glyph);
FramePainter PlayButton();
FramePainter Tab(Glyph glyph);

}  // namespace skin
