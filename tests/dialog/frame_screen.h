// The screen that frames are watched on: one in memory, or that of an X server. A program links one of them.
#pragma once

#include <platform/headless.h>

namespace kit {

// Before the first window. False where there is none, which the test has been told of.
bool OpenFrameScreen();
// What a window shows, once nothing waits any more: premultiplied ARGB, alpha 255 where it has none.
Headless::Picture Shown(HWND window);
// Whether nothing but the test makes time go by, and so frames.
bool HasExactClock();

}  // namespace kit
