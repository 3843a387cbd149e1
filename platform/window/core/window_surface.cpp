#include "platform/window/core/window_surface.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/graphics/scale.h"
#include "platform/window/core/display.h"
#include "platform/window/core/invalidation.h"

namespace platform {

namespace {

void CopyShared(const Surface& from, Surface& to) {
    const int width = std::min(from.Width(), to.Width());
    const int height = std::min(from.Height(), to.Height());
    for (int y = 0; y < height; ++y)
        std::memcpy(to.Row(y), from.Row(y), static_cast<std::size_t>(width) * sizeof(std::uint32_t));
    to.Touch();
}

}  // namespace

bool IsPainted(const Window& topLevel) {
    return !topLevel.IsLayered() || topLevel.layering.hasAttributes;
}

std::shared_ptr<Surface> SurfaceForWriting(Window& topLevel) {
    const int width = ScaledLength(topLevel.rect.Width(), ScreenScale());
    const int height = ScaledLength(topLevel.rect.Height(), ScreenScale());
    if (width <= 0 || height <= 0) return nullptr;
    WindowSystem* system = SystemOf(topLevel);
    if (!topLevel.surface || topLevel.surface->Width() != width || topLevel.surface->Height() != height) {
        std::shared_ptr<Surface> fresh =
            system ? system->NewSurface(topLevel.handle, width, height) : Surface::Create(width, height);
        if (!fresh) {
            topLevel.lacksPixels = true;
            return nullptr;
        }
        fresh->SetScale(ScreenScale());
        if (topLevel.surface) CopyShared(*topLevel.surface, *fresh);
        topLevel.surface = std::move(fresh);
        topLevel.neverShown = true;
    }
    // What was painted into nothing is painted again.
    if (std::exchange(topLevel.lacksPixels, false)) InvalidateAll(topLevel, true);
    if (system) system->BeginWrite(topLevel.handle);
    return topLevel.surface;
}

void Present(Window& topLevel, const Region& drawn) {
    WindowSystem* system = SystemOf(topLevel);
    if (!system || !topLevel.surface) return;
    const Surface& surface = *topLevel.surface;
    Region shown = topLevel.neverShown ? Region(CRect(0, 0, surface.Width(), surface.Height())) : drawn;
    if (shown.IsEmpty()) return;
    topLevel.neverShown = false;
    system->Present(topLevel.handle, shown);
}

void UpdateCompositing(Window& topLevel) {
    Layering& layering = topLevel.layering;
    Compositing now;
    if (topLevel.IsLayered()) {
        now = layering.chosen;
        if (!layering.hasAttributes && !layering.fed) now.mode = Compositing::Mode::Nothing;
    }
    if (now == layering.sent) return;
    layering.sent = now;
    if (WindowSystem* system = SystemOf(topLevel)) system->SetCompositing(topLevel.handle, now);
}

}  // namespace platform
