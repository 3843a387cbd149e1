#include "platform/window/core/maximising.h"

#include <algorithm>

#include "platform/window/core/place.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

MONITORINFO MonitorOf(const Window& window) {
    MONITORINFO monitor{sizeof(MONITORINFO), {}, {}, 0};
    GetMonitorInfoW(MonitorFromWindow(window.handle, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

CRect MaximisedRect(const Window& window, const MINMAXINFO& sizes) {
    const CRect monitor(MonitorOf(window).rcMonitor);
    const auto side = [](LONG size) { return std::clamp<LONG>(size, 0, kLongestSide); };
    return CRect(monitor.TopLeft() + sizes.ptMaxPosition,
                 CSize(side(sizes.ptMaxSize.x), side(sizes.ptMaxSize.y)));
}

}  // namespace

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
    if (Core::Get().Peek(window->handle)) UpdateTraits(*window);
    return sizes;
}

void RefreshSizes(const std::shared_ptr<Window>& window) {
    if (!window->IsChild() && window->style & (WS_THICKFRAME | WS_MAXIMIZEBOX)) AskSizes(window);
}

void SetMaximised(const std::shared_ptr<Window>& window, bool maximised) {
    if (window->IsChild() || window->IsMaximised() == maximised) return;
    CRect rect = window->normalRect;
    if (maximised) {
        const MINMAXINFO sizes = AskSizes(window);
        if (!Core::Get().Peek(window->handle)) return;
        rect = MaximisedRect(*window, sizes);
        window->normalRect = window->rect;
        window->style |= WS_MAXIMIZE;
    } else {
        window->style &= ~DWORD{WS_MAXIMIZE};
    }
    UpdateTraits(*window);
    const PlaceChange change = ChangeRect(*window, rect, Redraw::Yes);
    if (!window->IsMinimised()) SendPlaceMessages(window, change);
}

void AcceptMaximised(Window& window, bool maximised) {
    if (window.IsMaximised() == maximised) return;
    if (maximised) {
        window.normalRect = window.rect;
        window.style |= WS_MAXIMIZE;
    } else {
        window.style &= ~DWORD{WS_MAXIMIZE};
    }
    UpdateTraits(window);
}

}  // namespace platform

BOOL IsZoomed(HWND handle) {
    const platform::Window* window = platform::Core::Get().Find(handle);
    return window && window->IsMaximised();
}
