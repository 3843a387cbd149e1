#include "platform/window/core/capture.h"

#include <utility>

#include "platform/window/core/display.h"
#include "platform/window/core/hover.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

struct Capture {
    HWND window;
    void (*lost)() = nullptr;
};

Capture& State() {
    return Lasting<Capture>();
}

}  // namespace

HWND CaptureWindow() {
    return State().window;
}

bool IsPointerCaptured() {
    return Peek(State().window) != nullptr;
}

bool SetPointerCapture(HWND window, void (*lost)()) {
    Capture& capture = State();
    if (capture.window == window) {
        if (lost) capture.lost = lost;
        return true;
    }
    capture.window = window;
    if (const auto tellLost = std::exchange(capture.lost, lost)) tellLost();
    const Window* record = Peek(window);
    const Window* top = record ? TopLevelOf(*record) : nullptr;
    WindowSystem* system = top ? SystemOf(*top) : nullptr;
    if (!system || system->GrabPointer(top->handle)) return true;
    ReleasePointerCapture();
    return false;
}

void ReleasePointerCapture() {
    Capture& capture = State();
    if (!capture.window) return;
    capture.window = HWND();
    const auto tellLost = std::exchange(capture.lost, nullptr);
    if (WindowSystem* system = System()) system->ReleasePointer();
    RequestPointerCheck();
    if (tellLost) tellLost();
}

void WithdrawPointer(const Window& window) {
    if (IsSameOrInside(State().window, window.handle)) ReleasePointerCapture();
    if (IsSameOrInside(HoveredWindow(), window.handle)) SetHoveredWindow(HWND());
    if (IsSameOrInside(TrackedWindow(), window.handle)) RequestPointerCheck();
}

void ForgetCapture() {
    ResetLasting<Capture>();
}

}  // namespace platform

using namespace platform;

HWND SetCapture(HWND window) {
    const HWND before = GetCapture();
    if (!Require(window)) return HWND();
    if (SetPointerCapture(window)) return before;
    SetLastError(ERROR_ACCESS_DENIED);
    return HWND();
}

BOOL ReleaseCapture() {
    if (!IsOwningThread()) return FALSE;
    ReleasePointerCapture();
    return TRUE;
}

HWND GetCapture() {
    if (!IsOwningThread()) return HWND();
    return IsPointerCaptured() ? CaptureWindow() : HWND();
}
