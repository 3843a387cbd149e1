/// @file
/// The wallpaper of the desktop.
#pragma once

#include <platform/text.h>
#include <platform/types.h>

/// See IActiveDesktop for which desktops there are, and what they keep.
class PLATFORM_API QKShellFunctions {
  public:
    /// Makes a picture, by its absolute path, the wallpaper. 1 says that there was somebody to ask, not that
    /// the wallpaper changed: GetWallpaper answers that. `style` is not read.
    BOOL SetWallpaper(CString strPath, DWORD dwStyle);
    /// The path of the wallpaper; empty without one, and on failure. Of a longer path the first 259 units.
    CString GetWallpaper();
};
