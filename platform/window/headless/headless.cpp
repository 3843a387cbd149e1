#include <platform/headless.h>
#include <platform/window.h>

#include <algorithm>

#include "platform/window/core/control.h"
#include "platform/window/headless/headless_system.h"

using namespace platform;

namespace Headless {

namespace {

constexpr int kLongestScreenSide = 16384;

CRect RectOnTopLevel(HWND window, HWND* topLevel) {
    CRect rect;
    GetClientRect(window, rect);
    while (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) {
        CRect own;
        CRect parent;
        const HWND above = GetParent(window);
        GetWindowRect(window, own);
        GetWindowRect(above, parent);
        rect.OffsetRect(own.left - parent.left, own.top - parent.top);
        window = above;
    }
    *topLevel = window;
    return rect;
}

}  // namespace

bool Use(int screenWidth, int screenHeight) {
    const int width = std::clamp(screenWidth, 1, kLongestScreenSide);
    const int height = std::clamp(screenHeight, 1, kLongestScreenSide);
    if (!UseHeadlessWindowSystem(width, height)) return false;
    HeadlessSystem::Current()->SetScreenSize(width, height);
    return true;
}

void MovePointer(int x, int y) {
    if (HeadlessSystem* system = HeadlessSystem::Current()) system->MovePointer(POINT{x, y});
    RunPending();
}

void ButtonDown(int button) {
    HeadlessSystem* system = HeadlessSystem::Current();
    if (system && button >= 1 && button <= 3) system->Button(button, true);
    RunPending();
}

void ButtonUp(int button) {
    HeadlessSystem* system = HeadlessSystem::Current();
    if (system && button >= 1 && button <= 3) system->Button(button, false);
    RunPending();
}

void KeyDown(UINT virtualKey) {
    if (HeadlessSystem* system = HeadlessSystem::Current()) system->Key(virtualKey, true);
    RunPending();
}

void KeyUp(UINT virtualKey) {
    if (HeadlessSystem* system = HeadlessSystem::Current()) system->Key(virtualKey, false);
    RunPending();
}

void RequestClose(HWND window) {
    if (HeadlessSystem* system = HeadlessSystem::Current()) system->RequestClose(window);
    RunPending();
}

void Advance(unsigned milliseconds) {
    HeadlessSystem* system = HeadlessSystem::Current();
    RunPending();
    if (!system) return;
    const std::uint64_t end = system->Now() + milliseconds;
    while (system == HeadlessSystem::Current()) {
        const std::optional<std::uint64_t> due = NextTimerDue();
        if (!due || *due > end) break;
        system->SetClock(*due);
        RunPending();
    }
    if (system == HeadlessSystem::Current()) system->SetClock(end);
    RunPending();
}

void RunPending() {
    RunPendingMessages();
}

void WhenIdle(void (*step)(void*), void* argument) {
    HeadlessSystem* system = HeadlessSystem::Current();
    if (system && step) system->AddStep(step, argument);
}

Picture Capture(HWND window) {
    Picture picture;
    const HeadlessSystem* system = HeadlessSystem::Current();
    if (!system || !IsWindow(window)) return picture;
    HWND topLevel;
    const CRect part = RectOnTopLevel(window, &topLevel);
    const HeadlessSystem::NativeWindow* native = system->Find(topLevel);
    if (!native) return picture;
    picture.width = part.Width();
    picture.height = part.Height();
    picture.argb = system->ShownPixels(*native, part);
    return picture;
}

Picture CaptureScreen() {
    Picture picture;
    HeadlessSystem* system = HeadlessSystem::Current();
    if (!system) return picture;
    const CSize size = system->ScreenSize();
    picture.width = size.cx;
    picture.height = size.cy;
    picture.argb = system->ScreenPixels();
    return picture;
}

UINT CursorShown() {
    const HeadlessSystem* system = HeadlessSystem::Current();
    switch (system ? system->CursorShown() : CursorShape::Arrow) {
        case CursorShape::Hand:
            return 32649;
        case CursorShape::IBeam:
            return 32513;
        case CursorShape::SizeAll:
            return 32646;
        case CursorShape::None:
            return 0;
        case CursorShape::Arrow:
            break;
    }
    return 32512;
}

}  // namespace Headless
