#include "platform/window/core/activation.h"

#include <new>

#include "platform/window/core/tree.h"

namespace platform {

namespace {

// How long the window system has to follow a request. Reports that contradict it are held to be older until
// then; afterwards it is held to be refused.
constexpr std::uint64_t kPatience = 800;  // milliseconds

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
    if (Window* const leaving = core.Peek(before)) {
        if (IsSameOrInside(activation.focus, before)) leaving->lastFocus = activation.focus;
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
    std::vector<HWND> group;
    try {
        group = OwnerGroup(*disabled);
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (std::size_t i = group.size(); i-- > 0;) {
        const Window* window = core.Peek(group[i]);
        if (window && CanBeActive(*window)) return ActivateWindow(group[i], WA_ACTIVE);
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
    bool refused = false;
    if (activation.asked) {
        refused = !(reported == activation.asked);
        if (refused && core.Now() < activation.askedUntil) return;
        activation.asked = HWND();
    }
    if (reported == activation.active) return;
    // A window system that has just refused is not asked again.
    if (!refused && ActivateModalOf(reported)) return;
    const Window* window = core.Peek(reported);
    SwitchActive(window && CanBeActive(*window) ? reported : HWND(), WA_ACTIVE, false);
}

void RequestFocusCheck() {
    Core::Get().queue.RequestCheck(FocusCheck());
}

void NoticeRefusedActivation() {
    Core& core = Core::Get();
    if (core.activation.asked && core.Now() >= core.activation.askedUntil) RequestFocusCheck();
}

std::optional<std::uint64_t> ActivationAnswerDue() {
    const Activation& activation = Core::Get().activation;
    return activation.asked ? std::optional(activation.askedUntil) : std::nullopt;
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
