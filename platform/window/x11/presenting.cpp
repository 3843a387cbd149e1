// Pixels on their way to the window, and the shapes that follow from them.
#include "platform/window/x11/pixel_conversion.h"
#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

void X11WindowSystem::SetShape(HWND handle, const Region* region) {
    NativeWindow* window = Find(handle);
    if (!window) return;
    window->outline.SetRegion(region ? std::optional<Region>(*region) : std::nullopt);
    window->outline.Send(*connection_, window->id);
    connection_->Flush();
}

void X11WindowSystem::SetCompositing(HWND handle, const Compositing& compositing) {
    NativeWindow* window = Find(handle);
    if (!window || window->compositing == compositing) return;
    window->compositing = compositing;
    if (window->id == 0) return;
    // Sending pixels without an alpha channel costs half, so a window has one only where its mode asks for
    // it; but a window on the screen is replaced only where it must be.
    const bool needed = NeedsAlphaChannel(compositing);
    const bool expected = needed || compositing.mode == Compositing::Mode::Nothing;
    const bool wanted = window->mapRequested ? (needed || window->alphaChannel) : expected;
    const PixelFormat& format = wanted ? connection_->AlphaFormat() : connection_->OpaqueFormat();
    if (format && (format.depth == 32) != window->alphaChannel) Recreate(*window, wanted);
    Replan(*window);
    connection_->Flush();
}

DisplayPlan X11WindowSystem::PlanOf(const NativeWindow& window) const {
    if (window.placement.rect.IsRectEmpty()) return PlanDisplay({Compositing::Mode::Nothing}, false, false);
    return PlanDisplay(window.compositing, window.alphaChannel, manager_.IsCompositing());
}

void X11WindowSystem::Replan(NativeWindow& window) {
    const DisplayPlan plan = PlanOf(window);
    if (plan == window.plan) return;
    const DisplayPlan before = window.plan;
    window.plan = plan;
    if (plan.opacity != before.opacity) properties_.WriteOpacity(window);
    if (plan.bounding == before.bounding && plan.input == before.input &&
        plan.conversion == before.conversion && plan.key == before.key)
        return;
    const Surface* pixels = window.pixels.presented ? window.pixels.surface.get() : nullptr;
    window.outline.SetRules(plan.bounding, plan.input, pixels);
    if (pixels) {
        PutAll(window);
    } else {
        window.outline.Send(*connection_, window.id);
    }
}

std::shared_ptr<Surface> X11WindowSystem::NewSurface(HWND handle, int width, int height) {
    NativeWindow* window = Find(handle);
    if (!window) return nullptr;
    const std::shared_ptr<PixelBuffer> buffer = PixelBuffer::Create(connection_, width, height);
    if (!buffer) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    Pixels& pixels = window->pixels;
    pixels.surface = Surface::Wrap(buffer->Row(0), width, height, std::ptrdiff_t{width} * 4, buffer);
    pixels.buffer = buffer;
    pixels.converted.reset();
    pixels.presented = false;
    return pixels.surface;
}

void X11WindowSystem::BeginWrite(HWND handle) {
    NativeWindow* window = Find(handle);
    if (window && window->pixels.buffer) window->pixels.buffer->WaitUntilRead();
}

void X11WindowSystem::Present(HWND handle, const Region& damage) {
    NativeWindow* window = Find(handle);
    if (!window || window->id == 0 || !window->pixels.surface) return;
    window->pixels.presented = true;
    Put(*window, damage);
    connection_->Flush();
}

void X11WindowSystem::PutAll(NativeWindow& window) {
    const Surface& surface = *window.pixels.surface;
    Put(window, Region(CRect(0, 0, surface.Width(), surface.Height())));
}

void X11WindowSystem::Put(NativeWindow& window, const Region& damage) {
    // The shape first: pixels that come before their part of the window are lost.
    window.outline.PixelsChanged(*window.pixels.surface, damage);
    window.outline.Send(*connection_, window.id);
    PixelBuffer* buffer = window.pixels.buffer.get();
    if (window.plan.conversion != Conversion::None) buffer = Convert(window, damage);
    if (buffer == nullptr) return;
    const PixelFormat& format =
        window.alphaChannel ? connection_->AlphaFormat() : connection_->OpaqueFormat();
    buffer->Put(window.id, window.context, format.depth, damage);
}

PixelBuffer* X11WindowSystem::Convert(NativeWindow& window, const Region& damage) {
    Pixels& pixels = window.pixels;
    const Surface& surface = *pixels.surface;
    if (!pixels.converted)
        pixels.converted = PixelBuffer::Create(connection_, surface.Width(), surface.Height());
    if (!pixels.converted) return nullptr;
    pixels.converted->WaitUntilRead();
    const CRect all(0, 0, surface.Width(), surface.Height());
    for (int i = 0; i < damage.Count(); ++i) {
        CRect part;
        if (!part.IntersectRect(damage.Rect(i), all)) continue;
        const auto count = static_cast<std::size_t>(part.Width());
        for (int y = part.top; y < part.bottom; ++y)
            ConvertPixels(window.plan.conversion, window.plan.key, surface.Row(y) + part.left,
                          pixels.converted->Row(y) + part.left, count);
    }
    return pixels.converted.get();
}

}  // namespace platform::x11
