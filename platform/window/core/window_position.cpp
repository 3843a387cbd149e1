// Moving, sizing, stacking and showing in one call.
#include "platform/window/core/activation.h"
#include "platform/window/core/bounds.h"
#include "platform/window/core/showing.h"
#include "platform/window/core/size_limits.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/window_table.h"

using namespace platform;

namespace {

bool IsPlaceName(HWND after) {
    return after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST;
}

// Whether `after` can name a place for the window: one of the fixed places, or a sibling.
bool CheckAfter(const Window& window, HWND after) {
    if (IsPlaceName(after) || !after) return true;
    const Window* reference = Require(after);
    if (!reference) return false;
    const bool siblings = reference != &window && reference->IsChild() == window.IsChild() &&
                          (!window.IsChild() || reference->parent == window.parent);
    if (!siblings) SetLastError(ERROR_INVALID_PARAMETER);
    return siblings;
}

}  // namespace

BOOL SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags) {
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (!window) return FALSE;
    if (!(flags & SWP_NOSIZE) && (width < 0 || height < 0 || width > kLongestSide || height > kLongestSide)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (!(flags & SWP_NOZORDER) && !CheckAfter(*window, after)) return FALSE;
    CRect rect = window->rect;
    if (!(flags & SWP_NOMOVE)) rect = CRect(CPoint(x, y), rect.Size());
    if (!(flags & SWP_NOSIZE)) rect = CRect(rect.TopLeft(), CSize(width, height));
    const BoundsChange change = ChangeBounds(*window, rect, flags & SWP_NOREDRAW ? Redraw::No : Redraw::Yes);
    if (!(flags & SWP_NOZORDER)) Restack(*window, after ? after : HWND_TOP);
    if (flags & SWP_FRAMECHANGED) {
        UpdateTraits(*window);
        RefreshSizes(window);
        if (!Peek(handle)) return TRUE;
    }
    // Of a minimised window only the place to go back to has changed; it is told when it does.
    if (!window->IsMinimised()) SendBoundsMessages(window, change);
    const Activate activate = flags & SWP_NOACTIVATE ? Activate::No : Activate::Yes;
    if (flags & SWP_SHOWWINDOW && Peek(handle)) SetShown(window, true, activate);
    if (flags & SWP_HIDEWINDOW && Peek(handle)) SetShown(window, false, Activate::No);
    const bool raises = !(flags & SWP_NOZORDER) && !(after == HWND_BOTTOM);
    if (activate == Activate::Yes && (raises || flags & SWP_SHOWWINDOW) && Peek(handle) && !window->IsChild())
        ActivateWindow(handle, WA_ACTIVE);
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
    return SetWindowPos(window, HWND(), x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? UINT{0} : UINT{SWP_NOREDRAW}));
}
