#include "platform/window/core/showing.h"

#include "platform/window/core/activation.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/display.h"
#include "platform/window/core/embedded_window.h"
#include "platform/window/core/foreign.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/maximising.h"
#include "platform/window/core/minimising.h"
#include "platform/window/core/size_limits.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

bool Lives(const std::shared_ptr<Window>& window) {
    return Peek(window->handle) != nullptr;
}

void TellShown(Window& window, bool shown, Activate activate) {
    WindowSystem* system = SystemOf(window);
    if (!system) return;
    if (!shown)
        system->Show(window.handle, Visibility::Hidden);
    else if (window.IsMinimised())
        system->Show(window.handle, Visibility::Minimised);
    else
        system->Show(window.handle,
                     activate == Activate::Yes ? Visibility::Shown : Visibility::ShownInactive);
}

void RaiseAndActivate(HWND window, Activate activate) {
    Window* record = Peek(window);
    if (!record || record->IsChild()) return;
    if (activate == Activate::Yes && !(record->exStyle & WS_EX_NOACTIVATE) &&
        ActivateWindow(window, WA_ACTIVE))
        return;
    if (Window* still = Peek(window)) Restack(*still, HWND_TOP);
}

}  // namespace

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
            if (IsSameOrInside(FocusedWindow(), window->handle)) MoveFocus(window->parent);
        }
        return;
    }
    UpdateTraits(*window);
    if (shown) {
        InvalidateAll(*window, true);
        for (HWND child : window->children)
            if (Window* record = Peek(child); record && record->IsShown()) InvalidateAll(*record, true);
    } else {
        WithdrawPointer(*window);
    }
    TellShown(*window, shown, activate);
    if (!shown) PassActivationOn(*window);
}

}  // namespace platform

using namespace platform;

BOOL ShowWindow(HWND handle, int command) {
    if (ForeignHandles::IsForeign(handle)) return ShowForeign(handle, command);
    const std::shared_ptr<Window> window = RequireShared(handle);
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
            if (Peek(handle)) SetShown(window, true, Activate::No);
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
            if (command != SW_SHOW && !comesBack && Peek(handle))
                SetMaximised(window, command == SW_MAXIMIZE);
            if (!Peek(handle)) break;
            if (Peek(handle)) SetShown(window, true, activate);
            if (Peek(handle) && !window->IsMinimised()) RaiseAndActivate(handle, activate);
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
    const Window* window = Require(handle);
    return window && IsVisibleInTree(*window);
}
