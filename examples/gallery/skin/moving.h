// Pictures that move, frame by frame.
#pragma once

#include <vector>

#include "examples/gallery/skin/canvas.h"

namespace skin {

// What a frame leaves behind when the next one comes.
enum class After { Stays, Restored };

struct MovingFrame {
    Canvas drawn;  // as large as the picture; clear where what was there before stays
    int delay;     // hundredths of a second
    After after;
};

// What soft edges are mixed with where a picture knows only yes and no: the colour of the panes.
inline constexpr Colour kPaneColour = Rgb(0x100f2c);

std::vector<MovingFrame> Spinner();
std::vector<MovingFrame> Comet();

}  // namespace skin
