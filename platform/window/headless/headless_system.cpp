#include "platform/window/headless/headless_system.h"

#include <glib.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include <platform/window.h>

#include "platform/window/headless/headless_backdrop.h"
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
    HeadlessBackdrop::Get().Use(screen_);
}

HeadlessSystem::~HeadlessSystem() {
    current = nullptr;
    HeadlessBackdrop::Get().Use(CSize());
}

void HeadlessSystem::SetScreen(int width, int height, int dpi) {
    screen_ = CSize(width, height);
    dpi_ = dpi;
    monitors_.clear();
    HeadlessBackdrop::Get().Use(screen_);
}

HeadlessSystem* HeadlessSystem::Current() {
    return current;
}

const HeadlessSystem::NativeWindow* HeadlessSystem::Find(HWND window) const {
    const auto found = windows_.find(window.ToParam());
    return found == windows_.end() ? nullptr : found->second.get();
}

HeadlessSystem::NativeWindow* HeadlessSystem::Find(HWND window) {
    return const_cast<NativeWindow*>(std::as_const(*this).Find(window));
}

void HeadlessSystem::SetOwner(NativeWindow& window, HWND before, HWND now) {
    if (NativeWindow* owner = Find(before)) std::erase(owner->owned, window.handle);
    if (NativeWindow* owner = Find(now)) owner->owned.push_back(window.handle);
    UpdateHeld(window);
}

void HeadlessSystem::UpdateHeld(NativeWindow& window) {
    const NativeWindow* owner = Find(window.traits.owner);
    const bool held = owner && (owner->minimised || owner->held);
    if (held == std::exchange(window.held, held)) return;
    for (const HWND owned : window.owned)
        if (NativeWindow* native = Find(owned)) UpdateHeld(*native);
}

// ---- life

bool HeadlessSystem::Create(HWND window, const RECT& rect, const WindowTraits& traits) {
    auto native = std::make_unique<NativeWindow>();
    native->handle = window;
    native->rect = rect;
    native->traits = traits;
    NativeWindow& made = *(windows_[window.ToParam()] = std::move(native));
    SetOwner(made, HWND(), traits.owner);
    stack_.Insert(window, LayerOf(made));
    return true;
}

void HeadlessSystem::Destroy(HWND window) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->mapped = false;
    if (focus_ == window) PassFocusOn(*native);
    // Windows that it held minimised are on the screen again.
    const bool decides = grab_ == window || under_ == window || !native->owned.empty();
    if (grab_ == window) grab_ = HWND();
    SetOwner(*native, native->traits.owner, HWND());
    const std::vector<HWND> owned = std::move(native->owned);
    stack_.Remove(window);
    windows_.erase(window.ToParam());
    for (const HWND left : owned)
        if (NativeWindow* other = Find(left)) UpdateHeld(*other);
    if (decides) PointerMayHaveChangedWindow();
}

void HeadlessSystem::SetTraits(HWND window, const WindowTraits& traits) {
    NativeWindow* native = Find(window);
    if (!native) return;
    const WindowTraits before = std::exchange(native->traits, traits);
    if (!(before.owner == traits.owner)) SetOwner(*native, before.owner, traits.owner);
    if (before.topmost != traits.topmost) Restack(window, StackPlace::Top, HWND());
}

// ---- place

void HeadlessSystem::SetBounds(HWND window, const RECT& rect) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->rect = rect;
    PointerMayHaveChangedWindow(*native);
}

void HeadlessSystem::Show(HWND window, Visibility visibility) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->mapped = visibility != Visibility::Hidden;
    if (visibility == Visibility::Minimised) native->minimised = true;
    if (visibility == Visibility::Restored) native->minimised = false;
    for (const HWND owned : native->owned)
        if (NativeWindow* other = Find(owned)) UpdateHeld(*other);
    const bool gone = !IsOnScreen(*native);
    // A server lets go of the pointer when the window that holds it goes.
    const bool letsGo = gone && grab_ == window;
    if (letsGo) grab_ = HWND();
    if (gone && focus_) {
        const NativeWindow* focused = Find(focus_);
        if (!focused || !IsOnScreen(*focused)) PassFocusOn(focused ? *focused : *native);
    }
    // Windows that it owns come and go with it.
    if (letsGo || !native->owned.empty())
        PointerMayHaveChangedWindow();
    else
        PointerMayHaveChangedWindow(*native);
}

void HeadlessSystem::Restack(HWND window, StackPlace place, HWND reference) {
    const NativeWindow* native = Find(window);
    if (!native) return;
    const bool beside = Find(reference) != nullptr;
    if (place == StackPlace::Bottom)
        stack_.Lower(window, LayerOf(*native));
    else if (place == StackPlace::Above && beside)
        stack_.PutAbove(window, reference);
    else if (place == StackPlace::Below && beside)
        stack_.PutBelow(window, reference);
    else
        stack_.Raise(window, LayerOf(*native));
    PointerMayHaveChangedWindow(*native);
}

// ---- other programs

bool HeadlessSystem::SetHost(HWND window, ForeignId host) {
    NativeWindow* native = Find(window);
    if (!native) return false;
    native->host = host;
    stack_.Raise(window, LayerOf(*native));
    HostsChanged();
    return true;
}

void HeadlessSystem::PutOutOf(ForeignId host) {
    for (auto& [key, native] : windows_) {
        if (native->host != host) continue;
        native->host = kScreen;
        stack_.Lower(native->handle, LayerOf(*native));
        events_.Notify(event::PutOut{native->handle});
    }
    HostsChanged();
}

void HeadlessSystem::HostsChanged() {
    if (const NativeWindow* focused = Find(focus_); focused && !IsOnScreen(*focused)) PassFocusOn(*focused);
    if (const NativeWindow* grabbing = Find(grab_); grabbing && !IsOnScreen(*grabbing)) {
        events_.Notify(event::GrabLost{grab_});
        grab_ = HWND();
    }
    PointerMayHaveChangedWindow();
}

CRect HeadlessSystem::VisibleRect(const NativeWindow& window) const {
    if (window.host == kScreen) return window.rect;
    CRect part;
    part.IntersectRect(window.rect, foreign_.VisiblePart(window.host));
    return part;
}

void HeadlessSystem::RaiseWithOwned(HWND window) try {
    std::vector<HWND> group{window};
    for (std::size_t i = 0; i < group.size(); ++i)
        if (const NativeWindow* native = Find(group[i]))
            group.insert(group.end(), native->owned.begin(), native->owned.end());
    std::sort(group.begin(), group.end(), [&](HWND a, HWND b) { return stack_.IsAbove(b, a); });
    for (HWND handle : group)
        Restack(handle, StackPlace::Top, HWND());
} catch (const std::bad_alloc&) {
    Restack(window, StackPlace::Top, HWND());
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
    if (before) events_.Notify(event::FocusChanged{before, false});
    if (window) events_.Notify(event::FocusChanged{window, true});
}

// As a window manager does when the focused window goes: the owner comes next, then whatever is on top.
void HeadlessSystem::PassFocusOn(const NativeWindow& from) {
    const auto canTake = [&](const NativeWindow& native) {
        return &native != &from && native.traits.activates && IsOnScreen(native);
    };
    for (const NativeWindow* owner = Find(from.traits.owner); owner; owner = Find(owner->traits.owner))
        if (canTake(*owner)) return GiveFocus(owner->handle);
    GiveFocus(stack_.FindDown(HWND(), [&](HWND window) { return canTake(*Find(window)); }));
}

void HeadlessSystem::SetShape(HWND window, const Region* region) {
    NativeWindow* native = Find(window);
    if (!native) return;
    if (region)
        native->shape = *region;
    else
        native->shape.reset();
    PointerMayHaveChangedWindow(*native);
}

void HeadlessSystem::SetCompositing(HWND window, const Compositing& compositing) {
    NativeWindow* native = Find(window);
    if (!native) return;
    native->compositing = compositing;
    PointerMayHaveChangedWindow(*native);
}

std::vector<Monitor> HeadlessSystem::Monitors() {
    const CRect whole(CPoint(0, 0), screen_);
    return monitors_.empty() ? std::vector<Monitor>{{whole, whole}} : monitors_;
}

// ---- pixels

std::shared_ptr<Surface> HeadlessSystem::NewSurface(HWND window, int width, int height) {
    NativeWindow* native = Find(window);
    if (!native) return nullptr;
    std::shared_ptr<Surface> fresh = Surface::Create(width, height);
    if (fresh) native->drawn = fresh;
    return fresh;
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
    if (native->compositing.mode != Compositing::Mode::Opaque) PointerMayHaveChangedWindow(*native);
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
    if (fileDrag_.HoldsPointer()) return fileDrag_.Cursor();
    const NativeWindow* native = Find(grab_ ? grab_ : under_);
    return native ? native->cursor : CursorShape::Arrow;
}

void HeadlessSystem::PointerMayHaveChangedWindow() {
    if (grab_) return;
    const HWND now = WindowAt(pointer_);
    if (now == under_) return;
    const HWND before = under_;
    under_ = now;
    if (before) events_.Notify(event::PointerLeft{before});
    if (now) events_.Notify(event::Pointer{event::Pointer::Moved, now, pointer_, input_, now_});
}

void HeadlessSystem::PointerMayHaveChangedWindow(const NativeWindow& changed) {
    if (grab_) return;
    const bool covers = !under_ || stack_.IsAbove(changed.handle, under_);
    if (changed.handle == under_ || (covers && CatchesPointer(changed, pointer_)))
        PointerMayHaveChangedWindow();
}

void HeadlessSystem::MovePointer(POINT screen) {
    pointer_ = screen;
    const HWND over = WindowAt(screen);
    if (!(over == under_)) {
        const HWND before = under_;
        under_ = over;
        if (before) events_.Notify(event::PointerLeft{before});
    }
    if (fileDrag_.HoldsPointer())
        return events_.Notify(event::Pointer{event::Pointer::Moved, HWND(), screen, input_, now_});
    const HWND target = grab_ ? grab_ : over;
    if (target) events_.Notify(event::Pointer{event::Pointer::Moved, target, screen, input_, now_});
}

void HeadlessSystem::Button(int button, bool down) {
    (button == 1 ? input_.left : button == 2 ? input_.middle : input_.right) = down;
    const HWND target = grab_ ? grab_ : WindowAt(pointer_);
    events_.Notify(event::Pointer{event::Pointer::Button, target, pointer_, input_, now_, button, down});
}

void HeadlessSystem::Wheel(int delta) {
    const HWND target = grab_ ? grab_ : WindowAt(pointer_);
    if (target)
        events_.Notify(
            event::Pointer{event::Pointer::Wheel, target, pointer_, input_, now_, 0, false, delta});
}

void HeadlessSystem::Key(UINT virtualKey, bool down) {
    if (virtualKey == VK_SHIFT) input_.shift = down;
    if (virtualKey == VK_CONTROL) input_.control = down;
    KeyWithText(virtualKey, down, down ? TextOfKey(virtualKey, input_) : char16_t{0});
}

void HeadlessSystem::KeyWithText(UINT virtualKey, bool down, char16_t text) {
    if (virtualKey == VK_SHIFT) input_.shift = down;
    if (virtualKey == VK_CONTROL) input_.control = down;
    if (virtualKey == VK_MENU) input_.alt = down;
    if (virtualKey < keysDown_.size()) keysDown_[virtualKey] = down;
    if (watching_) events_.Notify(event::KeySeen{virtualKey, 0, down, keysDown_, now_});
    events_.Notify(event::Key{focus_, virtualKey, down, text, input_, now_});
}

KeySet HeadlessSystem::KeysDown() {
    KeySet keys = keysDown_;
    keys[VK_LBUTTON] = input_.left;
    keys[VK_MBUTTON] = input_.middle;
    keys[VK_RBUTTON] = input_.right;
    return keys;
}

void HeadlessSystem::RequestClose(HWND window) {
    if (Find(window)) events_.Notify(event::CloseRequested{window});
}

// ---- time and waiting

void HeadlessSystem::SetClock(std::uint64_t now) {
    if (now > now_) now_ = now;
}

bool HeadlessSystem::PerformNext() {
    if (actions_.empty()) return false;
    const Action action = std::move(actions_.front());
    actions_.pop_front();
    action(*this);
    return true;
}

bool HeadlessSystem::Poll() {
    return RunReadySources();
}

// The clock stands still in here, whatever is due: only the user moves it.
bool HeadlessSystem::Wait(std::optional<std::uint64_t>) {
    if (woken_.exchange(false)) return true;
    if (RunReadySources()) return true;
    if (PerformNext()) return true;
    if (steps_.empty()) return false;
    const Step step = steps_.front();
    steps_.pop_front();
    step.run(step.argument);
    return true;
}

}  // namespace platform
