// What the rest of the platform asks of the window core besides the face.
#pragma once

#include <cstdint>
#include <optional>

#include <platform/window.h>

namespace platform {

// Destroys every window without sending it anything, ends the window system and forgets which one was
// chosen; window classes stay. Also runs when the library is unloaded.
void ShutDownWindows();

// The filter sees each message that the core dispatches by itself (RunPending, the move by the caption)
// before it is translated; true means that it was handled. The framework puts its PreTranslateMessage here.
void SetMessageFilter(bool (*filter)(MSG* message));

// See Headless::Use.
bool UseHeadlessWindowSystem(int screenWidth, int screenHeight);
// Dispatches whatever waits, without blocking. WM_QUIT stays where it is.
void RunPendingMessages();
std::optional<std::uint64_t> NextTimerDue();

}  // namespace platform
