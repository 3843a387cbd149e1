// The window of a dialog template, with its controls.
#pragma once

#include <optional>

#include <platform/window.h>

namespace platform {

struct BuiltDialog {
    HWND window;
    bool visible = false;  // the template asks for it to be shown
};

// As CreateDialogFromTemplate, but leaves the window hidden and sends no WM_INITDIALOG. Empty with the last
// error on failure; whatever was created is destroyed then.
[[nodiscard]] std::optional<BuiltDialog> BuildDialog(HINSTANCE module, LPCWSTR templateName, HWND parent,
                                                     LPCWSTR windowClass, LPVOID parameter);

}  // namespace platform
