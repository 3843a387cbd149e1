/// @file
/// The window styles and numbers that dialog templates are written with, for resource scripts:
///
///     #include <platform/resource_styles.h>
///
/// at the top of an .rc file. The resource compiler sets RC_INVOKED; in C++ this header is empty, and the
/// same names come from window.h.
#pragma once

#ifdef RC_INVOKED

#define WS_OVERLAPPED 0x00000000L
#define WS_TABSTOP 0x00010000L
#define WS_MAXIMIZEBOX 0x00010000L
#define WS_MINIMIZEBOX 0x00020000L
#define WS_THICKFRAME 0x00040000L
#define WS_SYSMENU 0x00080000L
#define WS_BORDER 0x00800000L
#define WS_DLGFRAME 0x00400000L
#define WS_CAPTION 0x00C00000L
#define WS_CLIPCHILDREN 0x02000000L
#define WS_CLIPSIBLINGS 0x04000000L
#define WS_DISABLED 0x08000000L
#define WS_VISIBLE 0x10000000L
#define WS_MINIMIZE 0x20000000L
#define WS_CHILD 0x40000000L
#define WS_POPUP 0x80000000L

#define WS_EX_TOPMOST 0x00000008L
#define WS_EX_TRANSPARENT 0x00000020L
#define WS_EX_TOOLWINDOW 0x00000080L
#define WS_EX_CLIENTEDGE 0x00000200L
#define WS_EX_APPWINDOW 0x00040000L
#define WS_EX_LAYERED 0x00080000L
#define WS_EX_NOACTIVATE 0x08000000L

#define DS_SETFONT 0x40L
#define DS_MODALFRAME 0x80L
#define DS_CENTER 0x0800L

#define IDOK 1
#define IDCANCEL 2
#define IDC_STATIC (-1)

#endif
