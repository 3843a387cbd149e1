// What a window carries about: styles, texts, numbers.
#include <new>

#include "platform/window/core/activation.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_surface.h"

using namespace platform;

namespace {

// These bits are the window's state; the calls that change the state change them.
constexpr DWORD kStateBits = WS_VISIBLE | WS_MINIMIZE | WS_MAXIMIZE | WS_CHILD;

void SetStyle(Window& window, DWORD style) {
    const bool wasDisabled = window.IsDisabled();
    window.style = (style & ~kStateBits) | (window.style & kStateBits);
    UpdateTraits(window);
    if (window.IsDisabled() != wasDisabled) UpdateTraitsOfOwned(window);
}

void SetExStyle(Window& window, DWORD exStyle) {
    const bool wasLayered = window.IsLayered();
    const bool wasPainted = IsPainted(window);
    const bool tookFiles = (window.exStyle & WS_EX_ACCEPTFILES) != 0;
    window.exStyle = exStyle;
    if (window.IsChild()) {
        const bool takesFiles = (exStyle & WS_EX_ACCEPTFILES) != 0;
        if (Window* const top = takesFiles != tookFiles ? TopLevelOf(window) : nullptr) UpdateTraits(*top);
        return;
    }
    // Taking the style off forgets the attributes and what was pushed.
    if (wasLayered && !window.IsLayered()) {
        window.layering.hasAttributes = window.layering.fed = false;
        window.layering.chosen = Compositing();
    }
    UpdateTraits(window);
    UpdateTraitsOfOwned(window);
    FollowLayer(window);
    UpdateCompositing(window);
    if (!wasPainted && IsPainted(window)) InvalidateAll(window, true);
}

}  // namespace

LONG_PTR GetWindowLongPtrW(HWND handle, int index) {
    const Window* window = Require(handle);
    if (!window) return 0;
    switch (index) {
        case GWL_STYLE:
            return static_cast<LONG_PTR>(window->style);
        case GWL_EXSTYLE:
            return static_cast<LONG_PTR>(window->exStyle);
        case GWLP_USERDATA:
            return window->userData;
        case GWLP_ID:
            return static_cast<LONG_PTR>(window->id);
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
    }
}

LONG_PTR SetWindowLongPtrW(HWND handle, int index, LONG_PTR value) {
    Window* window = Require(handle);
    if (!window) return 0;
    const LONG_PTR before = GetWindowLongPtrW(handle, index);
    switch (index) {
        case GWL_STYLE:
            SetStyle(*window, static_cast<DWORD>(value));
            break;
        case GWL_EXSTYLE:
            SetExStyle(*window, static_cast<DWORD>(value));
            break;
        case GWLP_USERDATA:
            window->userData = value;
            break;
        case GWLP_ID:
            window->id = static_cast<UINT_PTR>(value);
            break;
        default:
            break;  // the last error is set already
    }
    return before;
}

BOOL SetWindowTextW(HWND window, LPCWSTR text) {
    const std::shared_ptr<Window> record = RequireShared(window);
    if (!record) return FALSE;
    CString copy;  // the procedure may change what `text` points to
    try {
        copy = text;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return FALSE;
    }
    return static_cast<BOOL>(
        CallProcedure(record, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(copy.GetString())));
}

CString GetWindowTextW(HWND window) {
    const Window* record = Require(window);
    return record ? record->title : CString();
}

BOOL EnableWindow(HWND handle, BOOL enable) {
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (!window) return FALSE;
    const BOOL before = window->IsDisabled();
    if (before == (enable ? FALSE : TRUE)) return before;
    if (enable) {
        window->style &= ~DWORD{WS_DISABLED};
        if (SystemFocus() == handle) RequestFocusCheck();
    } else {
        window->style |= WS_DISABLED;
        WithdrawPointer(*window);
    }
    UpdateTraitsOfOwned(*window);
    if (Peek(handle)) CallProcedure(window, WM_ENABLE, enable ? TRUE : FALSE, 0);
    return before;
}

BOOL IsWindowEnabled(HWND handle) {
    const Window* window = Require(handle);
    return window && !window->IsDisabled();
}
