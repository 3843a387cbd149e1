// The regions that windows are cut to.
#include <optional>
#include <utility>

#include "platform/graphics/device_context.h"
#include "platform/window/core/display.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/window_table.h"

using namespace platform;

int SetWindowRgn(HWND handle, HRGN region, BOOL redraw) {
    Window* window = Require(handle);
    if (!window) return FALSE;
    std::optional<Region> taken;
    if (region) {
        taken = TakeRegion(region);
        if (!taken) {
            SetLastError(ERROR_INVALID_HANDLE);
            return FALSE;
        }
    }
    window->shape = std::move(taken);
    if (!window->IsChild())
        if (WindowSystem* system = SystemOf(*window))
            system->SetShape(handle, window->shape ? &*window->shape : nullptr);
    if (redraw) {
        Window* parent = window->IsChild() ? Peek(window->parent) : nullptr;
        if (parent)
            Invalidate(*parent, window->rect, true);
        else
            InvalidateAll(*window, true);
    }
    return TRUE;
}
