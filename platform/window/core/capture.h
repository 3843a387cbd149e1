// The window that gets all pointer events.
#pragma once

#include "platform/window/core/window_record.h"

namespace platform {

// Empty, or perhaps stale.
HWND CaptureWindow();
// Whether a living window has the pointer.
bool IsPointerCaptured();
// False, and nobody holds the pointer, when the window system does not give it. `lost` is called when another
// window takes it, and when it is released.
bool SetPointerCapture(HWND window, void (*lost)() = nullptr);
void ReleasePointerCapture();
// The window is no longer there to be pointed at: hidden, minimised, disabled or on its way out.
void WithdrawPointer(const Window& window);
// Nobody holds it; nobody is told.
void ForgetCapture();

}  // namespace platform
