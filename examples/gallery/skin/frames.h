// Nine-part frames, for what lies around the entries of a list.
#pragma once

#include <array>

#include "examples/gallery/skin/canvas.h"

namespace skin {

enum class FrameLook { Hover, Press, Focus };

// Row by row from the top left: corners, edges, centre. All have an alpha.
std::array<Canvas, 9> FrameParts(FrameLook look);

}  // namespace skin
