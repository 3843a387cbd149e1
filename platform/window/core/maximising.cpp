#include "platform/window/core/maximising.h"

#include <algorithm>

#include "platform/window/core/bounds.h"
#include "platform/window/core/size_limits.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

CRect MaximisedRect(const Window& window, const MINMAXINFO& sizes) {
    const CRect monitor(MonitorOf(window).rcMonitor);
    const auto side = [](LONG size) { return std::clamp<LONG>(size, 0, kLongestSide); };
    return CRect(monitor.TopLeft() + sizes.ptMaxPosition,
                 CSize(side(sizes.ptMaxSize.x), side(sizes.ptMaxSize.y)));
}

}  // namespace

void SetMaximised(const std::shared_ptr<Window>& window, bool maximised) {
    if (window->IsChild() || window->IsMaximised() == maximised) return;
    CRect rect = window->normalRect;
    if (maximised) {
        const MINMAXINFO sizes = AskSizes(window);
        if (!Peek(window->handle)) return;
        rect = MaximisedRect(*window, sizes);
        window->normalRect = window->rect;
        window->style |= WS_MAXIMIZE;
    } else {
        window->style &= ~DWORD{WS_MAXIMIZE};
    }
    UpdateTraits(*window);
    const BoundsChange change = ChangeBounds(*window, rect, Redraw::Yes);
    if (!window->IsMinimised()) SendBoundsMessages(window, change);
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

using namespace platform;

BOOL IsZoomed(HWND handle) {
    const Window* window = Require(handle);
    return window && window->IsMaximised();
}
