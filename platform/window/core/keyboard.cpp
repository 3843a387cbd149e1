#include "platform/window/core/keyboard.h"

#include "platform/window/core/activation.h"
#include "platform/window/core/input_state.h"
#include "platform/window/core/lasting.h"
#include "platform/window/core/modal_input.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

constexpr LPARAM kAltHeld = LPARAM{1} << 29;
constexpr LPARAM kWasDown = LPARAM{1} << 30;
constexpr LPARAM kReleased = LPARAM{1} << 31;

// The key message taken last, for TranslateMessage.
struct TakenKey {
    MSG message{};
    char16_t character = 0;
};

bool IsSystemKey(const event::Key& event) {
    if (event.virtualKey == VK_MENU) return !event.state.control;
    return event.state.alt && !event.state.control;
}

}  // namespace

Routed RouteKey(const event::Key& event) {
    Routed routed;
    if (TakenByLoop(event)) return routed;
    NoteKeyFor(event.window);
    HWND target = FocusedWindow();
    if (!Peek(target) || (Peek(event.window) && !(TopLevelOf(target) == event.window))) target = event.window;
    const Window* window = Peek(target);
    if (!window || !IsEnabledInTree(*window)) return routed;
    const bool wasDown = IsKeyDown(event.virtualKey);
    MSG& message = routed.message;
    message.hwnd = target;
    message.message = event.down ? (IsSystemKey(event) ? UINT{WM_SYSKEYDOWN} : UINT{WM_KEYDOWN})
                                 : (IsSystemKey(event) ? UINT{WM_SYSKEYUP} : UINT{WM_KEYUP});
    message.wParam = event.virtualKey;
    message.lParam = 1 | (event.state.alt ? kAltHeld : 0);
    if (!event.down)
        message.lParam |= kWasDown | kReleased;
    else if (wasDown)
        message.lParam |= kWasDown;
    message.time = static_cast<DWORD>(event.time);
    message.pt = PointerPosition();
    routed.outcome = Routed::Outcome::Message;
    return routed;
}

void TakeKey(const event::Key& event, const Routed& routed) {
    Lasting<TakenKey>() = {routed.message, event.down ? event.character : char16_t{0}};
}

void ResetKeyboard() {
    ResetLasting<TakenKey>();
}

}  // namespace platform

using namespace platform;

BOOL TranslateMessage(const MSG* message) {
    if (!message) return FALSE;
    const bool down = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    if (!down) return message->message == WM_KEYUP || message->message == WM_SYSKEYUP;
    if (!IsOwningThread()) return TRUE;
    TakenKey& taken = Lasting<TakenKey>();
    const MSG& last = taken.message;
    if (taken.character == 0 || !(last.hwnd == message->hwnd) || last.message != message->message ||
        last.wParam != message->wParam || last.time != message->time)
        return TRUE;
    MSG character = *message;
    character.message = message->message == WM_KEYDOWN ? UINT{WM_CHAR} : UINT{WM_SYSCHAR};
    character.wParam = taken.character;
    taken.character = 0;
    static_cast<void>(Queue().PostFirst(character));  // without memory the character is lost
    return TRUE;
}
