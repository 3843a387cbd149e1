// What the library knows of the watched keys, once per process.
#pragma once

#include <platform/foreign.h>

namespace qkui {

extern HHOOK g_hKeyHook;       // the installed hook, or empty
extern HWND g_hMaskWnd;        // the window to keep on top
extern HINSTANCE g_hInstance;  // the library's own module, known from its load on

}  // namespace qkui
