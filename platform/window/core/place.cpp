#include "platform/window/core/place.h"

#include <algorithm>

#include "platform/window/core/activation.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/embedded_window.h"
#include "platform/window/core/maximising.h"
#include "platform/window/core/painting.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

// Positions as far out as a window system can name.
int ClampPosition(int value) {
    return std::clamp(value, -32768, 32767);
}

bool Lives(const std::shared_ptr<Window>& window) {
    return Core::Get().Peek(window->handle) != nullptr;
}

LPARAM SizeParam(const Window& window) {
    return MAKELPARAM(window.rect.Width(), window.rect.Height());
}

// The parts of the parent that a child covered or covers now.
void InvalidateUnder(const Window& child, const CRect& rect) {
    Window* parent = Core::Get().Peek(child.parent);
    if (parent && IsVisibleInTree(*parent)) Invalidate(*parent, rect, true);
}

void TellShown(Window& window, bool shown, Activate activate) {
    WindowSystem* system = Core::Get().SystemOf(window);
    if (!system) return;
    if (!shown)
        system->Show(window.handle, Visibility::Hidden);
    else if (window.IsMinimised())
        system->Show(window.handle, Visibility::Minimised);
    else
        system->Show(window.handle,
                     activate == Activate::Yes ? Visibility::Shown : Visibility::ShownInactive);
}

void SetMinimised(const std::shared_ptr<Window>& window, bool minimised) {
    if (window->IsMinimised() == minimised) return;
    if (WindowSystem* system = Core::Get().SystemOf(*window))
        system->Show(window->handle, minimised ? Visibility::Minimised : Visibility::Restored);
    AcceptMinimised(window, minimised);
}

}  // namespace

PlaceChange ChangeRect(Window& window, const CRect& wanted, Redraw redraw) {
    const CRect rect(CPoint(ClampPosition(wanted.left), ClampPosition(wanted.top)),
                     CSize(wanted.Width(), wanted.Height()));
    const CRect before = window.rect;
    PlaceChange change;
    change.moved = !(rect.TopLeft() == before.TopLeft());
    change.sized = !(rect.Size() == before.Size());
    if (!change.moved && !change.sized) return change;
    window.rect = rect;
    if (!window.IsChild()) {
        // What was reported before this request is older than it.
        Core::Get().queue.DropBounds(window.handle);
        if (WindowSystem* system = Core::Get().SystemOf(window)) system->SetBounds(window.handle, rect);
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

void SendPlaceMessages(const std::shared_ptr<Window>& window, PlaceChange change) {
    if (!window->created || (!change.moved && !change.sized)) return;
    CallProcedure(window, WM_WINDOWPOSCHANGED, 0, 0);
    if (change.moved && Lives(window))
        CallProcedure(window, WM_MOVE, 0, MAKELPARAM(window->rect.left, window->rect.top));
    if (change.sized && Lives(window))
        CallProcedure(window, WM_SIZE, window->IsMaximised() ? SIZE_MAXIMIZED : SIZE_RESTORED,
                      SizeParam(*window));
}

void AcceptPlace(const std::shared_ptr<Window>& window, const CRect& rect) {
    PlaceChange change;
    change.moved = !(rect.TopLeft() == window->rect.TopLeft());
    change.sized = !(rect.Size() == window->rect.Size());
    window->rect = rect;
    if (change.sized) InvalidateAll(*window, true);
    if (!window->IsMinimised()) SendPlaceMessages(window, change);
}

void AcceptMinimised(const std::shared_ptr<Window>& window, bool minimised) {
    if (window->IsMinimised() == minimised) return;
    if (minimised)
        window->style |= WS_MINIMIZE;
    else
        window->style &= ~DWORD{WS_MINIMIZE};
    if (minimised) WithdrawPointer(*window);
    if (!minimised) {
        InvalidateAll(*window, true);
        QueueForPaint(*window);
    }
    CallProcedure(window, WM_WINDOWPOSCHANGED, 0, 0);
    if (!Lives(window)) return;
    const CPoint origin = ScreenOrigin(*window);
    CallProcedure(window, WM_MOVE, 0, MAKELPARAM(origin.x, origin.y));
    if (!Lives(window)) return;
    const WPARAM kind = minimised ? SIZE_MINIMIZED : window->IsMaximised() ? SIZE_MAXIMIZED : SIZE_RESTORED;
    CallProcedure(window, WM_SIZE, kind, minimised ? 0 : SizeParam(*window));
    if (minimised && Lives(window)) DeactivateMinimised(window->handle);
}

void SetShown(const std::shared_ptr<Window>& window, bool shown, Activate activate) {
    if (window->IsShown() == shown) return;
    CallProcedure(window, WM_SHOWWINDOW, shown ? TRUE : FALSE, 0);
    if (shown && Lives(window)) RefreshSizes(window);
    if (!Lives(window) || window->IsShown() == shown) return;
    if (shown)
        window->style |= WS_VISIBLE;
    else
        window->style &= ~DWORD{WS_VISIBLE};
    if (shown) QueueForPaint(*window);
    if (window->IsChild()) {
        FollowEmbeddedWindows();
        if (shown)
            InvalidateAll(*window, true);
        else {
            WithdrawPointer(*window);
            InvalidateUnder(*window, window->rect);
            if (IsSameOrInside(Core::Get().activation.focus, window->handle)) MoveFocus(window->parent);
        }
        return;
    }
    UpdateTraits(*window);
    if (shown) {
        InvalidateAll(*window, true);
        for (HWND child : window->children)
            if (Window* record = Core::Get().Peek(child); record && record->IsShown())
                InvalidateAll(*record, true);
    } else {
        WithdrawPointer(*window);
    }
    TellShown(*window, shown, activate);
    if (!shown) PassActivationOn(*window);
}

}  // namespace platform

using namespace platform;

namespace {

void RaiseAndActivate(HWND window, Activate activate) {
    Window* record = Core::Get().Peek(window);
    if (!record || record->IsChild()) return;
    if (activate == Activate::Yes && !(record->exStyle & WS_EX_NOACTIVATE) &&
        ActivateWindow(window, WA_ACTIVE))
        return;
    if (Window* still = Core::Get().Peek(window)) Restack(*still, HWND_TOP);
}

bool IsPlaceName(HWND after) {
    return after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST;
}

// Whether `after` can name a place for the window: one of the fixed places, or a sibling.
bool CheckAfter(const Window& window, HWND after) {
    if (IsPlaceName(after) || !after) return true;
    const Window* reference = Core::Get().Find(after);
    if (!reference) return false;
    const bool siblings = reference != &window && reference->IsChild() == window.IsChild() &&
                          (!window.IsChild() || reference->parent == window.parent);
    if (!siblings) SetLastError(ERROR_INVALID_PARAMETER);
    return siblings;
}

}  // namespace

BOOL ShowWindow(HWND handle, int command) {
    if (ForeignHandles::IsForeign(handle)) return ShowForeign(handle, command);
    const std::shared_ptr<Window> window = Core::Get().Share(handle);
    if (!window) return FALSE;
    const BOOL before = window->IsShown();
    switch (command) {
        case SW_HIDE:
            SetShown(window, false, Activate::No);
            break;
        case SW_MINIMIZE:
        case SW_SHOWMINIMIZED:
            if (window->IsChild()) break;
            // One that is not shown yet goes straight into the task list.
            if (window->IsShown())
                SetMinimised(window, true);
            else
                AcceptMinimised(window, true);
            if (Core::Get().Peek(handle)) SetShown(window, true, Activate::No);
            break;
        case SW_SHOWNA:
            SetShown(window, true, Activate::No);
            break;
        case SW_SHOWNOACTIVATE:
        case SW_SHOWNORMAL:
        case SW_SHOW:
        case SW_MAXIMIZE:
        case SW_RESTORE: {
            const Activate activate = command == SW_SHOWNOACTIVATE ? Activate::No : Activate::Yes;
            // One that was minimised goes back to what it was.
            const bool comesBack = window->IsMinimised() && command != SW_MAXIMIZE;
            if (command != SW_SHOW) SetMinimised(window, false);
            if (command != SW_SHOW && !comesBack && Core::Get().Peek(handle))
                SetMaximised(window, command == SW_MAXIMIZE);
            if (!Core::Get().Peek(handle)) break;
            if (Core::Get().Peek(handle)) SetShown(window, true, activate);
            if (Core::Get().Peek(handle) && !window->IsMinimised()) RaiseAndActivate(handle, activate);
            break;
        }
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            break;
    }
    return before;
}

BOOL IsWindowVisible(HWND handle) {
    if (ForeignHandles::IsForeign(handle)) return IsForeignShown(handle);
    const Window* window = Core::Get().Find(handle);
    return window && IsVisibleInTree(*window);
}

BOOL IsIconic(HWND handle) {
    const Window* window = Core::Get().Find(handle);
    return window && window->IsMinimised();
}

BOOL SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags) {
    const std::shared_ptr<Window> window = Core::Get().Share(handle);
    if (!window) return FALSE;
    if (!(flags & SWP_NOSIZE) && (width < 0 || height < 0 || width > kLongestSide || height > kLongestSide)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (!(flags & SWP_NOZORDER) && !CheckAfter(*window, after)) return FALSE;
    CRect rect = window->rect;
    if (!(flags & SWP_NOMOVE)) rect = CRect(CPoint(x, y), rect.Size());
    if (!(flags & SWP_NOSIZE)) rect = CRect(rect.TopLeft(), CSize(width, height));
    const PlaceChange change = ChangeRect(*window, rect, flags & SWP_NOREDRAW ? Redraw::No : Redraw::Yes);
    if (!(flags & SWP_NOZORDER)) Restack(*window, after ? after : HWND_TOP);
    if (flags & SWP_FRAMECHANGED) {
        UpdateTraits(*window);
        RefreshSizes(window);
        if (!Core::Get().Peek(handle)) return TRUE;
    }
    // Of a minimised window only the place to go back to has changed; it is told when it does.
    if (!window->IsMinimised()) SendPlaceMessages(window, change);
    const Activate activate = flags & SWP_NOACTIVATE ? Activate::No : Activate::Yes;
    if (flags & SWP_SHOWWINDOW && Core::Get().Peek(handle)) SetShown(window, true, activate);
    if (flags & SWP_HIDEWINDOW && Core::Get().Peek(handle)) SetShown(window, false, Activate::No);
    const bool raises = !(flags & SWP_NOZORDER) && !(after == HWND_BOTTOM);
    if (activate == Activate::Yes && (raises || flags & SWP_SHOWWINDOW) && Core::Get().Peek(handle) &&
        !window->IsChild())
        ActivateWindow(handle, WA_ACTIVE);
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
    return SetWindowPos(window, HWND(), x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? UINT{0} : UINT{SWP_NOREDRAW}));
}

BOOL GetWindowRect(HWND handle, RECT* rect) {
    if (rect) *rect = RECT{0, 0, 0, 0};
    const Window* window = Core::Get().Find(handle);
    if (!window) return FALSE;
    if (!rect) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *rect = ScreenRect(*window);
    return TRUE;
}

BOOL GetClientRect(HWND handle, RECT* rect) {
    if (rect) *rect = RECT{0, 0, 0, 0};
    const Window* window = Core::Get().Find(handle);
    if (!window) return FALSE;
    if (!rect) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *rect = window->Bounds();
    return TRUE;
}

BOOL ClientToScreen(HWND handle, POINT* point) {
    const Window* window = Core::Get().Find(handle);
    if (!window || !point) {
        if (window) SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    CPoint moved(*point);
    const CPoint origin = ScreenOrigin(*window);
    moved.Offset(origin.x, origin.y);
    *point = moved;
    return TRUE;
}

BOOL ScreenToClient(HWND handle, POINT* point) {
    const Window* window = Core::Get().Find(handle);
    if (!window || !point) {
        if (window) SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    CPoint moved(*point);
    const CPoint origin = ScreenOrigin(*window);
    moved.Offset(-origin.x, -origin.y);
    *point = moved;
    return TRUE;
}

BOOL AdjustWindowRectEx(RECT* rect, DWORD, BOOL, DWORD exStyle) {
    constexpr int kClientEdge = 2;
    if (!rect) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (exStyle & WS_EX_CLIENTEDGE) {
        rect->left -= kClientEdge;
        rect->top -= kClientEdge;
        rect->right += kClientEdge;
        rect->bottom += kClientEdge;
    }
    return TRUE;
}
