// What other threads hand to the one that owns the windows.
#pragma once

#include <platform/window.h>

namespace platform {

// Any thread.
bool PostFromElsewhere(const MSG& message);
// Waits for the answer. Any thread but the owner.
LRESULT SendFromElsewhere(const MSG& message);

void TakeInbox();     // posted messages, into the queue
void RunSentInbox();  // sent ones, at once
// Who waits for a window that is gone gets an answer.
void FailSentTo(HWND window);
void ClearInbox();

}  // namespace platform
