// Check boxes and radio buttons, and the marks that lie on them.
#pragma once

#include "examples/gallery/skin/strips.h"

namespace skin {

FramePainter CheckBox();
FramePainter RadioDish();
Canvas CheckMark();
Canvas RadioMark();

}  // namespace skin
