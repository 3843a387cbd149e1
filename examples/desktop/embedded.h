// Pictures from the program's own resources.
#pragma once

#include "examples/desktop/picture.h"

namespace desktop {

// Null when there is no such resource.
Picture EmbeddedPicture(UINT id);

}  // namespace desktop
