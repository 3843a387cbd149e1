// Which object stands for a window: one table per thread, because windows and their objects belong to one.
#pragma once

#include <platform/types.h>

class CWnd;

namespace platform {

// Null for a window without an object, a stale handle, and once the thread is ending.
CWnd* ObjectOf(HWND window);
void BindObject(HWND window, CWnd* object);
void UnbindObject(HWND window);

}  // namespace platform
