#include "dialog/window_store.h"

#include <platform/window.h>

namespace qkui {

// A child window lies somewhere in a surface of others.
bool WindowStore::Meet(HWND window, HDC context, int width, int height) {
    if (WindowFromDC(context) != window || (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD)) return false;
    CRect own;
    GetWindowRect(window, own);
    if (own.Width() != width || own.Height() != height) return false;
    if (record_.Width() != width || record_.Height() != height) {
        shared_ = met_ = false;
        record_.Resize(width, height);
    }
    if (met_ && !record_.IsSealed(context)) shared_ = true;
    return !shared_;
}

}  // namespace qkui
