// The cursor that windows ask for.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// The messages that follow decide on the cursor over this top-level.
void SetCursorWindow(HWND topLevel);
// Gives the window system the cursor that the messages decided on. Deferred to the next wait, so that a
// cursor that changes twice in one move does not flicker.
void ShowCursorDecided();
// WM_SETCURSOR's default: the parent may decide, then the class.
LRESULT DefaultSetCursor(Window& window, WPARAM wParam, LPARAM lParam);
void ResetCursor();

}  // namespace platform
