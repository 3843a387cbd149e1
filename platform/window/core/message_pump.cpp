#include "platform/window/core/message_pump.h"

#include <algorithm>
#include <utility>

#include "platform/window/core/activation.h"
#include "platform/window/core/control.h"
#include "platform/window/core/cursor.h"
#include "platform/window/core/display.h"
#include "platform/window/core/events.h"
#include "platform/window/core/inbox.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/invalidation.h"
#include "platform/window/core/keyboard.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/pointer.h"
#include "platform/window/core/timers.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

struct QuitRequest {
    std::optional<int> code;
    std::uint64_t time = 0;
    std::size_t paints = 0;  // since
    bool madeUp = false;
};

QuitRequest& Quit() {
    return Lasting<QuitRequest>();
}

bool (*messageFilter)(MSG&) = nullptr;

// So many paints in a row are a window that invalidates itself whenever it paints.
std::size_t EndlessPaints() {
    return 1000 + WindowCount();
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
        Queue().Return(std::move(entry));
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
    if (message.hwnd && !Peek(message.hwnd)) {
        Queue().Erase(place);
        return Step::Restart;
    }
    if (!filter.Takes(message)) return Step::Skip;
    out = message;
    if (take == Take::Yes) Queue().Erase(place);
    return Step::Found;
}

// A message that waits, or what an event comes to. What becomes no message is handled on the way.
Step TakeEntry(const MessageQueue::Entry& waiting, MessageQueue::Order place, MSG& out,
               const MessageFilter& filter, Take take) {
    if (const auto* const message = std::get_if<MSG>(&waiting))
        return TakePosted(*message, place, out, filter, take);
    const auto* const happened = std::get_if<WindowEvent>(&waiting);
    if (happened && IsInput(*happened) && !MayBecome(*happened, filter)) return Step::Skip;
    MessageQueue::Taken entry = Queue().Take(place);
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
    while (const MessageQueue::Entry* entry = Queue().FirstAfter(passed, &place)) {
        const Step step = TakeEntry(*entry, place, out, filter, take);
        if (step == Step::Found) return true;
        if (step == Step::Skip) passed = place;
    }
    return false;
}

bool TakePaint(MSG& out, const MessageFilter& filter) {
    if (!filter.TakesKind(WM_PAINT)) return false;
    const HWND window = NextToPaint(filter.window);
    if (!window) return false;
    // A window that invalidates itself in every paint must not hold up a WM_QUIT for ever.
    if (Quit().code && ++Quit().paints > EndlessPaints()) return false;
    out = Stamped(window, WM_PAINT, 0, 0);
    return true;
}

bool TakeTimer(MSG& out, const MessageFilter& filter, Take take) {
    if (!filter.TakesKind(WM_TIMER)) return false;
    const std::uint64_t now = CurrentTime();
    // Timers that fall due behind a WM_QUIT come no more, or a busy one would hold it up for ever.
    const std::uint64_t latest = Quit().code ? std::min(now, Quit().time) : now;
    const Timer* due = Timers().FirstDue(latest, [&](const Timer& timer) {
        return !filter.window || IsSameOrInside(timer.window, filter.window);
    });
    if (!due) return false;
    out = Stamped(due->window, WM_TIMER, due->id, reinterpret_cast<LPARAM>(due->procedure));
    if (take == Take::Yes) Timers().Rearm(due->window, due->id, now);
    return true;
}

bool TakeQuit(MSG& out, Take take) {
    if (!Quit().code) return false;
    out = Stamped(HWND(), WM_QUIT, static_cast<WPARAM>(*Quit().code), 0);
    if (take == Take::Yes) {
        Quit().code.reset();
        Quit().paints = 0;
    }
    return true;
}

}  // namespace

bool MessageFilter::Takes(const MSG& message) const {
    return TakesKind(message.message) && (!window || IsSameOrInside(message.hwnd, window));
}

bool Retrieve(MSG& message, const MessageFilter& filter, Take take, WithQuit withQuit) {
    RunSentInbox();
    ShowCursorDecided();
    if (WindowSystem* system = System()) system->Poll();
    NoticeRefusedActivation();
    TakeInbox();
    const bool found = TakeQueued(message, filter, take) || TakePaint(message, filter) ||
                       TakeTimer(message, filter, take) ||
                       (withQuit == WithQuit::Yes && TakeQuit(message, take));
    if (found) Quit().madeUp = false;
    return found;
}

MSG Stamped(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    MSG stamped{window, message, wParam, lParam, static_cast<DWORD>(CurrentTime()), POINT{0, 0}};
    if (IsOwningThread()) stamped.pt = PointerPosition();
    return stamped;
}

std::optional<std::uint64_t> NextDeadline() {
    const std::optional<std::uint64_t> timer = Timers().NextDue();
    const std::optional<std::uint64_t> answer = ActivationAnswerDue();
    return timer && answer ? std::min(*timer, *answer) : timer ? timer : answer;
}

void RequestQuit(int exitCode) {
    // A loop that was ended for want of anything to come passes that on; the outer loop will see for itself.
    if (std::exchange(Quit().madeUp, false)) return;
    Quit().code = exitCode;
    Quit().time = CurrentTime();
}

void ForgetQuit() {
    Quit().code.reset();
}

void NoteQuitMadeUp() {
    Quit().madeUp = true;
}

void SetMessageFilter(bool (*filter)(MSG& message)) {
    messageFilter = filter;
}

void ResetMessageFilter() {
    messageFilter = nullptr;
}

void DeliverMessage(MSG& message) {
    if (messageFilter && messageFilter(message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void PumpWaiting(const std::function<bool()>& done) {
    MSG message{};
    while (!done() && Retrieve(message, MessageFilter(), Take::Yes, WithQuit::No))
        DeliverMessage(message);
}

Pumped PumpUntil(const std::function<bool()>& done) {
    for (;;) {
        PumpWaiting(done);
        if (done()) return Pumped::Done;
        WindowSystem* system = System();
        if (Quit().code || !system) return Pumped::NoMore;
        if (system->Wait(NextDeadline())) continue;
        return IsSystemLost() || !system->IsAlive() ? Pumped::NoMore : Pumped::Nothing;
    }
}

void RunPendingMessages() {
    if (!ClaimThread()) return;
    MSG message{};
    std::size_t paints = 0;  // without anything else in between
    while (paints < EndlessPaints() && Retrieve(message, MessageFilter(), Take::Yes, WithQuit::No)) {
        paints = message.message == WM_PAINT ? paints + 1 : 0;
        DeliverMessage(message);
    }
}

}  // namespace platform
