#include "platform/window/core/activation.h"

#include <new>

#include "platform/window/core/display.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/message_queue.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

// How long the window system has to follow a request. Reports that contradict it are held to be older until
// then; afterwards it is held to be refused.
constexpr std::uint64_t kPatience = 800;  // milliseconds

struct Activation {
    HWND active;       // a top-level
    HWND focus;        // it, or one of its children
    HWND systemFocus;  // what the window system last said
    // The core activates at once and the window system follows; what it reports meanwhile may be older than
    // the request.
    HWND asked;
    std::uint64_t askedUntil = 0;
    std::uint64_t serial = 0;  // counts changes of `active`
};

Activation& State() {
    return Lasting<Activation>();
}

WPARAM ActivateParam(int how, bool minimised) {
    return static_cast<WPARAM>(how) | (minimised ? WPARAM{1} << 16 : 0);
}

// Tells both windows. A procedure may activate another window meanwhile; then the rest is left to that.
void SwitchActive(HWND next, int how, bool minimised) {
    Activation& activation = State();
    const HWND before = activation.active;
    if (before == next) return;
    const std::uint64_t serial = ++activation.serial;
    if (Window* const leaving = Peek(before)) {
        if (IsSameOrInside(activation.focus, before)) leaving->lastFocus = activation.focus;
        CallProcedure(before, WM_ACTIVATE, ActivateParam(WA_INACTIVE, minimised), ToLParam(next));
        if (activation.serial != serial) return;
        if (!next && IsSameOrInside(activation.focus, before)) MoveFocus(HWND());
        if (activation.serial != serial) return;
    }
    activation.active = Peek(next) ? next : HWND();
    if (!activation.active) return;
    CallProcedure(next, WM_ACTIVATE, ActivateParam(how, false), ToLParam(before));
}

bool CanBeActive(const Window& window) {
    return window.IsShown() && !window.IsMinimised() && !window.IsDisabled() && !window.destroying;
}

}  // namespace

HWND ActiveWindow() {
    return State().active;
}

HWND FocusedWindow() {
    return State().focus;
}

HWND SystemFocus() {
    return State().systemFocus;
}

bool ActivateWindow(HWND topLevel, int how) {
    Window* window = Peek(topLevel);
    if (!window || !CanBeActive(*window)) return false;
    Restack(*window, HWND_TOP);
    if (!(State().systemFocus == topLevel)) {
        if (WindowSystem* system = SystemOf(*window)) {
            State().asked = topLevel;
            State().askedUntil = system->Now() + kPatience;
            system->Activate(topLevel);
        }
    }
    SwitchActive(topLevel, how, false);
    return true;
}

bool ActivateModalOf(HWND topLevel) {
    const Window* disabled = Peek(topLevel);
    if (!disabled || !disabled->IsDisabled() || disabled->owned.empty()) return false;
    std::vector<HWND> group;
    try {
        group = OwnerGroup(*disabled);
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (std::size_t i = group.size(); i-- > 0;) {
        const Window* window = Peek(group[i]);
        if (window && CanBeActive(*window)) return ActivateWindow(group[i], WA_ACTIVE);
    }
    return false;
}

void DeactivateMinimised(HWND topLevel) {
    if (State().asked == topLevel) State().asked = HWND();
    if (State().active == topLevel) SwitchActive(HWND(), WA_INACTIVE, true);
}

void PassActivationOn(const Window& topLevel) {
    if (State().asked == topLevel.handle) State().asked = HWND();
    if (!(State().active == topLevel.handle)) return;
    if (!ActivateWindow(topLevel.parent, WA_ACTIVE)) SwitchActive(HWND(), WA_INACTIVE, false);
}

void FollowSystemFocus() {
    Activation& activation = State();
    const HWND reported = activation.systemFocus;
    bool refused = false;
    if (activation.asked) {
        refused = !(reported == activation.asked);
        if (refused && CurrentTime() < activation.askedUntil) return;
        activation.asked = HWND();
    }
    if (reported == activation.active) return;
    // A window system that has just refused is not asked again.
    if (!refused && ActivateModalOf(reported)) return;
    const Window* window = Peek(reported);
    SwitchActive(window && CanBeActive(*window) ? reported : HWND(), WA_ACTIVE, false);
}

void RequestFocusCheck() {
    Queue().RequestCheck(FocusCheck());
}

void NoticeRefusedActivation() {
    if (State().asked && CurrentTime() >= State().askedUntil) RequestFocusCheck();
}

std::optional<std::uint64_t> ActivationAnswerDue() {
    const Activation& activation = State();
    return activation.asked ? std::optional(activation.askedUntil) : std::nullopt;
}

void NoteKeyFor(HWND topLevel) {
    if (!Peek(topLevel) || State().active == topLevel) return;
    State().systemFocus = topLevel;
    FollowSystemFocus();
}

void MoveFocus(HWND window) {
    const HWND before = State().focus;
    if (before == window) return;
    State().focus = window;
    if (Peek(before)) CallProcedure(before, WM_KILLFOCUS, ToWParam(window), 0);
    // The procedure may have moved it on.
    if (Peek(window) && State().focus == window) CallProcedure(window, WM_SETFOCUS, ToWParam(before), 0);
}

void NoteSystemFocus(const event::FocusChanged& change) {
    HWND& now = State().systemFocus;
    if (change.focused)
        now = change.window;
    else if (now == change.window)
        now = HWND();
    else
        return;
    RequestFocusCheck();
}

void ForgetActivation(HWND window) {
    if (State().focus == window) State().focus = HWND();
    if (State().active == window) State().active = HWND();
}

void ForgetSystemFocus() {
    State().systemFocus = State().asked = HWND();
}

void ResetActivation() {
    ResetLasting<Activation>();
}

}  // namespace platform

using namespace platform;

HWND SetFocus(HWND handle) {
    if (!handle) {
        const HWND before = GetFocus();
        if (IsOwningThread()) MoveFocus(HWND());
        return before;
    }
    const Window* window = Require(handle);
    if (!window) return HWND();
    const HWND before = FocusedWindow();
    if (!IsEnabledInTree(*window)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HWND();
    }
    const HWND top = TopLevelOf(handle);
    if (!(ActiveWindow() == top)) ActivateWindow(top, WA_ACTIVE);
    if (Peek(handle)) MoveFocus(handle);
    return before;
}

HWND GetFocus() {
    return IsOwningThread() ? FocusedWindow() : HWND();
}

HWND GetActiveWindow() {
    return IsOwningThread() ? ActiveWindow() : HWND();
}

HWND SetActiveWindow(HWND handle) {
    if (!Require(handle)) return HWND();
    const HWND before = ActiveWindow();
    const HWND top = TopLevelOf(handle);
    if (!ActivateWindow(top, WA_ACTIVE)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HWND();
    }
    return before;
}

BOOL SetForegroundWindow(HWND handle) {
    if (!Require(handle)) return FALSE;
    const HWND top = TopLevelOf(handle);
    return ActivateWindow(top, WA_ACTIVE);
}
