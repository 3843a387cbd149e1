#include "platform/window/core/events.h"

#include "platform/window/core/activation.h"
#include "platform/window/core/bounds.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/file_drop.h"
#include "platform/window/core/foreign.h"
#include "platform/window/core/hooks.h"
#include "platform/window/core/hover.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/maximising.h"
#include "platform/window/core/minimising.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_surface.h"

namespace platform {

namespace {

void RequestClose(Window& window) {
    // While a modal dialog disables its owner, the owner cannot be closed either.
    if (window.IsDisabled()) return;
    PostMessageW(window.handle, WM_SYSCOMMAND, SC_CLOSE, 0);
}

// What has become of one of our windows.
void Handle(const std::shared_ptr<Window>&, const event::PointerLeft& left) {
    PointerLeftTopLevel(left.window);
}
void Handle(const std::shared_ptr<Window>& window, const event::BoundsChanged& bounds) {
    AcceptBounds(window, bounds.screen);
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
    if (TopLevelOf(CaptureWindow()) == lost.window) ReleasePointerCapture();
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
                   [](const event::KeySeen& seen) { Hooks().Run(seen); },
                   [](const event::FilesDropped& files) { DeliverDrop(files.window, files.drop); },
                   [](const auto& change) {
                       if constexpr (requires { Handle(nullptr, change); })
                           if (const auto window = PeekShared(change.window)) Handle(window, change);
                   },
               },
               happened);
}

}  // namespace platform
