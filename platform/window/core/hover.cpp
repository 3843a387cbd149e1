#include "platform/window/core/hover.h"

#include <utility>

#include "platform/window/core/display.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

struct Hover {
    HWND hovered;
    HWND tracked;
    bool checkPending = false;
};

Hover& State() {
    return Lasting<Hover>();
}

}  // namespace

HWND HoveredWindow() {
    return State().hovered;
}

void SetHoveredWindow(HWND window) {
    State().hovered = window;
}

HWND TrackedWindow() {
    return State().tracked;
}

bool LeaveTracked(HWND now, MessageQueue::Order place) {
    const HWND tracked = State().tracked;
    if (!tracked || tracked == now) return false;
    if (!Peek(tracked)) {
        State().tracked = HWND();
        return false;
    }
    MSG message{};
    message.hwnd = tracked;
    message.message = WM_MOUSELEAVE;
    message.time = static_cast<DWORD>(CurrentTime());
    message.pt = PointerPosition();
    // Without memory the window is told with a later move.
    const bool posted = place ? Queue().PostBefore(place, message) : Queue().PostFirst(message);
    if (posted) State().tracked = HWND();
    return posted;
}

void RequestPointerCheck() {
    if (!State().tracked || State().checkPending) return;
    State().checkPending = true;
    Queue().RequestCheck(PointerCheck());
}

void NotePointerCheck() {
    State().checkPending = false;
}

void ResetHover() {
    ResetLasting<Hover>();
}

}  // namespace platform

using namespace platform;

BOOL TrackMouseEvent(TRACKMOUSEEVENT* request) {
    if (!request || request->cbSize != sizeof(TRACKMOUSEEVENT) ||
        (request->dwFlags & ~DWORD{TME_CANCEL}) != TME_LEAVE) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const HWND window = request->hwndTrack;
    if (!Require(window)) return FALSE;
    if (request->dwFlags & TME_CANCEL) {
        if (Lasting<Hover>().tracked == window) Lasting<Hover>().tracked = HWND();
        return TRUE;
    }
    Lasting<Hover>().tracked = window;
    if (!(Lasting<Hover>().hovered == window)) RequestPointerCheck();
    return TRUE;
}
