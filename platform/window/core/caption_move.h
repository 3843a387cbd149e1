// The move of a window by its caption, and the sizing by its border: the core's own modal loop.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// Moves the window with the pointer, or (for a sizing code) its edges, until the left button is released. The
// release belongs to the move: the window gets no WM_LBUTTONUP. Escape puts the window back. Returns at once
// when the button is up already.
//
// Where input is injected (headless) and none is left to come, the loop is left, but the move stays on and
// follows whatever is injected next.
void MoveByFrame(HWND window, int hit);

// Ends the move of a window, wherever it got to.
void EndCaptionMove(HWND window);
// Without a message; of any window when it is empty.
void ForgetCaptionMove(HWND window);

}  // namespace platform
