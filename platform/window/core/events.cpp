#include "platform/window/core/events.h"

#include <utility>

#include "platform/window/core/activation.h"
#include "platform/window/core/file_drop.h"
#include "platform/window/core/keyboard.h"
#include "platform/window/core/maximising.h"
#include "platform/window/core/painting.h"
#include "platform/window/core/place.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

// Only notes what happened. The window system may be in the middle of its own work, so no procedure runs
// before the event's turn in the queue.
class EventSink : public WindowEvents {
  public:
    explicit EventSink(Core& core) : core_(core) {}

    void PointerMoved(HWND window, POINT screen, InputState state, std::uint64_t time) override {
        SystemEvent event = Make(SystemEvent::Kind::Move, window);
        event.screen = screen;
        event.state = state;
        event.time = time;
        core_.queue.Report(std::move(event));
    }
    void PointerLeft(HWND window) override { core_.queue.Report(Make(SystemEvent::Kind::Left, window)); }
    void PointerButton(HWND window, int button, bool down, POINT screen, InputState state,
                       std::uint64_t time) override {
        if (button < 1 || button > 3) return;
        SystemEvent event = Make(SystemEvent::Kind::Button, window);
        event.button = button;
        event.down = down;
        event.screen = screen;
        event.state = state;
        event.time = time;
        core_.queue.Report(std::move(event));
    }
    void PointerWheel(HWND window, int delta, POINT screen, InputState state, std::uint64_t time) override {
        SystemEvent event = Make(SystemEvent::Kind::Wheel, window);
        event.delta = delta;
        event.screen = screen;
        event.state = state;
        event.time = time;
        core_.queue.Report(std::move(event));
    }
    void Key(HWND window, UINT virtualKey, bool down, char16_t character, InputState state,
             std::uint64_t time) override {
        SystemEvent event = Make(SystemEvent::Kind::Key, window);
        event.virtualKey = virtualKey;
        event.down = down;
        event.character = character;
        event.state = state;
        event.time = time;
        core_.queue.Report(std::move(event));
    }
    // Only where the focus ends up matters: one event stands for all changes on the way.
    void FocusChanged(HWND window, bool focused) override {
        HWND& now = core_.activation.systemFocus;
        if (focused)
            now = window;
        else if (now == window)
            now = HWND();
        else
            return;
        RequestFocusCheck();
    }
    void KeysHeld(const KeySet& keys) override {
        SystemEvent event = Make(SystemEvent::Kind::KeysHeld, HWND());
        event.keys = keys;
        core_.queue.Report(std::move(event));
    }
    void Placed(HWND window, const RECT& screen) override {
        SystemEvent event = Make(SystemEvent::Kind::Placed, window);
        event.rect = screen;
        core_.queue.Report(std::move(event));
    }
    void Exposed(HWND window, const Region& region) override {
        SystemEvent event = Make(SystemEvent::Kind::Exposed, window);
        event.region = region;
        core_.queue.Report(std::move(event));
    }
    void MinimisedChanged(HWND window, bool minimised) override {
        SystemEvent event = Make(SystemEvent::Kind::Minimised, window);
        event.down = minimised;
        core_.queue.Report(std::move(event));
    }
    void MaximisedChanged(HWND window, bool maximised) override {
        SystemEvent event = Make(SystemEvent::Kind::Maximised, window);
        event.down = maximised;
        core_.queue.Report(std::move(event));
    }
    void CloseRequested(HWND window) override { core_.queue.Report(Make(SystemEvent::Kind::Close, window)); }
    void GrabLost(HWND window) override { core_.queue.Report(Make(SystemEvent::Kind::GrabLost, window)); }
    void SystemDestroyed(HWND window) override {
        core_.queue.Report(Make(SystemEvent::Kind::Destroyed, window));
    }
    void KeySeen(UINT virtualKey, UINT scanCode, bool down, const KeySet& held, std::uint64_t time) override {
        SystemEvent event = Make(SystemEvent::Kind::KeySeen, HWND());
        event.virtualKey = virtualKey;
        event.button = static_cast<int>(scanCode);
        event.down = down;
        event.keys = held;
        event.time = time;
        core_.queue.Report(std::move(event));
    }
    void PutOut(HWND window) override { core_.queue.Report(Make(SystemEvent::Kind::PutOut, window)); }
    DROPEFFECT FilesOver(HWND window, POINT screen, DROPEFFECT wanted) override {
        return EffectsOfDrop(window, screen, wanted);
    }
    void FilesDropped(HWND window, FileDrop&& drop) override {
        SystemEvent event = Make(SystemEvent::Kind::Drop, window);
        event.drop = std::make_shared<const FileDrop>(std::move(drop));
        core_.queue.Report(std::move(event));
    }
    void ConnectionLost() override { core_.MarkLost(); }

  private:
    static SystemEvent Make(SystemEvent::Kind kind, HWND window) {
        SystemEvent event;
        event.kind = kind;
        event.window = window;
        return event;
    }
    Core& core_;
};

void RequestClose(Window& window) {
    // While a modal dialog disables its owner, the owner cannot be closed either.
    if (window.IsDisabled()) return;
    PostMessageW(window.handle, WM_SYSCOMMAND, SC_CLOSE, 0);
}

}  // namespace

std::unique_ptr<WindowEvents> MakeEventSink(Core& core) {
    return std::make_unique<EventSink>(core);
}

void HandleEvent(const SystemEvent& event) {
    Core& core = Core::Get();
    if (event.kind == SystemEvent::Kind::Focus) {
        FollowSystemFocus();
        return;
    }
    if (event.kind == SystemEvent::Kind::KeysHeld) {
        NoteKeysHeld(event.keys);
        return;
    }
    if (event.kind == SystemEvent::Kind::KeySeen) {
        core.hooks.Run(event);
        return;
    }
    if (event.kind == SystemEvent::Kind::PointerCheck) {
        CheckPointer();
        return;
    }
    if (event.kind == SystemEvent::Kind::Drop) {
        DeliverDrop(event.window, *event.drop);
        return;
    }
    const std::shared_ptr<Window> window = core.PeekShared(event.window);
    if (!window) return;
    switch (event.kind) {
        case SystemEvent::Kind::Left:
            PointerLeftTopLevel(event.window);
            break;
        case SystemEvent::Kind::Placed:
            AcceptPlace(window, event.rect);
            break;
        case SystemEvent::Kind::Exposed:
            // Where nothing was drawn yet, WM_PAINT is on its way.
            if (!window->neverShown && event.region) Present(*window, *event.region);
            break;
        case SystemEvent::Kind::Minimised:
            AcceptMinimised(window, event.down);
            // The focus may have come first.
            if (!event.down) RequestFocusCheck();
            break;
        case SystemEvent::Kind::Maximised:
            AcceptMaximised(*window, event.down);
            break;
        case SystemEvent::Kind::Close:
            RequestClose(*window);
            break;
        case SystemEvent::Kind::GrabLost:
            if (TopLevelOf(core.pointer.capture) == event.window) ReleasePointerCapture();
            break;
        case SystemEvent::Kind::PutOut:
            AcceptPutOut(window);
            break;
        case SystemEvent::Kind::Destroyed:
            window->systemSerial = 0;
            DestroyWindow(event.window);
            break;
        default:
            break;
    }
}

}  // namespace platform
