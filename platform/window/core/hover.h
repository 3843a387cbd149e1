// The window under the pointer, and the one that is told when the pointer leaves it.
#pragma once

#include "platform/window/core/message_queue.h"

namespace platform {

HWND HoveredWindow();  // the one that the last move went to
void SetHoveredWindow(HWND window);
HWND TrackedWindow();  // asked for WM_MOUSELEAVE
// Tells the tracked window that the pointer is over another one now: ahead of the entry at `place`, or of
// everything (0). False when there is nothing to tell.
bool LeaveTracked(HWND now, MessageQueue::Order place);
// Has the core look, in its turn, whether the pointer has left the tracked window.
void RequestPointerCheck();
void NotePointerCheck();
void ResetHover();

}  // namespace platform
