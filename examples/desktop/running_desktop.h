// The desktop that runs already, where there is one: a place for the window, and the picture behind it.
#pragma once

#include <QKUILib.h>

namespace desktop {

// Puts the window into the running desktop, above its icons. False where there is none.
bool JoinDesktop(CQKDialogBase& dialog);
// Whether the window lies there now: a desktop may go, and leave it on the screen.
bool IsInDesktop(const CQKDialogBase& dialog);

// Empty where no desktop tells.
CString DesktopWallpaper();
void SetDesktopWallpaper(const CString& path);

}  // namespace desktop
