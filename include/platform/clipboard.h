/// @file
/// Text that is copied and pasted.
#pragma once

#include <platform/resources.h>
#include <platform/types.h>

enum : UINT {
    CF_TEXT = 1,          ///< UTF-8, with a terminator
    CF_UNICODETEXT = 13,  ///< UTF-16, with a terminator
};

/// Between these two the clipboard is the program's own. The window is not looked at, but may not be stale.
/// FALSE with ERROR_ACCESS_DENIED while it is open already, and without a window system.
PLATFORM_API BOOL OpenClipboard(HWND window);
PLATFORM_API BOOL CloseClipboard();
/// What was copied before is gone. Needs the clipboard open, as the next two do.
PLATFORM_API BOOL EmptyClipboard();
/// Copies the text in a block, which belongs to the clipboard from here on. Both formats give the same. What
/// is copied lasts as long as this program, or until another one copies something. Empty, and the block the
/// caller's still, for other formats, blocks without a terminator, and texts that the display server does not
/// take.
PLATFORM_API HGLOBAL SetClipboardData(UINT format, HGLOBAL block);
/// What would be pasted, in a block of the clipboard's that lives until CloseClipboard; empty without text. A
/// program that owns the text and does not answer is waited for, for a second.
PLATFORM_API HGLOBAL GetClipboardData(UINT format);
/// Whether there is text; asks for it.
PLATFORM_API BOOL IsClipboardFormatAvailable(UINT format);
