#include "platform/window/core/activation.h"

#include "platform/window/core/tree.h"

namespace platform {

namespace {

// How long reports that contradict a request are held to be older than it.
constexpr std::uint64_t kPatience = 300;  // milliseconds

WPARAM ActivateParam(int how, bool minimised) {
    return static_cast<WPARAM>(how) | (minimised ? WPARAM{1} << 16 : 0);
}

// Tells both windows. A procedure may activate another window meanwhile; then the rest is left to that.
void SwitchActive(HWND next, int how, bool minimised) {
    Core& core = Core::Get();
    Activation& activation = core.activation;
    const HWND before = activation.active;
    if (before == next) return;
    const std::uint64_t serial = ++activation.serial;
    if (core.Peek(before)) {
        CallProcedure(before, WM_ACTIVATE, ActivateParam(WA_INACTIVE, minimised), ToLParam(next));
        if (activation.serial != serial) return;
        if (!next && IsSameOrInside(activation.focus, before)) MoveFocus(HWND());
        if (activation.serial != serial) return;
    }
    activation.active = core.Peek(next) ? next : HWND();
    if (!activation.active) return;
    CallProcedure(next, WM_ACTIVATE, ActivateParam(how, false), ToLParam(before));
}

bool CanBeActive(const Window& window) {
    return window.IsShown() && !window.IsMinimised() && !window.IsDisabled() && !window.destroying;
}

bool IsOwnedBy(const Window& window, HWND owner) {
    Core& core = Core::Get();
    for (const Window* at = core.Peek(window.parent); at; at = core.Peek(at->parent))
        if (at->handle == owner) return true;
    return false;
}

}  // namespace

bool ActivateWindow(HWND topLevel, int how) {
    Core& core = Core::Get();
    Window* window = core.Peek(topLevel);
    if (!window || !CanBeActive(*window)) return false;
    Restack(*window, HWND_TOP);
    if (!(core.activation.systemFocus == topLevel)) {
        if (WindowSystem* system = core.SystemOf(*window)) {
            core.activation.asked = topLevel;
            core.activation.askedUntil = system->Now() + kPatience;
            system->Activate(topLevel);
        }
    }
    SwitchActive(topLevel, how, false);
    return true;
}

bool ActivateModalOf(HWND topLevel) {
    Core& core = Core::Get();
    const Window* disabled = core.Peek(topLevel);
    if (!disabled || !disabled->IsDisabled() || disabled->owned.empty()) return false;
    for (std::size_t i = core.stack.size(); i-- > 0;) {
        const Window* window = core.Peek(core.stack[i]);
        if (window && CanBeActive(*window) && IsOwnedBy(*window, topLevel))
            return ActivateWindow(core.stack[i], WA_ACTIVE);
    }
    return false;
}

void DeactivateMinimised(HWND topLevel) {
    Core& core = Core::Get();
    if (core.activation.asked == topLevel) core.activation.asked = HWND();
    if (core.activation.active == topLevel) SwitchActive(HWND(), WA_INACTIVE, true);
}

void PassActivationOn(const Window& topLevel) {
    Core& core = Core::Get();
    if (core.activation.asked == topLevel.handle) core.activation.asked = HWND();
    if (!(core.activation.active == topLevel.handle)) return;
    if (!ActivateWindow(topLevel.parent, WA_ACTIVE)) SwitchActive(HWND(), WA_INACTIVE, false);
}

void FollowSystemFocus() {
    Core& core = Core::Get();
    Activation& activation = core.activation;
    const HWND reported = activation.systemFocus;
    if (activation.asked) {
        if (reported == activation.asked)
            activation.asked = HWND();
        else if (core.Now() < activation.askedUntil)
            return;
        else
            activation.asked = HWND();
    }
    if (reported == activation.active) return;
    if (ActivateModalOf(reported)) return;
    const Window* window = core.Peek(reported);
    SwitchActive(window && CanBeActive(*window) ? reported : HWND(), WA_ACTIVE, false);
}

void NoteKeyFor(HWND topLevel) {
    Core& core = Core::Get();
    if (!core.Peek(topLevel) || core.activation.active == topLevel) return;
    core.activation.systemFocus = topLevel;
    FollowSystemFocus();
}

void MoveFocus(HWND window) {
    Core& core = Core::Get();
    const HWND before = core.activation.focus;
    if (before == window) return;
    core.activation.focus = window;
    if (core.Peek(before)) CallProcedure(before, WM_KILLFOCUS, ToWParam(window), 0);
    // The procedure may have moved it on.
    if (core.Peek(window) && core.activation.focus == window)
        CallProcedure(window, WM_SETFOCUS, ToWParam(before), 0);
}

}  // namespace platform

using namespace platform;

HWND SetFocus(HWND handle) {
    Core& core = Core::Get();
    if (!handle) {
        const HWND before = GetFocus();
        if (core.IsOwningThread()) MoveFocus(HWND());
        return before;
    }
    const Window* window = core.Find(handle);
    if (!window) return HWND();
    const HWND before = core.activation.focus;
    if (!IsEnabledInTree(*window)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HWND();
    }
    const HWND top = TopLevelOf(handle);
    if (!(core.activation.active == top)) ActivateWindow(top, WA_ACTIVE);
    if (core.Peek(handle)) MoveFocus(handle);
    return before;
}

HWND GetFocus() {
    Core& core = Core::Get();
    return core.IsOwningThread() ? core.activation.focus : HWND();
}

HWND GetActiveWindow() {
    Core& core = Core::Get();
    return core.IsOwningThread() ? core.activation.active : HWND();
}

HWND SetActiveWindow(HWND handle) {
    Core& core = Core::Get();
    if (!core.Find(handle)) return HWND();
    const HWND before = core.activation.active;
    const HWND top = TopLevelOf(handle);
    if (!ActivateWindow(top, WA_ACTIVE)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HWND();
    }
    return before;
}

BOOL SetForegroundWindow(HWND handle) {
    Core& core = Core::Get();
    if (!core.Find(handle)) return FALSE;
    const HWND top = TopLevelOf(handle);
    return ActivateWindow(top, WA_ACTIVE);
}
