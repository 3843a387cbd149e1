#include "platform/window/core/bounds.h"

#include <algorithm>

#include "platform/window/core/display.h"
#include "platform/window/core/embedded_window.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/message_queue.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

// Positions as far out as a window system can name.
int ClampPosition(int value) {
    return std::clamp(value, -32768, 32767);
}

bool Lives(const std::shared_ptr<Window>& window) {
    return Peek(window->handle) != nullptr;
}

}  // namespace

BoundsChange ChangeBounds(Window& window, const CRect& wanted, Redraw redraw) {
    const CRect rect(CPoint(ClampPosition(wanted.left), ClampPosition(wanted.top)),
                     CSize(wanted.Width(), wanted.Height()));
    const CRect before = window.rect;
    BoundsChange change;
    change.moved = !(rect.TopLeft() == before.TopLeft());
    change.sized = !(rect.Size() == before.Size());
    if (!change.moved && !change.sized) return change;
    window.rect = rect;
    if (!window.IsChild()) {
        // What was reported before this request is older than it.
        Queue().DropBounds(window.handle);
        if (WindowSystem* system = SystemOf(window)) system->SetBounds(window.handle, rect);
    } else if (window.IsShown() && redraw == Redraw::Yes) {
        InvalidateUnder(window, before);
        InvalidateUnder(window, rect);
        InvalidateAll(window, true);  // a parent that clips its children does not pass it on
    }
    if (change.sized) {
        window.update.Intersect(window.Bounds());
        if (redraw == Redraw::Yes) InvalidateAll(window, true);
    }
    FollowEmbeddedWindows();
    return change;
}

void SendBoundsMessages(const std::shared_ptr<Window>& window, BoundsChange change) {
    if (!window->created || (!change.moved && !change.sized)) return;
    CallProcedure(window, WM_WINDOWPOSCHANGED, 0, 0);
    if (change.moved && Lives(window))
        CallProcedure(window, WM_MOVE, 0, MAKELPARAM(window->rect.left, window->rect.top));
    if (change.sized && Lives(window))
        CallProcedure(window, WM_SIZE, window->IsMaximised() ? SIZE_MAXIMIZED : SIZE_RESTORED,
                      SizeParam(*window));
}

void AcceptBounds(const std::shared_ptr<Window>& window, const CRect& rect) {
    BoundsChange change;
    change.moved = !(rect.TopLeft() == window->rect.TopLeft());
    change.sized = !(rect.Size() == window->rect.Size());
    window->rect = rect;
    if (change.sized) InvalidateAll(*window, true);
    if (!window->IsMinimised()) SendBoundsMessages(window, change);
}

}  // namespace platform
