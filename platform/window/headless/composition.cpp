// From the windows' presented pixels to what the screen shows, and to what the pointer meets.
#include <algorithm>

#include "platform/window/headless/headless_backdrop.h"
#include "platform/window/headless/headless_system.h"

namespace platform {

namespace {

constexpr std::uint32_t kDesktop = 0xFF3A6EA5;

// c * a / 255 for each of four channels, rounded to nearest.
std::uint32_t Scale(std::uint32_t pixel, std::uint32_t alpha) {
    if (alpha == 255) return pixel;
    std::uint32_t low = (pixel & 0x00FF00FF) * alpha + 0x00800080;
    std::uint32_t high = ((pixel >> 8) & 0x00FF00FF) * alpha + 0x00800080;
    low = ((low + ((low >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF;
    high = (high + ((high >> 8) & 0x00FF00FF)) & 0xFF00FF00;
    return low | high;
}

// Colours brighter than their alpha are no premultiplied pixels; saturate, so that no channel runs over.
std::uint32_t Over(std::uint32_t source, std::uint32_t below) {
    if (source >> 24 == 255) return source;
    if (source == 0) return below;
    const std::uint32_t scaled = Scale(below, 255 - (source >> 24));
    std::uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8)
        result |= std::min(((source >> shift) & 0xFF) + ((scaled >> shift) & 0xFF), 255U) << shift;
    return result;
}

void ShowRow(const Compositing& compositing, const std::uint32_t* from, std::uint32_t* to, int count) {
    switch (compositing.mode) {
        case Compositing::Mode::Nothing:
            break;
        case Compositing::Mode::Opaque:
            for (int i = 0; i < count; ++i)
                to[i] = from[i] | 0xFF000000;
            break;
        case Compositing::Mode::PerPixel:
            for (int i = 0; i < count; ++i)
                to[i] = Scale(from[i], compositing.alpha);
            break;
        case Compositing::Mode::Constant:
            for (int i = 0; i < count; ++i)
                if (!compositing.LeavesOut(from[i])) to[i] = Scale(from[i] | 0xFF000000, compositing.alpha);
            break;
    }
}

}  // namespace

std::vector<std::uint32_t> HeadlessSystem::ShownPixels(const NativeWindow& window, const CRect& part) const {
    const int width = std::max(0, part.Width());
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(std::max(0, part.Height())));
    if (!window.mapped || pixels.empty()) return pixels;
    // Where nothing was presented yet, an opaque window is black.
    const std::vector<std::uint32_t> blank(static_cast<std::size_t>(width));
    const Surface* shown = window.shown.get();
    Region visible(window.shape ? *window.shape : Region(part));
    visible.Intersect(part);
    visible.Intersect(CRect(0, 0, window.rect.Width(), window.rect.Height()));
    for (int i = 0; i < visible.Count(); ++i) {
        const CRect rect = visible.Rect(i);
        for (int y = rect.top; y < rect.bottom; ++y) {
            std::uint32_t* to =
                pixels.data() + static_cast<std::ptrdiff_t>(y - part.top) * width + (rect.left - part.left);
            const int inShown =
                shown && y < shown->Height() ? std::clamp(shown->Width() - rect.left, 0, rect.Width()) : 0;
            if (inShown > 0) ShowRow(window.compositing, shown->Row(y) + rect.left, to, inShown);
            ShowRow(window.compositing, blank.data(), to + inShown, rect.Width() - inShown);
        }
    }
    return pixels;
}

std::vector<std::uint32_t> HeadlessSystem::ScreenPixels() const {
    std::vector<std::uint32_t> pixels(
        static_cast<std::size_t>(screen_.cx) * static_cast<std::size_t>(screen_.cy), kDesktop);
    const CRect screen(0, 0, screen_.cx, screen_.cy);
    if (const std::shared_ptr<const Surface> backdrop = HeadlessBackdrop::Get().Pixels())
        for (int y = 0; y < std::min<int>(screen_.cy, backdrop->Height()); ++y)
            std::copy_n(backdrop->Row(y), std::min<int>(screen_.cx, backdrop->Width()),
                        pixels.begin() + static_cast<std::ptrdiff_t>(y) * screen_.cx);
    foreign_.ForEach([&](const ForeignTree::Node& node) {
        CRect part;
        if (node.colour == 0 || !part.IntersectRect(foreign_.VisiblePart(node.window.id), screen)) return;
        for (int y = part.top; y < part.bottom; ++y) {
            const auto row = pixels.begin() + static_cast<std::ptrdiff_t>(y) * screen_.cx;
            std::fill(row + part.left, row + part.right, node.colour | 0xFF000000);
        }
    });
    stack_.ForEach([&](HWND handle) {
        const NativeWindow& window = *Find(handle);
        CRect onScreen;
        if (!onScreen.IntersectRect(VisibleRect(window), screen) || !IsOnScreen(window)) return;
        CRect part = onScreen;
        part.OffsetRect(-window.rect.left, -window.rect.top);
        const std::vector<std::uint32_t> shown = ShownPixels(window, part);
        const std::uint32_t* from = shown.data();
        for (int y = onScreen.top; y < onScreen.bottom; ++y) {
            std::uint32_t* to = pixels.data() + static_cast<std::ptrdiff_t>(y) * screen_.cx + onScreen.left;
            for (int x = 0; x < onScreen.Width(); ++x, ++from)
                to[x] = Over(*from, to[x]);
        }
    });
    return pixels;
}

bool HeadlessSystem::CatchesPointer(const NativeWindow& window, POINT screen) const {
    if (!VisibleRect(window).PtInRect(screen) || !IsOnScreen(window)) return false;
    const int x = screen.x - window.rect.left;
    const int y = screen.y - window.rect.top;
    if (window.shape && !window.shape->Contains(x, y)) return false;
    return window.compositing.CatchesPointer(window.shown.get(), x, y);
}

HWND HeadlessSystem::WindowAt(POINT screen) {
    return stack_.FindDown(HWND(), [&](HWND window) { return CatchesPointer(*Find(window), screen); });
}

}  // namespace platform
