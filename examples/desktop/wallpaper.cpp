#include "examples/desktop/wallpaper.h"

#include "examples/desktop/glib.h"
#include "examples/desktop/running_desktop.h"

namespace desktop {

CString Wallpaper::Current() const {
    if (file_.empty()) return {};
    if (CString theirs = DesktopWallpaper(); !theirs.IsEmpty()) return theirs;
    char* raw = nullptr;
    if (!g_file_get_contents(file_.c_str(), &raw, nullptr, nullptr)) return {};
    return FromUtf8(Owned<char>(raw).get());
}

void Wallpaper::Choose(const CString& path) {
    if (file_.empty()) return;
    const Owned<char> folder(g_path_get_dirname(file_.c_str()));
    g_mkdir_with_parents(folder.get(), 0700);
    g_file_set_contents(file_.c_str(), ToUtf8(path).c_str(), -1, nullptr);
    SetDesktopWallpaper(path);
}

}  // namespace desktop
