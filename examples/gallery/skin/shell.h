// The gallery's own window: the lake at dusk out of focus, with rounded corners, a shadow, and dark panes.
#pragma once

#include "examples/gallery/skin/canvas.h"

namespace skin {

Canvas ShellWindow();

}  // namespace skin
