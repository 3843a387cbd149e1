#include "platform/framework/placement.h"

#include <algorithm>

namespace platform {
namespace {

// The first pixel of `size` pixels in the middle of [from, to).
int Middle(int from, int to, int size) {
    return static_cast<int>((std::int64_t{from} + to - size) / 2);
}

// Moves [place, place + size) into [0, limit); what is too long keeps its beginning.
int KeptInside(int place, int size, int limit) {
    return std::max(0, std::min(place, limit - size));
}

}  // namespace

CPoint CentredPlace(CSize size, HWND parentOrOwner, bool child) {
    CRect around;
    if (child) {
        GetClientRect(parentOrOwner, around);
        return CPoint(Middle(0, around.Width(), size.cx), Middle(0, around.Height(), size.cy));
    }
    const CSize screen(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    const bool seen = IsWindowVisible(parentOrOwner) && !IsIconic(EnclosingTopLevel(parentOrOwner));
    if (!seen || !GetWindowRect(parentOrOwner, around)) around = CRect(0, 0, screen.cx, screen.cy);
    return CPoint(KeptInside(Middle(around.left, around.right, size.cx), size.cx, screen.cx),
                  KeptInside(Middle(around.top, around.bottom, size.cy), size.cy, screen.cy));
}

HWND EnclosingTopLevel(HWND window) {
    while (IsWindow(window) && (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0)
        window = GetParent(window);
    return IsWindow(window) ? window : HWND();
}

}  // namespace platform
