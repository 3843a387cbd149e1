#include "platform/window/headless/headless_system.h"

#include <glib.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include <platform/window.h>

#include "platform/window/headless/key_text.h"

namespace platform {

namespace {

HeadlessSystem* current = nullptr;

// Runs what other libraries have ready in the main context, once.
bool RunReadySources() {
    return g_main_context_iteration(nullptr, FALSE) != FALSE;
}

}  // namespace

std::unique_ptr<WindowSystem> MakeHeadlessWindowSystem(WindowEvents& events, int screenWidth,
                                                       int screenHeight) {
    return std::make_unique<HeadlessSystem>(events, screenWidth, screenHeight);
}

HeadlessSystem::HeadlessSystem(WindowEvents& events, int screenWidth, int screenHeight)
    : events_(events), screen_(screenWidth, screenHeight) {
    current = this;
}

HeadlessSystem::~HeadlessSystem() {
    current = nullptr;
}

HeadlessSystem* HeadlessSystem::Current() {
    return current;
}

const HeadlessSystem::NativeWindow* HeadlessSystem::Find(HWND window) const {
    for (const auto& native : stack_)
        if (native->handle == window) return native.get();
    return nullptr;
}

HeadlessSystem::NativeWindow* HeadlessSystem::Find(HWND window) {
    return const_cast<NativeWindow*>(std::as_const(*this).Find(window));
}

bool HeadlessSystem::IsOnScreen(const NativeWindow& window) const {
    if (!window.mapped) return false;
    for (const NativeWindow* at = &window; at; at = Find(at->traits.owner))
        if (at->minimised) return false;
    return true;
}

bool HeadlessSystem::IsOwnedBy(const NativeWindow& window, HWND owner) const {
    for (const NativeWindow* at = &window; at; at = Find(at->traits.owner))
        if (at->traits.owner == owner) return true;
    return false;
}

// ---- life

bool HeadlessSystem::Create(HWND window, const RECT& rect, const WindowTraits& traits) {
    auto native = std::make_unique<NativeWindow>();
    native->handle = window;
    native->rect = rect;
    native->traits = traits;
    stack_.push_back(std::move(native));
    Restack(window, StackPlace::Top, HWND());
    return true;
}

void HeadlessSystem::Destroy(HWND window) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->mapped = false;
    if (focus_ == window) PassFocusOn(*native);
    if (grab_ == window) grab_ = HWND();
    std::erase_if(stack_, [&](const auto& other) { return other->handle == window; });
    PointerMayHaveChangedWindow();
}

void HeadlessSystem::SetTraits(HWND window, const WindowTraits& traits) {
    NativeWindow* native = Find(window);
    if (!native) return;
    const bool layerChanged = native->traits.topmost != traits.topmost;
    native->traits = traits;
    if (layerChanged) Restack(window, StackPlace::Top, HWND());
}

// ---- place

void HeadlessSystem::Place(HWND window, const RECT& rect) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->rect = rect;
    PointerMayHaveChangedWindow();
}

void HeadlessSystem::Show(HWND window, Visibility visibility) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->mapped = visibility != Visibility::Hidden;
    if (visibility == Visibility::Minimised) native->minimised = true;
    if (visibility == Visibility::Restored) native->minimised = false;
    const bool gone = !IsOnScreen(*native);
    // A server lets go of the pointer when the window that holds it goes.
    if (gone && grab_ == window) grab_ = HWND();
    if (gone && focus_) {
        const NativeWindow* focused = Find(focus_);
        if (!focused || !IsOnScreen(*focused)) PassFocusOn(focused ? *focused : *native);
    }
    PointerMayHaveChangedWindow();
}

void HeadlessSystem::Restack(HWND window, StackPlace place, HWND reference) {
    auto found = std::find_if(stack_.begin(), stack_.end(),
                              [&](const auto& other) { return other->handle == window; });
    if (found == stack_.end()) return;
    std::unique_ptr<NativeWindow> moved = std::move(*found);
    stack_.erase(found);
    const auto layerStart =
        std::find_if(stack_.begin(), stack_.end(), [](const auto& other) { return other->traits.topmost; });
    auto at = stack_.end();
    switch (place) {
        case StackPlace::Top:
            if (!moved->traits.topmost) at = layerStart;
            break;
        case StackPlace::Bottom:
            at = moved->traits.topmost ? layerStart : stack_.begin();
            break;
        case StackPlace::Above:
        case StackPlace::Below:
            at = std::find_if(stack_.begin(), stack_.end(),
                              [&](const auto& other) { return other->handle == reference; });
            if (place == StackPlace::Above && at != stack_.end()) ++at;
            break;
    }
    stack_.insert(at, std::move(moved));
    PointerMayHaveChangedWindow();
}

void HeadlessSystem::RaiseWithOwned(HWND window) {
    std::vector<HWND> group;
    for (const auto& native : stack_)
        if (native->handle == window || IsOwnedBy(*native, window)) group.push_back(native->handle);
    for (HWND handle : group)
        Restack(handle, StackPlace::Top, HWND());
}

void HeadlessSystem::Activate(HWND window) {
    const NativeWindow* native = Find(window);
    if (!native || !IsOnScreen(*native)) return;
    RaiseWithOwned(window);
    GiveFocus(window);
}

void HeadlessSystem::GiveFocus(HWND window) {
    if (focus_ == window) return;
    const HWND before = focus_;
    focus_ = window;
    if (before) events_.FocusChanged(before, false);
    if (window) events_.FocusChanged(window, true);
}

// As a window manager does when the focused window goes: the owner comes next, then whatever is on top.
void HeadlessSystem::PassFocusOn(const NativeWindow& from) {
    const auto canTake = [&](const NativeWindow& native) {
        return &native != &from && native.traits.activates && IsOnScreen(native);
    };
    for (const NativeWindow* owner = Find(from.traits.owner); owner; owner = Find(owner->traits.owner))
        if (canTake(*owner)) return GiveFocus(owner->handle);
    for (std::size_t i = stack_.size(); i-- > 0;)
        if (canTake(*stack_[i])) return GiveFocus(stack_[i]->handle);
    GiveFocus(HWND());
}

void HeadlessSystem::SetShape(HWND window, const Region* region) {
    NativeWindow* native = Find(window);
    if (!native) return;
    if (region)
        native->shape = *region;
    else
        native->shape.reset();
    PointerMayHaveChangedWindow();
}

void HeadlessSystem::SetCompositing(HWND window, const Compositing& compositing) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->compositing = compositing;
    PointerMayHaveChangedWindow();
}

// ---- pixels

std::shared_ptr<Surface> HeadlessSystem::NewSurface(HWND window, int width, int height) {
    NativeWindow* native = Find(window);
    if (!native) return nullptr;
    native->drawn = Surface::Create(width, height);
    return native->drawn;
}

void HeadlessSystem::Present(HWND window, const Region& damage) {
    NativeWindow* native = Find(window);
    if (!native || !native->drawn) return;
    const Surface& from = *native->drawn;
    if (!native->shown || native->shown->Width() != from.Width() || native->shown->Height() != from.Height())
        native->shown = Surface::Create(from.Width(), from.Height());
    if (!native->shown) return;
    Region inside = damage;
    inside.Intersect(CRect(0, 0, from.Width(), from.Height()));
    for (int i = 0; i < inside.Count(); ++i) {
        const CRect rect = inside.Rect(i);
        const std::size_t bytes = static_cast<std::size_t>(rect.Width()) * sizeof(std::uint32_t);
        for (int y = rect.top; y < rect.bottom; ++y)
            std::memcpy(native->shown->Row(y) + rect.left, from.Row(y) + rect.left, bytes);
    }
    // The pixels decide what the pointer is over.
    if (native->compositing.mode != Compositing::Mode::Opaque) PointerMayHaveChangedWindow();
}

// ---- pointer and keyboard

bool HeadlessSystem::GrabPointer(HWND window) {
    const NativeWindow* native = Find(window);
    if (!native || !IsOnScreen(*native)) return false;
    grab_ = window;
    return true;
}

void HeadlessSystem::ReleasePointer() {
    grab_ = HWND();
    PointerMayHaveChangedWindow();
}

void HeadlessSystem::SetCursor(HWND window, CursorShape shape) {
    if (NativeWindow* native = Find(window)) native->cursor = shape;
}

CursorShape HeadlessSystem::CursorShown() const {
    const NativeWindow* native = Find(grab_ ? grab_ : under_);
    return native ? native->cursor : CursorShape::Arrow;
}

void HeadlessSystem::PointerMayHaveChangedWindow() {
    if (grab_) return;
    const HWND now = WindowAt(pointer_);
    if (now == under_) return;
    const HWND before = under_;
    under_ = now;
    if (before) events_.PointerLeft(before);
    if (now) events_.PointerMoved(now, pointer_, input_, now_);
}

void HeadlessSystem::MovePointer(POINT screen) {
    pointer_ = screen;
    const HWND over = WindowAt(screen);
    if (!(over == under_)) {
        const HWND before = under_;
        under_ = over;
        if (before) events_.PointerLeft(before);
    }
    const HWND target = grab_ ? grab_ : over;
    if (target) events_.PointerMoved(target, screen, input_, now_);
}

void HeadlessSystem::Button(int button, bool down) {
    (button == 1 ? input_.left : button == 2 ? input_.middle : input_.right) = down;
    const HWND target = grab_ ? grab_ : WindowAt(pointer_);
    events_.PointerButton(target, button, down, pointer_, input_, now_);
}

void HeadlessSystem::Key(UINT virtualKey, bool down) {
    if (virtualKey == VK_SHIFT) input_.shift = down;
    if (virtualKey == VK_CONTROL) input_.control = down;
    if (virtualKey == VK_MENU) input_.alt = down;
    events_.Key(focus_, virtualKey, down, down ? TextOfKey(virtualKey, input_) : char16_t{0}, input_, now_);
}

void HeadlessSystem::RequestClose(HWND window) {
    if (Find(window)) events_.CloseRequested(window);
}

// ---- time and waiting

void HeadlessSystem::SetClock(std::uint64_t now) {
    if (now > now_) now_ = now;
}

bool HeadlessSystem::Poll() {
    return RunReadySources();
}

bool HeadlessSystem::Wait(std::optional<std::uint64_t> deadline) {
    if (woken_.exchange(false)) return true;
    if (RunReadySources()) return true;
    if (!steps_.empty()) {
        const Step step = steps_.front();
        steps_.pop_front();
        step.run(step.argument);
        return true;
    }
    if (!deadline) return false;
    SetClock(*deadline);
    return true;
}

}  // namespace platform
