#include "platform/window/core/keyboard.h"

#include "platform/window/core/activation.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/file_drag.h"
#include "platform/window/core/tree.h"

namespace platform {

namespace {

constexpr LPARAM kAltHeld = LPARAM{1} << 29;
constexpr LPARAM kWasDown = LPARAM{1} << 30;
constexpr LPARAM kReleased = LPARAM{1} << 31;

bool IsDown(const KeyboardTracking& keyboard, std::size_t key) {
    return keyboard.watched ? (*keyboard.watched)[key] : keyboard.down[key];
}

bool IsSystemKey(const event::Key& event) {
    if (event.virtualKey == VK_MENU) return !event.state.control;
    return event.state.alt && !event.state.control;
}

void NoteModifiers(const InputState& state) {
    bool(&down)[256] = Core::Get().keyboard.down;
    down[VK_SHIFT] = state.shift;
    down[VK_CONTROL] = state.control;
    down[VK_MENU] = state.alt;
    down[VK_LBUTTON] = state.left;
    down[VK_MBUTTON] = state.middle;
    down[VK_RBUTTON] = state.right;
}

}  // namespace

Routed RouteKey(const event::Key& event) {
    Core& core = Core::Get();
    Routed routed;
    if (FeedFileDrag(event) || FeedCaptionMove(event)) return routed;
    NoteKeyFor(event.window);
    HWND target = core.activation.focus;
    if (!core.Peek(target) || (core.Peek(event.window) && !(TopLevelOf(target) == event.window)))
        target = event.window;
    const Window* window = core.Peek(target);
    if (!window || !IsEnabledInTree(*window)) return routed;
    const bool wasDown = event.virtualKey < 256 && core.keyboard.down[event.virtualKey];
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
    message.pt = core.pointer.screen;
    routed.outcome = Routed::Outcome::Message;
    return routed;
}

void NoteInputState(const event::Pointer& event) {
    NoteModifiers(event.state);
    if (event.kind != event::Pointer::Button) return;
    auto& keys = Core::Get().keyboard;
    const int key = event.button == 1 ? VK_LBUTTON : event.button == 2 ? VK_MBUTTON : VK_RBUTTON;
    if (event.down) keys.toggled[key] = !keys.toggled[key];
    keys.down[key] = event.down;
}

void NoteInputState(const event::Key& event) {
    auto& keys = Core::Get().keyboard;
    const bool isKnown = event.virtualKey < 256;
    if (isKnown && event.down && !keys.down[event.virtualKey])
        keys.toggled[event.virtualKey] = !keys.toggled[event.virtualKey];
    NoteModifiers(event.state);
    if (isKnown) keys.down[event.virtualKey] = event.down;
}

void NoteKeysHeld(const KeySet& held) {
    auto& keys = Core::Get().keyboard;
    for (std::size_t key = 0; key < held.size(); ++key) {
        const bool isButton = key == VK_LBUTTON || key == VK_RBUTTON || key == VK_MBUTTON;
        if (!isButton) keys.down[key] = held[key];
    }
}

void TakeKey(const event::Key& event, const Routed& routed) {
    auto& keys = Core::Get().keyboard;
    keys.lastKey = routed.message;
    keys.lastCharacter = event.down ? event.character : char16_t{0};
}

}  // namespace platform

using namespace platform;

std::int16_t GetKeyState(int virtualKey) {
    Core& core = Core::Get();
    if (virtualKey < 0 || virtualKey > 255 || !core.IsOwningThread()) return 0;
    const unsigned state = (IsDown(core.keyboard, static_cast<std::size_t>(virtualKey)) ? 0x8000U : 0U) |
                           (core.keyboard.toggled[virtualKey] ? 1U : 0U);
    return static_cast<std::int16_t>(state);
}

std::int16_t GetAsyncKeyState(int virtualKey) {
    Core& core = Core::Get();
    if (virtualKey < 0 || virtualKey > 255 || !core.IsOwningThread()) return 0;
    WindowSystem* system = core.System();
    const bool down = system && system->KeysDown()[static_cast<std::size_t>(virtualKey)];
    return static_cast<std::int16_t>(down ? 0x8000U : 0U);
}

BOOL TranslateMessage(const MSG* message) {
    if (!message) return FALSE;
    const bool down = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    if (!down) return message->message == WM_KEYUP || message->message == WM_SYSKEYUP;
    Core& core = Core::Get();
    if (!core.IsOwningThread()) return TRUE;
    const MSG& last = core.keyboard.lastKey;
    if (core.keyboard.lastCharacter == 0 || !(last.hwnd == message->hwnd) ||
        last.message != message->message || last.wParam != message->wParam || last.time != message->time)
        return TRUE;
    MSG character = *message;
    character.message = message->message == WM_KEYDOWN ? UINT{WM_CHAR} : UINT{WM_SYSCHAR};
    character.wParam = core.keyboard.lastCharacter;
    core.keyboard.lastCharacter = 0;
    static_cast<void>(core.queue.PostFirst(character));  // without memory the character is lost
    return TRUE;
}
