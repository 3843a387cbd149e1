/// @file
/// The desktop's wallpaper, and its programs for files.
#pragma once

#include <platform/components.h>
#include <platform/types.h>
#include <platform/window.h>

constexpr GUID CLSID_ActiveDesktop = {
    0x75048700, 0xEF1F, 0x11D0, {0x98, 0x88, 0x00, 0x60, 0x97, 0xDE, 0xAC, 0xF9}};
constexpr GUID IID_IActiveDesktop = {
    0xF490EB00, 0x1240, 0x11D1, {0x98, 0x88, 0x00, 0x60, 0x97, 0xDE, 0xAC, 0xF9}};

struct COMPONENTSOPT {
    DWORD dwSize;  ///< of this record
    BOOL fEnableComponents;
    BOOL fActiveDesktop;
};
static_assert(sizeof(COMPONENTSOPT) == 12);

enum : DWORD { AD_APPLY_SAVE = 1, AD_APPLY_HTMLGEN = 2, AD_APPLY_REFRESH = 4, AD_APPLY_FORCE = 8 };
enum : DWORD { AD_GETWP_LAST_APPLIED = 2 };

/// The wallpaper, of whatever desktop is there at the moment of the call. The first of these that is there
/// decides, and keeps what is applied as it keeps its user's own choice:
///
///   1. inside a sandbox, the desktop portal, which may ask the user and tells nothing back
///   2. a desktop window of pcmanfm, by its command
///   3. the settings of GNOME (also Unity, Budgie, Pantheon), Cinnamon or MATE, where XDG_CURRENT_DESKTOP
///      names one of these; those of Xfce
///   4. where another program's window is the desktop, the desktop portal
///   5. the background of the X display itself, which lasts until the display server ends
///
/// With Headless::Use it is the headless screen's background, and lasts as long as that.
///
/// Every call comes back: what does not answer within some seconds has failed. Objects are for any thread,
/// one at a time.
class PLATFORM_API IActiveDesktop : public IUnknown {
  public:
    /// Applies the wallpaper set last. All four flags mean that; others, and none, are refused with
    /// E_INVALIDARG. S_FALSE when nothing was set, E_FAIL when the desktop does not take it.
    virtual HRESULT ApplyChanges(DWORD flags) = 0;
    /// The path of the wallpaper, as the desktop has it now: its own user may have chosen another since. No
    /// more than `size` - 1 units of it, and a terminator; empty where there is none. `flags` is
    /// AD_GETWP_LAST_APPLIED.
    virtual HRESULT GetWallpaper(LPWSTR wallpaper, UINT size, DWORD flags) = 0;
    /// Takes note of the picture to apply, by its absolute path. Refused with E_INVALIDARG when it is no file
    /// that can be decoded. `reserved` is 0.
    virtual HRESULT SetWallpaper(LPCWSTR wallpaper, DWORD reserved) = 0;
    /// There is nothing to switch: succeeds for a record of the right size.
    virtual HRESULT SetDesktopItemOptions(const COMPONENTSOPT* options, DWORD reserved) = 0;

  protected:
    ~IActiveDesktop() override;
};

/// Opens a file, a folder or an address (with a scheme: https:, mailto:, file:) with the program that the
/// user has chosen for its kind; a program's own file is started, with `parameters` as a shell would take
/// them apart. A name without a folder is looked for in `folder`, else in the present one, and a program's
/// also along PATH. The verb is null or "open". Returns at once: a number above 32, to be compared as INT_PTR
/// and no more, or one of those below. `window` and `show` are not looked at.
enum : INT_PTR { SE_ERR_FNF = 2, SE_ERR_ACCESSDENIED = 5, SE_ERR_NOASSOC = 31 };
PLATFORM_API HINSTANCE ShellExecuteW(HWND window, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters,
                                     LPCWSTR folder, int show);
inline HINSTANCE ShellExecute(HWND window, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR folder,
                              int show) {
    return ShellExecuteW(window, verb, file, parameters, folder, show);
}
