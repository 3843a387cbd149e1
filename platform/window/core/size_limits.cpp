#include "platform/window/core/size_limits.h"

#include <algorithm>

#include "platform/window/core/bounds.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/window_table.h"

namespace platform {

MONITORINFO MonitorOf(const Window& window) {
    MONITORINFO monitor{sizeof(MONITORINFO), {}, {}, 0};
    GetMonitorInfoW(MonitorFromWindow(window.handle, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

MINMAXINFO AskSizes(const std::shared_ptr<Window>& window) {
    const MONITORINFO monitor = MonitorOf(*window);
    const CRect work(monitor.rcWork);
    MINMAXINFO sizes{{0, 0},
                     {work.Width(), work.Height()},
                     CPoint(work.left - monitor.rcMonitor.left, work.top - monitor.rcMonitor.top),
                     {1, 1},
                     {kLongestSide, kLongestSide}};
    CallProcedure(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&sizes));
    const auto side = [](LONG size) { return std::clamp<LONG>(size, 1, kLongestSide); };
    window->leastSize = {side(sizes.ptMinTrackSize.x), side(sizes.ptMinTrackSize.y)};
    window->mostSize = {std::max(side(sizes.ptMaxTrackSize.x), window->leastSize.cx),
                        std::max(side(sizes.ptMaxTrackSize.y), window->leastSize.cy)};
    if (Peek(window->handle)) UpdateTraits(*window);
    return sizes;
}

void RefreshSizes(const std::shared_ptr<Window>& window) {
    if (!window->IsChild() && window->style & (WS_THICKFRAME | WS_MAXIMIZEBOX)) AskSizes(window);
}

}  // namespace platform
