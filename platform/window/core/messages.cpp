#include "platform/window/core/messages.h"

#include <algorithm>
#include <deque>
#include <new>

#include "platform/base/thread_service.h"
#include "platform/window/core/activation.h"
#include "platform/window/core/control.h"
#include "platform/window/core/events.h"
#include "platform/window/core/keyboard.h"
#include "platform/window/core/painting.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

// What a thread without windows posted to itself.
struct ThreadMessages {
    std::deque<MSG> posted;
    std::optional<int> quit;
};

ThreadMessages& MessagesOfThread() {
    return ThreadService<ThreadMessages>::Get();
}

// So many paints in a row are a window that invalidates itself whenever it paints.
std::size_t EndlessPaints() {
    return 1000 + Core::Get().WindowCount();
}

MSG Stamped(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Core& core = Core::Get();
    MSG stamped{window, message, wParam, lParam, static_cast<DWORD>(core.Now()), POINT{0, 0}};
    if (core.IsOwningThread()) stamped.pt = core.pointer.screen;
    return stamped;
}

bool MayBecome(const WindowEvent& input, const MessageFilter& filter) {
    if (std::holds_alternative<event::Key>(input)) return filter.TakesRange(WM_KEYDOWN, WM_SYSKEYUP);
    return filter.TakesRange(WM_MOUSEFIRST, WM_MOUSELAST) || filter.TakesKind(WM_NCLBUTTONDOWN) ||
           filter.TakesKind(WM_MOUSELEAVE);
}

Routed Route(const event::Pointer& input, MessageQueue::Order place) {
    return RoutePointer(input, place);
}
Routed Route(const event::Key& input, MessageQueue::Order) {
    return RouteKey(input);
}
bool TakeRouted(const event::Pointer& input, const Routed& routed) {
    return TakePointer(input, routed);
}
bool TakeRouted(const event::Key& input, const Routed& routed) {
    TakeKey(input, routed);
    return true;
}

enum class Step { Restart, Skip, Found };

template <class Input>
Step TakeInput(const Input& input, MessageQueue::Taken& entry, MSG& out, const MessageFilter& filter,
               Take take) {
    Routed routed;
    try {
        routed = Route(input, entry.key());
    } catch (...) {
        NoteInputState(input);  // it happened, though a handler that was asked about it threw
        throw;
    }
    if (routed.outcome == Routed::Outcome::Nothing) {
        NoteInputState(input);
        return Step::Restart;
    }
    const bool fits = routed.outcome == Routed::Outcome::Message && filter.Takes(routed.message);
    if (!fits || take == Take::No) {
        Core::Get().queue.Return(std::move(entry));
        if (routed.outcome == Routed::Outcome::Later) return Step::Restart;
        out = routed.message;
        return fits ? Step::Found : Step::Skip;
    }
    NoteInputState(input);
    out = routed.message;
    return TakeRouted(input, routed) ? Step::Found : Step::Restart;
}

Step TakePosted(const MSG& message, MessageQueue::Order place, MSG& out, const MessageFilter& filter,
                Take take) {
    Core& core = Core::Get();
    if (message.hwnd && !core.Peek(message.hwnd)) {
        core.queue.Erase(place);
        return Step::Restart;
    }
    if (!filter.Takes(message)) return Step::Skip;
    out = message;
    if (take == Take::Yes) core.queue.Erase(place);
    return Step::Found;
}

// A message that waits, or what an event comes to. What becomes no message is handled on the way.
Step TakeEntry(const MessageQueue::Entry& waiting, MessageQueue::Order place, MSG& out,
               const MessageFilter& filter, Take take) {
    if (const auto* const message = std::get_if<MSG>(&waiting))
        return TakePosted(*message, place, out, filter, take);
    const auto* const happened = std::get_if<WindowEvent>(&waiting);
    if (happened && IsInput(*happened) && !MayBecome(*happened, filter)) return Step::Skip;
    MessageQueue::Taken entry = Core::Get().queue.Take(place);
    if (!happened) {
        if (std::holds_alternative<FocusCheck>(entry.mapped()))
            FollowSystemFocus();
        else
            CheckPointer();
        return Step::Restart;
    }
    const WindowEvent& taken = std::get<WindowEvent>(entry.mapped());
    if (const auto* const pointer = std::get_if<event::Pointer>(&taken))
        return TakeInput(*pointer, entry, out, filter, take);
    if (const auto* const key = std::get_if<event::Key>(&taken))
        return TakeInput(*key, entry, out, filter, take);
    HandleEvent(taken);
    return Step::Restart;
}

bool TakeQueued(MSG& out, const MessageFilter& filter, Take take) {
    MessageQueue::Order passed = 0;  // entries up to here do not fit the filter
    MessageQueue::Order place = 0;
    while (const MessageQueue::Entry* entry = Core::Get().queue.FirstAfter(passed, &place)) {
        const Step step = TakeEntry(*entry, place, out, filter, take);
        if (step == Step::Found) return true;
        if (step == Step::Skip) passed = place;
    }
    return false;
}

bool TakePaint(MSG& out, const MessageFilter& filter) {
    Core& core = Core::Get();
    if (!filter.TakesKind(WM_PAINT)) return false;
    const HWND window = NextToPaint(filter.window);
    if (!window) return false;
    // A window that invalidates itself in every paint must not hold up a WM_QUIT for ever.
    if (core.quit && ++core.paintsBeforeQuit > EndlessPaints()) return false;
    out = Stamped(window, WM_PAINT, 0, 0);
    return true;
}

bool TakeTimer(MSG& out, const MessageFilter& filter, Take take) {
    Core& core = Core::Get();
    if (!filter.TakesKind(WM_TIMER)) return false;
    const std::uint64_t now = core.Now();
    // Timers that fall due behind a WM_QUIT come no more, or a busy one would hold it up for ever.
    const std::uint64_t latest = core.quit ? std::min(now, core.quitTime) : now;
    const Timer* due = core.timers.FirstDue(latest, [&](const Timer& timer) {
        return !filter.window || IsSameOrInside(timer.window, filter.window);
    });
    if (!due) return false;
    out = Stamped(due->window, WM_TIMER, due->id, reinterpret_cast<LPARAM>(due->procedure));
    if (take == Take::Yes) core.timers.Rearm(due->window, due->id, now);
    return true;
}

bool TakeQuit(MSG& out, Take take) {
    Core& core = Core::Get();
    if (!core.quit) return false;
    out = Stamped(HWND(), WM_QUIT, static_cast<WPARAM>(*core.quit), 0);
    if (take == Take::Yes) {
        core.quit.reset();
        core.paintsBeforeQuit = 0;
    }
    return true;
}

bool RetrieveOnOtherThread(MSG& out, const MessageFilter& filter, Take take) {
    if (Core::Get().HasEnded()) return false;
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
    return !window || Core::Get().Find(window) != nullptr;
}

// Whether a WM_TIMER names a procedure that a timer really has: a made-up one must not be called.
bool IsTimerProcedure(const MSG& message, TIMERPROC procedure) {
    const Timer* timer = Core::Get().timers.Find(message.hwnd, message.wParam);
    return timer && timer->procedure == procedure;
}

}  // namespace

bool MessageFilter::Takes(const MSG& message) const {
    return TakesKind(message.message) && (!window || IsSameOrInside(message.hwnd, window));
}

bool Retrieve(MSG& message, const MessageFilter& filter, Take take, WithQuit withQuit) {
    Core& core = Core::Get();
    core.RunSentInbox();
    ShowCursorDecided();
    if (WindowSystem* system = core.System()) system->Poll();
    NoticeRefusedActivation();
    core.TakeInbox();
    const bool found = TakeQueued(message, filter, take) || TakePaint(message, filter) ||
                       TakeTimer(message, filter, take) ||
                       (withQuit == WithQuit::Yes && TakeQuit(message, take));
    if (found) core.quitMadeUp = false;
    return found;
}

std::optional<std::uint64_t> NextDeadline() {
    const std::optional<std::uint64_t> timer = Core::Get().timers.NextDue();
    const std::optional<std::uint64_t> answer = ActivationAnswerDue();
    return timer && answer ? std::min(*timer, *answer) : timer ? timer : answer;
}

void DispatchOwn(MSG& message) {
    Core& core = Core::Get();
    if (core.messageFilter && core.messageFilter(&message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void PumpWaiting(const std::function<bool()>& done) {
    MSG message{};
    while (!done() && Retrieve(message, MessageFilter(), Take::Yes, WithQuit::No))
        DispatchOwn(message);
}

Pumped PumpUntil(const std::function<bool()>& done) {
    Core& core = Core::Get();
    for (;;) {
        PumpWaiting(done);
        if (done()) return Pumped::Done;
        WindowSystem* system = core.System();
        if (core.quit || !system) return Pumped::NoMore;
        if (system->Wait(NextDeadline())) continue;
        return core.IsLost() || !system->IsAlive() ? Pumped::NoMore : Pumped::Nothing;
    }
}

void RunPendingMessages() {
    Core& core = Core::Get();
    if (!core.Claim()) return;
    MSG message{};
    std::size_t paints = 0;  // without anything else in between
    while (paints < EndlessPaints() && Retrieve(message, MessageFilter(), Take::Yes, WithQuit::No)) {
        paints = message.message == WM_PAINT ? paints + 1 : 0;
        DispatchOwn(message);
    }
}

}  // namespace platform

using namespace platform;

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Core& core = Core::Get();
    if (!core.IsOwningThread())
        return core.SendFromElsewhere(MSG{window, message, wParam, lParam, 0, POINT{0, 0}});
    const std::shared_ptr<Window> record = core.Share(window);
    return record ? CallProcedure(record, message, wParam, lParam) : 0;
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Core& core = Core::Get();
    const MSG stamped = Stamped(window, message, wParam, lParam);
    if (!core.HasOwner()) core.Claim();
    if (!core.IsOwningThread()) {
        if (window || core.HasEnded()) return core.PostFromElsewhere(stamped);
        try {
            MessagesOfThread().posted.push_back(stamped);
            return TRUE;
        } catch (const std::bad_alloc&) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return FALSE;
        }
    }
    if (window && !core.Find(window)) return FALSE;
    core.TakeInbox();
    if (core.queue.Post(stamped)) return TRUE;
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}

void PostQuitMessage(int exitCode) {
    Core& core = Core::Get();
    if (!core.HasOwner()) core.Claim();
    if (core.HasEnded()) return;
    if (!core.IsOwningThread()) {
        MessagesOfThread().quit = exitCode;
        return;
    }
    // A loop that was ended for want of anything to come passes that on; the outer loop will see for itself.
    if (std::exchange(core.quitMadeUp, false)) return;
    core.quit = exitCode;
    core.quitTime = core.Now();
}

BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
    Core& core = Core::Get();
    if (!message) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *message = MSG{};
    const MessageFilter filter{window, first, last};
    const Take take = remove & PM_REMOVE ? Take::Yes : Take::No;
    if (!core.HasOwner()) core.Claim();
    if (!core.IsOwningThread()) return RetrieveOnOtherThread(*message, filter, take);
    if (!CheckFilterWindow(window)) return FALSE;
    return Retrieve(*message, filter, take, WithQuit::Yes);
}

int GetMessageW(MSG* message, HWND window, UINT first, UINT last) {
    Core& core = Core::Get();
    if (!message) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    *message = MSG{};
    const MessageFilter filter{window, first, last};
    if (!core.HasOwner()) core.Claim();
    if (!core.IsOwningThread()) {
        // Nobody else can post to a thread without windows: waiting would be for ever.
        if (RetrieveOnOtherThread(*message, filter, Take::Yes)) return message->message != WM_QUIT;
        SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
        return -1;
    }
    for (;;) {
        if (!CheckFilterWindow(window)) return -1;
        if (core.IsLost()) {
            core.RunSentInbox();
            SetLastError(ERROR_CONNECTION_UNAVAIL);
            return -1;
        }
        if (Retrieve(*message, filter, Take::Yes, WithQuit::Yes)) return message->message != WM_QUIT;
        if (core.IsLost()) continue;
        WindowSystem* system = core.EnsureSystem();
        if (!system) return -1;
        if (system->Wait(NextDeadline())) continue;
        if (core.IsLost() || !system->IsAlive()) {
            core.MarkLost();
            continue;
        }
        *message = Stamped(HWND(), WM_QUIT, 0, 0);
        core.quitMadeUp = true;
        return 0;
    }
}

LRESULT DispatchMessageW(const MSG* message) {
    Core& core = Core::Get();
    if (!message || !core.IsOwningThread()) return 0;
    if (message->message == WM_TIMER && message->lParam != 0) {
        const auto procedure = reinterpret_cast<TIMERPROC>(message->lParam);
        if (IsTimerProcedure(*message, procedure))
            procedure(message->hwnd, WM_TIMER, message->wParam, message->time);
        return 0;
    }
    const std::shared_ptr<Window> window = core.PeekShared(message->hwnd);
    if (!window) return 0;
    const std::uint64_t validation = window->validation;
    const LRESULT result = CallProcedure(window, message->message, message->wParam, message->lParam);
    // A procedure that neither paints nor validates would be asked again without end.
    if (message->message == WM_PAINT && core.Peek(message->hwnd) && window->validation == validation)
        Validate(*window);
    return result;
}

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT interval, TIMERPROC procedure) {
    Core& core = Core::Get();
    if (window ? !core.Find(window) : !core.Claim()) return 0;
    try {
        const UINT_PTR given = core.timers.Set(window, id, interval, procedure, core.Now());
        // An id of 0 is a timer like any other, but 0 as a result means failure.
        return given ? given : 1;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
}

BOOL KillTimer(HWND window, UINT_PTR id) {
    Core& core = Core::Get();
    if (window && !core.Find(window)) return FALSE;
    if (core.IsOwningThread() && core.timers.Kill(window, id)) return TRUE;
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

DWORD GetTickCount() {
    return static_cast<DWORD>(Core::Get().Now());
}
