#include "dialog/window_store.h"

#include <platform/window.h>

namespace qkui {

// A child window lies somewhere in a surface of others.
bool WindowStore::IsOurs(HWND window, HDC context, int width, int height) {
    if (WindowFromDC(context) != window || (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD)) return false;
    CRect own;
    GetWindowRect(window, own);
    if (own.Width() != width || own.Height() != height) return false;
    if (damage_.Width() != width || damage_.Height() != height) {
        shared_ = composed_ = false;
        damage_.Resize(width, height);
    }
    if (composed_ && !damage_.IsValid(context)) shared_ = true;
    return !shared_;
}

}  // namespace qkui
