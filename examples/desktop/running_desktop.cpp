#include "examples/desktop/running_desktop.h"

namespace desktop {

bool JoinDesktop(CQKDialogBase& dialog) {
    return dialog.SetDesk() != 0;
}

bool IsInDesktop(const CQKDialogBase& dialog) {
    return !(GetAncestor(dialog.m_hWnd, GA_PARENT) == GetDesktopWindow());
}

CString DesktopWallpaper() {
    return QKShellFunctions().GetWallpaper();
}

void SetDesktopWallpaper(const CString& path) {
    QKShellFunctions().SetWallpaper(path, 0);
}

}  // namespace desktop
