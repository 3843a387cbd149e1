#include "platform/framework/centring.h"

#include <algorithm>

namespace platform {
namespace {

// The first pixel of `size` pixels in the middle of [from, to).
int Middle(int from, int to, int size) {
    return static_cast<int>((std::int64_t{from} + to - size) / 2);
}

// Moves [place, place + size) into [from, to); what is too long keeps its beginning.
int KeptInside(int place, int size, LONG from, LONG to) {
    return std::max<int>(from, std::min<int>(place, to - size));
}

}  // namespace

CPoint CentredOrigin(CSize size, HWND parentOrOwner, bool child) {
    CRect around;
    if (child) {
        GetClientRect(parentOrOwner, around);
        return CPoint(Middle(0, around.Width(), size.cx), Middle(0, around.Height(), size.cy));
    }
    const bool seen = IsWindowVisible(parentOrOwner) && !IsIconic(EnclosingTopLevel(parentOrOwner));
    MONITORINFO monitor{sizeof(MONITORINFO), {}, {}, 0};
    GetMonitorInfoW(MonitorFromWindow(seen ? parentOrOwner : HWND(), MONITOR_DEFAULTTONEAREST), &monitor);
    if (!seen || !GetWindowRect(parentOrOwner, around)) around = monitor.rcMonitor;
    const RECT& work = monitor.rcWork;
    return CPoint(KeptInside(Middle(around.left, around.right, size.cx), size.cx, work.left, work.right),
                  KeptInside(Middle(around.top, around.bottom, size.cy), size.cy, work.top, work.bottom));
}

HWND EnclosingTopLevel(HWND window) {
    while (IsWindow(window) && (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) != 0)
        window = GetParent(window);
    return IsWindow(window) ? window : HWND();
}

}  // namespace platform
