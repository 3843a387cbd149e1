#include "dialog/window_store.h"

#include <platform/window.h>

namespace qkui {

// A child window lies somewhere in a surface of others.
bool WindowStore::Meet(HWND window, HDC context, int width, int height) {
    if (WindowFromDC(context) != window || (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD)) return false;
    CRect own;
    GetWindowRect(window, own);
    if (own.Width() != width || own.Height() != height) return false;
    if (damage_.Width() != width || damage_.Height() != height) {
        shared_ = met_ = false;
        damage_.Resize(width, height);
    }
    if (met_ && !damage_.IsValid(context)) shared_ = true;
    return !shared_;
}

}  // namespace qkui
