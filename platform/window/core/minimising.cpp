#include "platform/window/core/minimising.h"

#include "platform/window/core/activation.h"
#include "platform/window/core/bounds.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/display.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

bool Lives(const std::shared_ptr<Window>& window) {
    return Peek(window->handle) != nullptr;
}

}  // namespace

void SetMinimised(const std::shared_ptr<Window>& window, bool minimised) {
    if (window->IsMinimised() == minimised) return;
    if (WindowSystem* system = SystemOf(*window))
        system->Show(window->handle, minimised ? Visibility::Minimised : Visibility::Restored);
    AcceptMinimised(window, minimised);
}

void AcceptMinimised(const std::shared_ptr<Window>& window, bool minimised) {
    if (window->IsMinimised() == minimised) return;
    if (minimised)
        window->style |= WS_MINIMIZE;
    else
        window->style &= ~DWORD{WS_MINIMIZE};
    if (minimised) WithdrawPointer(*window);
    if (!minimised) {
        InvalidateAll(*window, true);
        QueueForPaint(*window);
    }
    CallProcedure(window, WM_WINDOWPOSCHANGED, 0, 0);
    if (!Lives(window)) return;
    const CPoint origin = ScreenOrigin(*window);
    CallProcedure(window, WM_MOVE, 0, MAKELPARAM(origin.x, origin.y));
    if (!Lives(window)) return;
    const WPARAM kind = minimised ? SIZE_MINIMIZED : window->IsMaximised() ? SIZE_MAXIMIZED : SIZE_RESTORED;
    CallProcedure(window, WM_SIZE, kind, minimised ? 0 : SizeParam(*window));
    if (minimised && Lives(window)) DeactivateMinimised(window->handle);
}

}  // namespace platform

using namespace platform;

BOOL IsIconic(HWND handle) {
    const Window* window = Require(handle);
    return window && window->IsMinimised();
}
