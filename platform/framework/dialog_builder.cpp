#include "platform/framework/dialog_builder.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>

#include "platform/framework/centring.h"
#include "platform/framework/dialog_units.h"
#include "platform/resources/dialog_template.h"

namespace platform {
namespace {

constexpr LPCWSTR StaticClass = u"STATIC";
constexpr int LargestExtent = 32767;
// The x of a template that leaves the place to the system.
constexpr int AnyPlace = -32768;

// The classes of controls that templates name customarily. Each is a placeholder, as STATIC is.
bool IsKnown(const DialogControl& control) {
    static constexpr LPCWSTR kClasses[] = {
        StaticClass,          u"BUTTON",          u"EDIT",           u"LISTBOX",         u"COMBOBOX",
        u"SCROLLBAR",         u"COMBOBOXEX32",    u"RICHEDIT20W",    u"RICHEDIT50W",     u"SYSANIMATE32",
        u"SYSDATETIMEPICK32", u"SYSHEADER32",     u"SYSIPADDRESS32", u"SYSLINK",         u"SYSLISTVIEW32",
        u"SYSMONTHCAL32",     u"SYSTABCONTROL32", u"SYSTREEVIEW32",  u"MSCTLS_HOTKEY32", u"MSCTLS_PROGRESS32",
        u"MSCTLS_TRACKBAR32", u"MSCTLS_UPDOWN32",
    };
    const CString name(control.className);
    return std::any_of(std::begin(kClasses), std::end(kClasses),
                       [&](LPCWSTR known) { return name.CompareNoCase(known) == 0; });
}

CRect InPixels(const DialogUnits& place, const DialogBaseUnits& base) {
    return CRect(CPoint(HorizontalPixels(place.x, base), VerticalPixels(place.y, base)),
                 CSize(HorizontalPixels(place.width, base), VerticalPixels(place.height, base)));
}

bool HasValidExtent(const DialogUnits& place, const DialogBaseUnits& base) {
    const auto valid = [](int pixels) { return pixels >= 0 && pixels <= LargestExtent; };
    return valid(HorizontalPixels(place.width, base)) && valid(VerticalPixels(place.height, base));
}

// The bytes of a template; empty with the last error when it is not found.
std::span<const std::byte> TemplateBytes(HINSTANCE module, LPCWSTR name) {
    const HRSRC resource = FindResourceW(module, name, RT_DIALOG);
    if (!resource) return {};
    const DWORD size = SizeofResource(module, resource);
    const void* bytes = LockResource(LoadResource(module, resource));
    if (!bytes || size == 0) {
        SetLastError(ERROR_INVALID_DATA);
        return {};
    }
    return {static_cast<const std::byte*>(bytes), size};
}

// Everything is judged before the first window is made.
bool CanBuild(const DialogTemplate& dialog, const DialogBaseUnits& base) {
    if (!HasValidExtent(dialog.place, base)) return false;
    return std::all_of(dialog.controls.begin(), dialog.controls.end(), [&](const DialogControl& control) {
        return IsKnown(control) && HasValidExtent(control.place, base);
    });
}

// Where the window of a template goes: for a child in its parent, else on the screen, near its owner.
CRect PlaceOf(const DialogTemplate& dialog, const DialogBaseUnits& base, HWND parent) {
    CRect place = InPixels(dialog.place, base);
    const bool child = (dialog.style & WS_CHILD) != 0;
    if ((dialog.style & DS_CENTER) != 0 || dialog.place.x == AnyPlace)
        return CRect(CentredOrigin(place.Size(), parent, child), place.Size());
    POINT origin{0, 0};
    if (!child && IsWindow(parent) && !IsIconic(EnclosingTopLevel(parent)) && ClientToScreen(parent, &origin))
        place.OffsetRect(origin.x, origin.y);
    return place;
}

HWND CreateControl(const DialogControl& control, const DialogBaseUnits& base, HWND window, HINSTANCE module) {
    const CRect place = InPixels(control.place, base);
    return CreateWindowExW(control.exStyle, StaticClass, control.title.c_str(), control.style | WS_CHILD,
                           place.left, place.top, place.Width(), place.Height(), window, control.id, module,
                           nullptr);
}

}  // namespace

std::optional<BuiltDialog> BuildDialog(HINSTANCE module, LPCWSTR templateName, HWND parent,
                                       LPCWSTR windowClass, LPVOID parameter) {
    const std::span<const std::byte> bytes = TemplateBytes(module, templateName);
    if (bytes.empty()) return std::nullopt;
    const std::optional<DialogTemplate> dialog = ParseDialogTemplate(bytes);
    const DialogBaseUnits base = MeasureBaseUnits(dialog ? dialog->font : std::nullopt);
    if (!dialog || !CanBuild(*dialog, base)) {
        SetLastError(ERROR_INVALID_DATA);
        return std::nullopt;
    }

    const CRect place = PlaceOf(*dialog, base, parent);
    BuiltDialog built;
    built.visible = (dialog->style & WS_VISIBLE) != 0;
    built.window =
        CreateWindowExW(dialog->exStyle, windowClass, dialog->title.c_str(), dialog->style & ~WS_VISIBLE,
                        place.left, place.top, place.Width(), place.Height(), parent, 0, module, parameter);
    if (!built.window) return std::nullopt;
    for (const DialogControl& control : dialog->controls) {
        if (CreateControl(control, base, built.window, module)) continue;
        const DWORD error = GetLastError();
        DestroyWindow(built.window);
        SetLastError(error);
        return std::nullopt;
    }
    return built;
}

}  // namespace platform

HWND CreateDialogFromTemplate(HINSTANCE module, LPCWSTR templateName, HWND parent, LPCWSTR windowClass,
                              LPVOID parameter) {
    const std::optional<platform::BuiltDialog> built =
        platform::BuildDialog(module, templateName, parent, windowClass, parameter);
    if (!built) return {};
    SendMessageW(built->window, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(parameter));
    if (built->visible) ShowWindow(built->window, SW_SHOW);
    return IsWindow(built->window) ? built->window : HWND();
}
