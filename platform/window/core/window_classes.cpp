#include "platform/window/core/window_classes.h"

#include <new>
#include <string>
#include <unordered_map>

#include "platform/window/core/lasting.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

constexpr std::size_t kLongestClassName = 256;

using ClassTable = std::unordered_map<std::u16string, std::shared_ptr<const WindowClass>>;

// The class of controls that draw nothing.
ClassTable StandardClasses() {
    auto placeholder = std::make_shared<WindowClass>();
    placeholder->name = u"STATIC";
    placeholder->procedure = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message == WM_NCHITTEST) return HTTRANSPARENT;
        return DefWindowProcW(window, message, wParam, lParam);
    };
    placeholder->letsPointerThrough = true;
    return {{placeholder->name, placeholder}};
}

struct KnownClasses {
    ClassTable table = StandardClasses();
};

ClassTable& Classes() {
    return Lasting<KnownClasses>().table;
}

}  // namespace

// A class name may be any text; numbers in the place of text name nothing.
std::shared_ptr<const WindowClass> FindWindowClass(LPCWSTR name) {
    if (!name || IS_INTRESOURCE(name)) return nullptr;
    auto found = Classes().find(CString(name).MakeUpper().GetString());
    return found == Classes().end() ? nullptr : found->second;
}

void ResetWindowClasses() {
    Classes() = {};
}

}  // namespace platform

using namespace platform;

BOOL RegisterClassW(const WNDCLASSW* description) try {
    if (!description || !description->lpfnWndProc || !description->lpszClassName ||
        IS_INTRESOURCE(description->lpszClassName)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    CString name(description->lpszClassName);
    if (name.IsEmpty() || name.View().size() > kLongestClassName) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (!ClaimThread()) return FALSE;
    auto fresh = std::make_shared<WindowClass>();
    fresh->name = name.MakeUpper().GetString();
    fresh->procedure = description->lpfnWndProc;
    fresh->cursor = description->hCursor;
    if (!Classes().emplace(fresh->name, fresh).second) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return FALSE;
    }
    return TRUE;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}
