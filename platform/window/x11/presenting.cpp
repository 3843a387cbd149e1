// Pixels on their way to the window, and the shapes that follow from them.
#include <utility>

#include "platform/window/x11/pixel_conversion.h"
#include "platform/window/x11/x11_window_system.h"

namespace platform::x11 {

void X11WindowSystem::SetShape(HWND handle, const Region* region) {
    NativeWindow* window = Find(handle);
    if (!window) return;
    window->outline.SetRegion(region ? std::optional<Region>(*region) : std::nullopt);
    SendOutline(*window);
    connection_->Flush();
}

void X11WindowSystem::SendOutline(NativeWindow& window) {
    window.outline.Send(*connection_, window.id, window.frame);
}

// Not every window manager gives its frame the shapes of the window in it, and few do so later on.
void X11WindowSystem::OutlineFrame(NativeWindow& window) {
    window.frame = window.framed && !window.traits.decorated ? FindFrame(window) : 0;
    window.frameSettles = window.framed && window.frame == 0 && !window.traits.decorated;
    if (window.frame != 0) {
        if (connection_->Has().shape) xcb_shape_select_input(connection_->Get(), window.frame, 1);
        window.outline.Forget();
    } else {
        // Overlooked when it was there before the window manager took the window.
        window.outline.ForgetInput();
    }
    SendOutline(window);
}

void X11WindowSystem::OutlineSettledFrame(NativeWindow& window) {
    if (!std::exchange(window.frameSettles, false)) return;
    OutlineFrame(window);
    window.frameSettles = false;
}

void X11WindowSystem::OnShape(const xcb_shape_notify_event_t& event) {
    if (event.shaped != 0) return;  // mostly our own doing
    for (auto& [key, window] : windows_)
        if (window->frame == event.affected_window)
            window->outline.Restore(*connection_, window->frame, event.shape_kind);
}

xcb_window_t X11WindowSystem::FindFrame(const NativeWindow& window) {
    xcb_connection_t* c = connection_->Get();
    xcb_window_t outermost = window.id;
    for (;;) {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(c, xcb_query_tree(c, outermost), nullptr));
        if (!tree) return 0;
        if (tree->parent == connection_->Root() || tree->parent == XCB_WINDOW_NONE) break;
        outermost = tree->parent;
    }
    const auto outer = xcb_get_geometry(c, outermost);
    const auto inner = xcb_get_geometry(c, window.id);
    const auto offset = xcb_translate_coordinates(c, window.id, outermost, 0, 0);
    const Reply<xcb_get_geometry_reply_t> frame(xcb_get_geometry_reply(c, outer, nullptr));
    const Reply<xcb_get_geometry_reply_t> own(xcb_get_geometry_reply(c, inner, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> at(xcb_translate_coordinates_reply(c, offset, nullptr));
    const bool fits = frame && own && at && at->dst_x == 0 && at->dst_y == 0 && frame->border_width == 0 &&
                      frame->width == own->width && frame->height == own->height;
    return fits && outermost != window.id ? outermost : 0;
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

DisplayPlan X11WindowSystem::PlanOf(const NativeWindow& window) {
    if (window.placement.rect.IsRectEmpty()) return PlanDisplay({Compositing::Mode::Nothing}, false, false);
    if (window.host == 0)
        return PlanDisplay(window.compositing, window.alphaChannel, manager_.IsCompositing());
    if (!NeedsAlphaChannel(window.compositing) || !window.alphaChannel || !backdrop_.IsThere())
        return PlanDisplay(window.compositing, window.alphaChannel, false);
    return PlanOverBackdrop(window.compositing, window.alphaChannel);
}

void X11WindowSystem::Replan(NativeWindow& window) {
    const DisplayPlan plan = PlanOf(window);
    if (plan == window.plan) return;
    const DisplayPlan before = window.plan;
    window.plan = plan;
    const Surface* pixels = window.pixels.presented ? window.pixels.surface.get() : nullptr;
    if (!(plan.bounding == before.bounding && plan.input == before.input))
        window.outline.SetRules(plan.bounding, plan.input, pixels);
    if (pixels) {
        PutAll(window);
    } else {
        SendOutline(window);
    }
}

std::shared_ptr<Surface> X11WindowSystem::NewSurface(HWND handle, int width, int height) {
    NativeWindow* window = Find(handle);
    if (!window) return nullptr;
    std::shared_ptr<PixelBuffer> buffer;
    if (Surface::IsPossible(width, height)) buffer = PixelBuffer::Create(connection_, width, height);
    if (!buffer) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    Pixels& pixels = window->pixels;
    pixels.surface = Surface::Wrap(buffer->Row(0), width, height, std::ptrdiff_t{width} * 4, buffer);
    pixels.buffer = std::move(buffer);
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
    SendOutline(window);
    PixelBuffer* buffer = window.pixels.buffer.get();
    if (!window.plan.KeepsPixels()) buffer = Convert(window, damage);
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
        std::vector<std::uint32_t> behind(window.plan.overBackdrop ? count : 0);
        for (int y = part.top; y < part.bottom; ++y) {
            std::uint32_t* row = pixels.converted->Row(y) + part.left;
            ConvertPixels(window.plan, surface.Row(y) + part.left, row, count);
            if (behind.empty()) continue;
            const CRect& place = window.placement.rect;
            backdrop_.Row(place.left + part.left, place.top + y, behind.data(), count);
            BlendOver(behind.data(), row, count);
        }
    }
    return pixels.converted.get();
}

}  // namespace platform::x11
