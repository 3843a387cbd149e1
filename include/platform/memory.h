/// @file
/// Memory by handle.
#pragma once

#include <cstddef>

#include <platform/types.h>

/// For any thread. GlobalLock gives the address, also of an empty block (null when stale).
/// Blocks never move and live until GlobalFree, locked or not. Every failure sets the last error.
/// GMEM_SHARE changes nothing: every block may be handed to others.
enum : UINT { GMEM_FIXED = 0x0000, GMEM_MOVEABLE = 0x0002, GMEM_ZEROINIT = 0x0040, GMEM_SHARE = 0x2000 };
PLATFORM_API HGLOBAL GlobalAlloc(UINT flags, std::size_t bytes);
PLATFORM_API LPVOID GlobalLock(HGLOBAL block);
///@{
/// False for a stale block, and for a movable one that is not locked.
PLATFORM_API BOOL GlobalUnlock(HGLOBAL block);
PLATFORM_API std::size_t GlobalSize(HGLOBAL block);
///@}
/// Returns the empty handle on success, the given one when it is stale or belongs to LoadResource.
PLATFORM_API HGLOBAL GlobalFree(HGLOBAL block);
