// Where windows are, on the screen and on their surfaces.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// (0, 0) of a window, on the screen and on the surface of its top-level. A minimised top-level is far out.
CPoint ScreenOrigin(const Window& window);
CPoint SurfaceOrigin(const Window& window);
CRect ScreenRect(const Window& window);
POINT ToClient(const Window& window, POINT screen);

}  // namespace platform
