// What a user does with several events: clicks, drags, notches of the wheel, typed text.
#include <platform/headless.h>
#include <platform/window.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/graphics/scale.h"
#include "platform/window/core/control.h"
#include "platform/window/headless/headless_system.h"
#include "platform/window/headless/key_text.h"

using namespace platform;

namespace Headless {

namespace {

using Actions = std::vector<HeadlessSystem::Action>;

// One after the other, each with what it causes. A loop that blocks in between takes the rest.
void Perform(Actions actions) {
    HeadlessSystem* system = HeadlessSystem::Current();
    if (!system) return;
    system->Expect(std::move(actions));
    while (system == HeadlessSystem::Current() && system->PerformNext())
        RunPending();
}

// What was clicked before is no part of the gesture.
void PerformAnew(Actions actions) {
    RunPending();
    ForgetLastClick();
    Perform(std::move(actions));
}

bool IsButton(int button) {
    return button >= 1 && button <= 3;
}

HeadlessSystem::Action MoveTo(POINT screen) {
    return [screen](HeadlessSystem& system) { system.MovePointer(ScaledPoint(screen, ScreenScale())); };
}

void AddButton(Actions& actions, int button, bool down) {
    actions.push_back([button, down](HeadlessSystem& system) { system.Button(button, down); });
}

void AddKey(Actions& actions, UINT virtualKey, bool down, char16_t text = 0) {
    actions.push_back(
        [virtualKey, down, text](HeadlessSystem& system) { system.KeyWithText(virtualKey, down, text); });
}

void ClickTimes(int times, int x, int y, int button) {
    if (!IsButton(button)) return;
    Actions actions{MoveTo({x, y})};
    for (int i = 0; i < times; ++i) {
        AddButton(actions, button, true);
        AddButton(actions, button, false);
    }
    PerformAnew(std::move(actions));
}

CPoint OnScreen(HWND window, int x, int y) {
    POINT point{x, y};
    ClientToScreen(window, &point);
    return point;
}

}  // namespace

void Wheel(int notches) {
    const int delta = notches > 0 ? WHEEL_DELTA : -WHEEL_DELTA;
    Perform(Actions(static_cast<std::size_t>(std::abs(std::clamp(notches, -1000, 1000))),
                    [delta](HeadlessSystem& system) { system.Wheel(delta); }));
}

void Type(const CString& text) {
    Actions actions;
    for (int i = 0; i < text.GetLength(); ++i) {
        const WCHAR unit = text[i];
        if (unit == u'\n' && i > 0 && text[i - 1] == u'\r') continue;
        const KeyStroke stroke = KeyForText(unit);
        if (stroke.shift) AddKey(actions, VK_SHIFT, true);
        AddKey(actions, stroke.virtualKey, true, stroke.text);
        AddKey(actions, stroke.virtualKey, false);
        if (stroke.shift) AddKey(actions, VK_SHIFT, false);
    }
    Perform(std::move(actions));
}

void Click(int x, int y, int button) {
    ClickTimes(1, x, y, button);
}

void DoubleClick(int x, int y, int button) {
    ClickTimes(2, x, y, button);
}

void Drag(int fromX, int fromY, int toX, int toY, int presses) {
    constexpr int kStep = 8;  // pixels
    const int way = std::max(std::abs(toX - fromX), std::abs(toY - fromY));
    const int steps = std::clamp(way / kStep, 2, 64);
    Actions actions{MoveTo({fromX, fromY})};
    for (int press = 1; press < presses; ++press) {
        AddButton(actions, 1, true);
        AddButton(actions, 1, false);
    }
    AddButton(actions, 1, true);
    for (int step = 1; step <= steps; ++step)
        actions.push_back(
            MoveTo({fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps}));
    AddButton(actions, 1, false);
    PerformAnew(std::move(actions));
}

void MovePointer(HWND window, int x, int y) {
    const CPoint point = OnScreen(window, x, y);
    MovePointer(point.x, point.y);
}

void Click(HWND window, int x, int y, int button) {
    const CPoint point = OnScreen(window, x, y);
    Click(point.x, point.y, button);
}

void DoubleClick(HWND window, int x, int y, int button) {
    const CPoint point = OnScreen(window, x, y);
    DoubleClick(point.x, point.y, button);
}

void Drag(HWND window, int fromX, int fromY, int toX, int toY, int presses) {
    const CPoint from = OnScreen(window, fromX, fromY);
    const CPoint to = OnScreen(window, toX, toY);
    Drag(from.x, from.y, to.x, to.y, presses);
}

}  // namespace Headless
