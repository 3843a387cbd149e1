#include "platform/window/core/display.h"

#include <algorithm>
#include <chrono>
#include <mutex>

#include "platform/graphics/scale.h"
#include "platform/window/core/control.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/notifications.h"
#include "platform/window/core/scaled_system.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

struct Display {
    std::unique_ptr<ScaledSystem> system;
    int wantedScale = 1;  // pixels to a unit of the screen; 0: what the screen asks for
    unsigned serial = 1;
    bool headless = false;
    bool lost = false;
};

Display& State() {
    return Lasting<Display>();
}

// Of changes of the window system, which the owner of the windows reads freely.
std::mutex guard;

void Adopt(std::unique_ptr<ScaledSystem> fresh) {
    {
        std::lock_guard lock(guard);
        State().system = std::move(fresh);
    }
    SettleScreenScale();
    SystemChosen();
}

}  // namespace

WindowSystem* System() {
    const Display& display = State();
    return display.lost ? nullptr : display.system.get();
}

WindowSystem* SystemOf(const Window& topLevel) {
    return topLevel.systemSerial == SystemSerial() ? System() : nullptr;
}

unsigned SystemSerial() {
    return State().serial;
}

bool IsSystemLost() {
    return State().lost;
}

void MarkSystemLost() {
    State().lost = true;
    SystemLost();
}

void DropSystem() {
    Display& display = State();
    std::unique_ptr<ScaledSystem> ending;
    {
        std::lock_guard lock(guard);
        ending = std::move(display.system);
        ++display.serial;
        display.lost = false;
        display.headless = false;
    }
    SystemGone();
}

WindowSystem* EnsureSystem() {
    if (!ClaimThread()) return nullptr;
    Display& display = State();
    if (display.system && !display.system->IsAlive()) MarkSystemLost();
    if (display.system && !display.lost) return display.system.get();
    if (display.lost && WindowCount() != 0) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    DropSystem();
    SetLastError(ERROR_SUCCESS);
    std::unique_ptr<ScaledSystem> fresh = ScaledSystem::Over(EventSink(), &MakeX11WindowSystem);
    if (!fresh) {
        if (GetLastError() == ERROR_SUCCESS) SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    Adopt(std::move(fresh));
    return display.system.get();
}

bool UseHeadlessWindowSystem(int screenWidth, int screenHeight) {
    if (!ClaimThread()) return false;
    Display& display = State();
    // Windows of a lost display stay as they are: records without a display.
    if (display.system && !display.lost && WindowCount() != 0) return display.headless;
    if (display.system && !display.lost && display.headless) return true;
    DropSystem();
    Adopt(ScaledSystem::Over(EventSink(), [&](WindowEvents& events) {
        return MakeHeadlessWindowSystem(events, screenWidth, screenHeight);
    }));
    display.headless = true;
    return display.system != nullptr;
}

void SettleScreenScale() {
    constexpr int kUsualDpi = 96;
    if (WindowCount() != 0) return;
    // Halves go down: what is too small can still be read.
    const Display& display = State();
    const int dpi = display.system ? display.system->Dpi() : kUsualDpi;
    const int asked = std::clamp((dpi + kUsualDpi / 2 - 1) / kUsualDpi, 1, kMostScale);
    SetScreenScaleTo(display.wantedScale != 0 ? display.wantedScale : asked);
}

void WakeSystem() {
    std::lock_guard lock(guard);
    if (State().system) State().system->Wake();
}

std::uint64_t CurrentTime() {
    {
        std::unique_lock lock(guard, std::defer_lock);
        if (!IsOwningThread()) lock.lock();
        if (State().system) return State().system->Now();
    }
    using namespace std::chrono;
    return static_cast<std::uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

}  // namespace platform

using namespace platform;

BOOL SetScreenScale(int scale) {
    if (!ClaimThread()) return FALSE;
    if (scale < 0 || scale > kMostScale) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (WindowCount() != 0) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    Lasting<Display>().wantedScale = scale;
    if (scale == 0) EnsureSystem();  // to be asked
    SettleScreenScale();
    return TRUE;
}

int GetScreenScale() {
    return ScreenScale();
}
