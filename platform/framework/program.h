// What windows and loops have to do with the program's object, where there is one.
#pragma once

#include <platform/window.h>

class CWnd;

namespace platform {

// The filter of every message loop: whether somebody takes the message out before it is delivered: the
// object, on its thread, or else the message's windows.
bool TakenBefore(MSG& message);
// The window of an object is gone, or the object is.
void MainWindowLeaves(const CWnd& object);

}  // namespace platform
