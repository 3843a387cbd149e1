#include <platform/headless.h>
#include <platform/window.h>

#include <algorithm>

#include "platform/graphics/scale.h"
#include "platform/window/core/control.h"
#include "platform/window/core/system_cursors.h"
#include "platform/window/headless/headless_system.h"

using namespace platform;

namespace Headless {

namespace {

constexpr int kLongestScreenSide = 16384;
constexpr int kLeastDpi = 24;
constexpr int kMostDpi = 960;

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

bool Use(int screenWidth, int screenHeight, int dpi) {
    const int width = std::clamp(screenWidth, 1, kLongestScreenSide);
    const int height = std::clamp(screenHeight, 1, kLongestScreenSide);
    if (!UseHeadlessWindowSystem(width, height)) return false;
    HeadlessSystem::Current()->SetScreen(width, height, std::clamp(dpi, kLeastDpi, kMostDpi));
    SettleScreenScale();
    return true;
}

void SetMonitors(const std::vector<Monitor>& monitors) {
    HeadlessSystem* system = HeadlessSystem::Current();
    if (!system) return;
    std::vector<platform::Monitor> all;
    all.reserve(monitors.size());
    for (const Monitor& monitor : monitors)
        all.push_back({monitor.bounds, monitor.work});
    system->SetMonitors(std::move(all));
}

void MovePointer(int x, int y) {
    if (HeadlessSystem* system = HeadlessSystem::Current())
        system->MovePointer(ScaledPoint({x, y}, ScreenScale()));
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
        // What is due and does not come stands behind a WM_QUIT, or behind a window that paints without end.
        const std::optional<std::uint64_t> left = NextTimerDue();
        if (left && *left <= *due) break;
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

HWND AddForeignWindow(LPCWSTR className, LPCWSTR title, HWND parent, const RECT* place,
                      std::uint32_t colour) {
    HeadlessSystem* system = HeadlessSystem::Current();
    if (!system) return HWND();
    ForeignTree::Node node;
    node.window.className = className;
    node.window.title = title;
    node.place = place ? ScaledRect(*place, ScreenScale()) : CRect(CPoint(0, 0), system->ScreenSize());
    node.colour = colour;
    if (parent) {
        const std::optional<ForeignId> in = ForeignOfHandle(parent);
        if (!in) return HWND();
        node.parent = *in;
    }
    return HandleOfForeign(system->OtherPrograms().Add(std::move(node)));
}

void CloseForeignWindow(HWND window) {
    HeadlessSystem* system = HeadlessSystem::Current();
    const std::optional<ForeignId> id = ForeignOfHandle(window);
    if (system && id) system->OtherPrograms().Close(*id);
    RunPending();
}

Picture Capture(HWND window) {
    Picture picture;
    const HeadlessSystem* system = HeadlessSystem::Current();
    if (!system || !IsWindow(window)) return picture;
    HWND topLevel;
    const CRect units = RectOnTopLevel(window, &topLevel);
    const HeadlessSystem::NativeWindow* native = system->Find(topLevel);
    if (!native) return picture;
    const CRect part = ScaledRect(units, ScreenScale());
    picture.width = part.Width();
    picture.height = part.Height();
    picture.argb = system->ShownPixels(*native, part);
    return picture;
}

Picture CaptureScreen() {
    Picture picture;
    HeadlessSystem* system = HeadlessSystem::Current();
    if (!system) return picture;
    const CSize size = system->ScreenSize();  // in pixels
    picture.width = size.cx;
    picture.height = size.cy;
    picture.argb = system->ScreenPixels();
    return picture;
}

Picture CaptureIcon(HWND window) {
    Picture picture;
    const HeadlessSystem* system = HeadlessSystem::Current();
    const HeadlessSystem::NativeWindow* native = system ? system->Find(window) : nullptr;
    if (!native) return picture;
    const auto& [large, small] = native->traits.icons;
    if (!large && !small) return picture;
    const Surface& icon = large ? *large : *small;
    picture.width = icon.Width();
    picture.height = icon.Height();
    for (int y = 0; y < icon.Height(); ++y)
        picture.argb.insert(picture.argb.end(), icon.Row(y), icon.Row(y) + icon.Width());
    return picture;
}

UINT CursorShown() {
    const HeadlessSystem* system = HeadlessSystem::Current();
    const CursorShape shape = system ? system->CursorShown() : CursorShape::Arrow;
    const bool drops = shape == CursorShape::DropCopy || shape == CursorShape::DropMove;
    return platform::IdOfCursor(drops ? CursorShape::Arrow : shape);
}

}  // namespace Headless
