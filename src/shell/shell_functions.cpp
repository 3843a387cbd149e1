#include <qkui/shell/shell_functions.h>

#include <platform/shell.h>

namespace {

constexpr DWORD kApplyAll = AD_APPLY_SAVE | AD_APPLY_HTMLGEN | AD_APPLY_REFRESH | AD_APPLY_FORCE;
constexpr UINT kLongestPath = 260;  // units, with the terminator

// With the desktop's components switched on, as both operations want it. Null when there is none.
IActiveDesktop* OpenDesktop() {
    void* made = nullptr;
    const HRESULT result =
        CoCreateInstance(CLSID_ActiveDesktop, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveDesktop, &made);
    if (FAILED(result)) return nullptr;
    auto* desktop = static_cast<IActiveDesktop*>(made);
    const COMPONENTSOPT options = {sizeof(COMPONENTSOPT), TRUE, TRUE};
    desktop->SetDesktopItemOptions(&options, 0);
    return desktop;
}

}  // namespace

BOOL QKShellFunctions::SetWallpaper(CString strPath, DWORD) {
    BOOL found = FALSE;
    CoInitialize(nullptr);
    if (IActiveDesktop* desktop = OpenDesktop()) {
        if (SUCCEEDED(desktop->SetWallpaper(strPath.GetString(), 0))) desktop->ApplyChanges(kApplyAll);
        desktop->Release();
        found = TRUE;
    }
    CoUninitialize();
    return found;
}

CString QKShellFunctions::GetWallpaper() {
    CString path;
    WCHAR buffer[kLongestPath] = {};
    bool known = false;
    CoInitialize(nullptr);
    if (IActiveDesktop* desktop = OpenDesktop()) {
        known = SUCCEEDED(desktop->GetWallpaper(buffer, kLongestPath, AD_GETWP_LAST_APPLIED));
        desktop->Release();
    }
    CoUninitialize();
    if (known) path.Format(u"%s", buffer);
    return path;
}
