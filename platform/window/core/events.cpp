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

    void Notify(WindowEvent happened) override {
        if (std::holds_alternative<event::ConnectionLost>(happened)) return core_.MarkLost();
        if (const auto* const focus = std::get_if<event::FocusChanged>(&happened)) return NoteFocus(*focus);
        const auto* const pointer = std::get_if<event::Pointer>(&happened);
        const bool isButton = pointer && pointer->kind == event::Pointer::Button;
        if (isButton && (pointer->button < 1 || pointer->button > 3)) return;
        core_.queue.Report(std::move(happened));
    }
    DROPEFFECT FilesOver(HWND window, POINT screen, DROPEFFECT wanted) override {
        return EffectsOfDrop(window, screen, wanted);
    }

  private:
    // Only where the focus ends up matters: one check stands for all changes on the way.
    void NoteFocus(const event::FocusChanged& focus) {
        HWND& now = core_.activation.systemFocus;
        if (focus.focused)
            now = focus.window;
        else if (now == focus.window)
            now = HWND();
        else
            return;
        RequestFocusCheck();
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

namespace {

// What has become of one of our windows.
void Handle(const std::shared_ptr<Window>&, const event::PointerLeft& left) {
    PointerLeftTopLevel(left.window);
}
void Handle(const std::shared_ptr<Window>& window, const event::BoundsChanged& bounds) {
    AcceptPlace(window, bounds.screen);
}
void Handle(const std::shared_ptr<Window>& window, const event::Exposed& exposed) {
    // Where nothing was drawn yet, WM_PAINT is on its way.
    if (!window->neverShown) Present(*window, exposed.region);
}
void Handle(const std::shared_ptr<Window>& window, const event::MinimisedChanged& change) {
    AcceptMinimised(window, change.minimised);
    // The focus may have come first.
    if (!change.minimised) RequestFocusCheck();
}
void Handle(const std::shared_ptr<Window>& window, const event::MaximisedChanged& change) {
    AcceptMaximised(*window, change.maximised);
}
void Handle(const std::shared_ptr<Window>& window, const event::CloseRequested&) {
    RequestClose(*window);
}
void Handle(const std::shared_ptr<Window>&, const event::GrabLost& lost) {
    if (TopLevelOf(Core::Get().pointer.capture) == lost.window) ReleasePointerCapture();
}
void Handle(const std::shared_ptr<Window>& window, const event::PutOut&) {
    AcceptPutOut(window);
}
void Handle(const std::shared_ptr<Window>& window, const event::SystemDestroyed& gone) {
    window->systemSerial = 0;
    DestroyWindow(gone.window);
}

}  // namespace

void HandleEvent(const WindowEvent& happened) {
    std::visit(Overloaded{
                   [](const event::KeysHeld& held) { NoteKeysHeld(held.keys); },
                   [](const event::KeySeen& seen) { Core::Get().hooks.Run(seen); },
                   [](const event::FilesDropped& files) { DeliverDrop(files.window, files.drop); },
                   [](const auto& change) {
                       if constexpr (requires { Handle(nullptr, change); })
                           if (const auto window = Core::Get().PeekShared(change.window))
                               Handle(window, change);
                   },
               },
               happened);
}

}  // namespace platform
