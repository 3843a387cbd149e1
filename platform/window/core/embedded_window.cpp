#include "platform/window/core/embedded_window.h"

#include <vector>

#include "platform/graphics/scale.h"
#include "platform/window/core/coordinates.h"
#include "platform/window/core/display.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

std::vector<EmbeddedWindow*>& Embedded() {
    static auto* const windows = new std::vector<EmbeddedWindow*>;  // outlives objects with static storage
    return *windows;
}

CRect OnSurface(const Window& window) {
    CRect rect = window.Bounds();
    const CPoint origin = SurfaceOrigin(window);
    rect.OffsetRect(origin.x, origin.y);
    return rect;
}

// The part of a rectangle of a child that neither it nor its parents cut off; empty while one of them is
// hidden. The top-level hides with all that is in it.
CRect SeenPart(const Window& child, CRect rect) {
    for (const Window* window = &child; window; window = Peek(window->parent)) {
        CRect seen;
        if (!window->IsChild()) {
            seen.IntersectRect(rect, window->Bounds());
            return seen;
        }
        if (!window->IsShown() || !seen.IntersectRect(rect, OnSurface(*window))) return {};
        rect = seen;
    }
    return {};
}

}  // namespace

std::unique_ptr<EmbeddedWindow> EmbeddedWindow::Create(HWND child, int inset, EmbeddedEvents& events) {
    const Window* const window = Require(child);
    if (!window) return nullptr;
    const Window* const top = TopLevelOf(*window);
    WindowSystem* const system = top ? SystemOf(*top) : nullptr;
    if (!system) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return nullptr;
    }
    std::unique_ptr<EmbeddedWindow> embedded(new EmbeddedWindow(child, inset));
    embedded->site_ = system->Embed(top->handle, events);
    if (!embedded->site_) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    Embedded().push_back(embedded.get());
    return embedded;
}

EmbeddedWindow::~EmbeddedWindow() {
    std::erase(Embedded(), this);
}

void EmbeddedWindow::Follow() {
    const Window* const window = Peek(child_);
    if (!window) return;
    CRect whole = OnSurface(*window);
    whole.DeflateRect(inset_, inset_);
    const int scale = ScreenScale();
    site_->SetBounds(ScaledRect(whole, scale), ScaledRect(SeenPart(*window, whole), scale));
}

void FollowEmbeddedWindows() {
    for (EmbeddedWindow* const window : Embedded())
        window->Follow();
}

bool CanEmbedWindows() {
    const WindowSystem* const system = System();
    return !system || system->Can().embedsWindows;
}

}  // namespace platform
