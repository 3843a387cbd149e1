// Sending, posting, taking and dispatching messages.
#include <deque>
#include <new>
#include <optional>

#include "platform/base/thread_service.h"
#include "platform/window/core/display.h"
#include "platform/window/core/inbox.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/message_pump.h"
#include "platform/window/core/message_queue.h"
#include "platform/window/core/timers.h"
#include "platform/window/core/window_table.h"

using namespace platform;

namespace {

// What a thread without windows posted to itself.
struct ThreadMessages {
    std::deque<MSG> posted;
    std::optional<int> quit;
};

ThreadMessages& MessagesOfThread() {
    return ThreadService<ThreadMessages>::Get();
}

bool RetrieveOnOtherThread(MSG& out, const MessageFilter& filter, Take take) {
    if (HasEnded()) return false;
    auto& [posted, quit] = MessagesOfThread();
    for (auto at = posted.begin(); at != posted.end(); ++at) {
        if (!filter.Takes(*at)) continue;
        out = *at;
        if (take == Take::Yes) posted.erase(at);
        return true;
    }
    if (!quit) return false;
    out = MSG{HWND(), WM_QUIT, static_cast<WPARAM>(*quit), 0, 0, POINT{0, 0}};
    if (take == Take::Yes) quit.reset();
    return true;
}

bool CheckFilterWindow(HWND window) {
    return !window || Require(window) != nullptr;
}

// Whether a WM_TIMER names a procedure that a timer really has: a made-up one must not be called.
bool IsTimerProcedure(const MSG& message, TIMERPROC procedure) {
    const Timer* timer = Timers().Find(message.hwnd, message.wParam);
    return timer && timer->procedure == procedure;
}

}  // namespace

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsOwningThread()) return SendFromElsewhere(MSG{window, message, wParam, lParam, 0, POINT{0, 0}});
    const std::shared_ptr<Window> record = RequireShared(window);
    return record ? CallProcedure(record, message, wParam, lParam) : 0;
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const MSG stamped = Stamped(window, message, wParam, lParam);
    if (!HasOwner()) ClaimThread();
    if (!IsOwningThread()) {
        if (window || HasEnded()) return PostFromElsewhere(stamped);
        try {
            MessagesOfThread().posted.push_back(stamped);
            return TRUE;
        } catch (const std::bad_alloc&) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return FALSE;
        }
    }
    if (window && !Require(window)) return FALSE;
    TakeInbox();
    if (Queue().Post(stamped)) return TRUE;
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}

void PostQuitMessage(int exitCode) {
    if (!HasOwner()) ClaimThread();
    if (HasEnded()) return;
    if (!IsOwningThread()) {
        MessagesOfThread().quit = exitCode;
        return;
    }
    RequestQuit(exitCode);
}

BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
    if (!message) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *message = MSG{};
    const MessageFilter filter{window, first, last};
    const Take take = remove & PM_REMOVE ? Take::Yes : Take::No;
    if (!HasOwner()) ClaimThread();
    if (!IsOwningThread()) return RetrieveOnOtherThread(*message, filter, take);
    if (!CheckFilterWindow(window)) return FALSE;
    return Retrieve(*message, filter, take, WithQuit::Yes);
}

int GetMessageW(MSG* message, HWND window, UINT first, UINT last) {
    if (!message) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    *message = MSG{};
    const MessageFilter filter{window, first, last};
    if (!HasOwner()) ClaimThread();
    if (!IsOwningThread()) {
        // Nobody else can post to a thread without windows: waiting would be for ever.
        if (RetrieveOnOtherThread(*message, filter, Take::Yes)) return message->message != WM_QUIT;
        SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
        return -1;
    }
    for (;;) {
        if (!CheckFilterWindow(window)) return -1;
        if (IsSystemLost()) {
            RunSentInbox();
            SetLastError(ERROR_CONNECTION_UNAVAIL);
            return -1;
        }
        if (Retrieve(*message, filter, Take::Yes, WithQuit::Yes)) return message->message != WM_QUIT;
        if (IsSystemLost()) continue;
        WindowSystem* system = EnsureSystem();
        if (!system) return -1;
        if (system->Wait(NextDeadline())) continue;
        if (IsSystemLost() || !system->IsAlive()) {
            MarkSystemLost();
            continue;
        }
        *message = Stamped(HWND(), WM_QUIT, 0, 0);
        NoteQuitMadeUp();
        return 0;
    }
}

LRESULT DispatchMessageW(const MSG* message) {
    if (!message || !IsOwningThread()) return 0;
    if (message->message == WM_TIMER && message->lParam != 0) {
        const auto procedure = reinterpret_cast<TIMERPROC>(message->lParam);
        if (IsTimerProcedure(*message, procedure))
            procedure(message->hwnd, WM_TIMER, message->wParam, message->time);
        return 0;
    }
    const std::shared_ptr<Window> window = PeekShared(message->hwnd);
    if (!window) return 0;
    const std::uint64_t validation = window->validation;
    const LRESULT result = CallProcedure(window, message->message, message->wParam, message->lParam);
    // A procedure that neither paints nor validates would be asked again without end.
    if (message->message == WM_PAINT && Peek(message->hwnd) && window->validation == validation)
        Validate(*window);
    return result;
}
