// Holds the parts of the core together: what one tells those above it, and the end of all.
#include <utility>
#include <vector>

#include "platform/graphics/device_context.h"
#include "platform/graphics/scale.h"
#include "platform/window/core/activation.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/control.h"
#include "platform/window/core/cursor.h"
#include "platform/window/core/display.h"
#include "platform/window/core/file_drop.h"
#include "platform/window/core/foreign.h"
#include "platform/window/core/hooks.h"
#include "platform/window/core/hover.h"
#include "platform/window/core/inbox.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/keyboard.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/message_pump.h"
#include "platform/window/core/message_queue.h"
#include "platform/window/core/notifications.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/timers.h"
#include "platform/window/core/window_classes.h"
#include "platform/window/core/window_contexts.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

// Only notes what happened. The window system may be in the middle of its own work, so no procedure runs
// before the event's turn in the queue.
class Sink final : public WindowEvents {
  public:
    void Notify(WindowEvent happened) override {
        if (std::holds_alternative<event::ConnectionLost>(happened)) return MarkSystemLost();
        if (const auto* const focus = std::get_if<event::FocusChanged>(&happened))
            return NoteSystemFocus(*focus);
        const auto* const pointer = std::get_if<event::Pointer>(&happened);
        const bool isButton = pointer && pointer->kind == event::Pointer::Button;
        if (isButton && (pointer->button < 1 || pointer->button > 3)) return;
        Queue().Report(std::move(happened));
    }
    DROPEFFECT FilesOver(HWND window, POINT screen, DROPEFFECT wanted) override {
        return EffectsOfDrop(window, screen, wanted);
    }
};

void DropWindows() {
    std::vector<HWND> all;
    ForEachWindow([&](HWND window, Window& record) {
        all.push_back(window);
        if (WindowSystem* system = record.IsChild() ? nullptr : SystemOf(record)) system->Destroy(window);
    });
    DropAllContexts();
    for (HWND window : all) {
        Remove(window);
        FailSentTo(window);
    }
    ClearStack();
    ResetInvalidation();
    Queue().Clear();
    Timers().Clear();
    ClearInbox();
    ForgetCapture();
    ResetHover();
    ForgetLastClick();
    ResetCursor();
    ResetInputState();
    ResetKeyboard();
    ResetActivation();
    ForgetCaptionMove(HWND());
    ForgetQuit();
    Hooks().Clear();
    UpdateKeyWatch();
}

void End() {
    ShutDownWindows();
    EndThreads();
    ResetWindowTable();
    ResetWindowClasses();
    ResetContexts();
    ResetMessageFilter();
    Queue() = {};
    Timers() = {};
    Hooks() = {};
}

// Surfaces and device contexts keep tables of their own. Using both before the core ends with the process
// makes those older, so that they are still there then.
struct AtExit {
    AtExit() { DeleteDeviceContext(MakeDeviceContext(NullSurface(), POINT{0, 0}, Region())); }
    ~AtExit() { End(); }
};

}  // namespace

WindowEvents& EventSink() {
    return Lasting<Sink>();
}

void SystemChosen() {
    UpdateKeyWatch();
}

void SystemLost() {
    ForgetCapture();
}

void SystemGone() {
    ForgetCapture();
    SetCursorWindow(HWND());
    ClearForeignHandles();
    ForgetSystemFocus();
}

void OwnerChanges() {
    static const AtExit atExit;
    Queue().DropThreadMessages();
    ForgetQuit();
}

void OwnerEnds() {
    DropWindows();
    DisownThread();
}

void ShutDownWindows() {
    DropWindows();
    DropSystem();
    DisownThread();
}

}  // namespace platform
