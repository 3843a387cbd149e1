// Windows come and go, and change what they are.
#include <algorithm>
#include <utility>

#include "platform/window/x11/x11_window_system.h"

namespace platform {

std::unique_ptr<WindowSystem> MakeX11WindowSystem(WindowEvents& events) {
    std::shared_ptr<x11::Connection> connection = x11::Connection::Open();
    if (!connection) return nullptr;
    return std::make_unique<x11::X11WindowSystem>(std::move(connection), events);
}

namespace x11 {

namespace {

constexpr std::uint64_t kFocusTime = 800;  // milliseconds for a window manager to give the focus back

}  // namespace

X11WindowSystem::X11WindowSystem(std::shared_ptr<Connection> connection, WindowEvents& events)
    : connection_(std::move(connection)),
      closeAtEnd_{connection_},
      events_(events),
      manager_(connection_),
      leader_(connection_),
      startup_(connection_, leader_.Id()),
      properties_(connection_, manager_, leader_.Id()),
      keyboard_(connection_),
      rawKeys_(connection_, keyboard_),
      desktops_(connection_),
      backdrop_(connection_),
      cursors_(connection_),
      clipboard_(connection_, clock_),
      drag_(connection_, cursors_, clock_, manager_),
      drop_(connection_, events),
      grab_(connection_),
      queue_(connection_),
      screenSize_(connection_->RootSize()) {}

X11WindowSystem::~X11WindowSystem() {
    for (auto& [key, window] : windows_)
        DestroyNative(*window);
    windows_.clear();
    connection_->Flush();
}

NativeWindow* X11WindowSystem::Find(HWND window) {
    if (!connection_->IsAlive()) return nullptr;
    const auto found = windows_.find(window.ToParam());
    return found == windows_.end() ? nullptr : found->second.get();
}

NativeWindow* X11WindowSystem::FindById(xcb_window_t id) {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : found->second;
}

xcb_window_t X11WindowSystem::IdOf(HWND window) {
    const NativeWindow* found = Find(window);
    return found ? found->id : 0;
}

bool X11WindowSystem::Create(HWND window, const RECT& rect, const WindowTraits& traits) {
    if (!connection_->IsAlive()) {
        SetLastError(ERROR_CONNECTION_UNAVAIL);
        return false;
    }
    auto fresh = std::make_unique<NativeWindow>();
    auto& slot = windows_[window.ToParam()];
    if (slot) DestroyNative(*slot);
    slot = std::move(fresh);
    slot->handle = window;
    slot->traits = traits;
    slot->placement.rect = rect;
    CreateNative(*slot, false);
    // A server that died unnoticed is noticed when it is written to.
    connection_->Flush();
    return connection_->IsAlive();
}

void X11WindowSystem::CreateNative(NativeWindow& window, bool alphaChannel) {
    xcb_connection_t* c = connection_->Get();
    const PixelFormat& format = alphaChannel ? connection_->AlphaFormat() : connection_->OpaqueFormat();
    const CRect& rect = window.placement.rect;
    window.id = xcb_generate_id(c);
    window.alphaChannel = format.depth == 32;
    window.plan = PlanOf(window);
    // Back and border pixel and the colour map must be given, or a depth other than the parent's is refused.
    // Pixels stay where they are while the window grows, until those of the new size come.
    const std::uint32_t values[] = {
        0,
        0,
        XCB_GRAVITY_NORTH_WEST,
        XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
            XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
            XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
            XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_KEYMAP_STATE | XCB_EVENT_MASK_PROPERTY_CHANGE,
        format.colormap,
        cursors_.Get(window.cursor)};
    xcb_create_window(c, format.depth, window.id, connection_->Root(), ToX(rect.left), ToX(rect.top),
                      ToExtent(rect.Width()), ToExtent(rect.Height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      format.visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_EVENT_MASK |
                          XCB_CW_COLORMAP | XCB_CW_CURSOR,
                      values);
    window.context = xcb_generate_id(c);
    const std::uint32_t noExposures = 0;
    xcb_create_gc(c, window.context, window.id, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    byId_[window.id] = &window;
    properties_.WriteAll(window, IdOf(window.traits.owner));
    window.outline.SetRules(window.plan.bounding, window.plan.input,
                            window.pixels.presented ? window.pixels.surface.get() : nullptr);
    window.outline.Forget();
    window.frame = 0;
    SendOutline(window);
}

void X11WindowSystem::DestroyNative(NativeWindow& window) {
    if (window.id == 0) return;
    LoseEmbedded(window);
    byId_.erase(window.id);
    if (connection_->IsAlive()) {
        xcb_free_gc(connection_->Get(), window.context);
        xcb_destroy_window(connection_->Get(), window.id);
    }
    window.id = 0;
}

void X11WindowSystem::Recreate(NativeWindow& window, bool alphaChannel) {
    // The new one is there before the old one goes: nothing behind them flashes up.
    const xcb_window_t oldId = window.id;
    const xcb_gcontext_t oldContext = window.context;
    byId_.erase(oldId);
    CreateNative(window, alphaChannel);
    MoveEmbedded(window, window.keyTarget);
    for (auto& [key, other] : windows_)
        if (other->traits.owner == window.handle && other->id != 0) properties_.WriteOwner(*other, window.id);
    if (grab_.Lose(window.handle)) grab_.Await(window.handle);
    window.mapped = window.framed = window.hasState = window.withdrawing = window.inside = false;
    const std::optional<WaitingMap> waiting = std::exchange(window.mapWhenWithdrawn, std::nullopt);
    if (window.host != 0) Join(window);
    if (std::exchange(window.mapRequested, false)) {
        // Its focus goes with the old one, and comes back by the window manager's grace.
        const bool focused = std::exchange(window.focused, false);
        if (focused) awaited_ = {window.handle, Now() + kFocusTime};
        Map(window, focused, window.minimised);
    } else if (waiting) {
        Map(window, waiting->activate, waiting->minimised);
    }
    xcb_free_gc(connection_->Get(), oldContext);
    xcb_destroy_window(connection_->Get(), oldId);
}

void X11WindowSystem::Destroy(HWND window) {
    const auto found = windows_.find(window.ToParam());
    if (found == windows_.end()) return;
    grab_.EndWait(window);
    if (grab_.IsHeldFor(window)) grab_.Release();
    DestroyNative(*found->second);
    windows_.erase(found);
    std::erase(moved_, window);
    if (focused_ == window) focused_ = HWND();
    connection_->Flush();
}

void X11WindowSystem::SetTraits(HWND handle, const WindowTraits& traits) {
    NativeWindow* window = Find(handle);
    if (!window) return;
    const WindowTraits before = std::exchange(window->traits, traits);
    if (window->id == 0 || before == traits) return;
    properties_.WriteChanges(*window, before, IdOf(traits.owner));
    if (window->mapRequested && !HasManager(*window) && traits.topmost && !before.topmost) Raise(*window);
}

}  // namespace x11
}  // namespace platform
