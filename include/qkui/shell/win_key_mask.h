/// @file
/// Keeping a window visible when the user clears the desktop.
#pragma once

#include <platform/types.h>

extern "C" {
/// From now on a window comes to the top of the topmost ones when D is pressed or released while the left
/// Windows key is held, the shortcut that shows the desktop. The keys go where they always go. One window at
/// a time: a later call replaces it. With an empty window the keys are watched and nothing happens. `bMask` 0
/// ends it, and so does the end of the library.
///
/// The calling thread is the one that owns windows, and must take messages. 1 on success, also for an end of
/// nothing; 0 where keys cannot be watched (see SetWindowsHookExW).
PLATFORM_API BOOL SetWinKeyMask(BOOL bMask, HWND hWnd);
}
