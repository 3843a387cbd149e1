// What the rest of the platform asks of the window core besides the public API.
#pragma once

#include <cstdint>
#include <optional>

#include <platform/window.h>

#include "platform/window/file_drag.h"
#include "platform/window/foreign_windows.h"

namespace platform {

// Destroys every window without sending it anything, ends the window system and forgets which one was
// chosen; window classes stay. Also runs when the library is unloaded.
void ShutDownWindows();

// The step of every message loop: the message is filtered, translated and dispatched. The filter sees it
// first; true means that it was handled. The framework puts its PreTranslateMessage here.
void DeliverMessage(MSG& message);
void SetMessageFilter(bool (*filter)(MSG& message));

// See Headless::Use.
bool UseHeadlessWindowSystem(int screenWidth, int screenHeight);
// The screen may have another number of dots to the inch than before.
void SettleScreenScale();
// Dispatches whatever waits, without blocking. WM_QUIT stays where it is.
void RunPendingMessages();
std::optional<std::uint64_t> NextTimerDue();
// The next press is the first of its click, however soon it comes.
void ForgetLastClick();

// Drags files from where the pointer is, its left button held, and returns what the receiver did with them.
// Delivers messages meanwhile, but no input. The release drops; Escape and another button give up; so do the
// end of the program and that of the window system, and, where input is injected, that none is left.
// DROPEFFECT_NONE at once where there is nothing to drag with: no button held, a drag that runs already, a
// thread without windows.
[[nodiscard]] DROPEFFECT DragFiles(const FileOffer& offer);
// The handle of another program's window (empty without memory), and back (empty when it is stale).
HWND HandleOfForeign(ForeignId id);
std::optional<ForeignId> ForeignOfHandle(HWND handle);

}  // namespace platform
