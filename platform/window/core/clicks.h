// Which press is the second half of a double click.
#pragma once

#include "platform/window/window_events.h"

namespace platform {

constexpr int kDoubleClickBox = 4;  // pixels, around the first press

bool IsDoubleClick(const event::Pointer& press, HWND target);
// It may become the first half of a double click.
void NotePress(const event::Pointer& press, HWND target);

}  // namespace platform
