#include "platform/window/core/input_state.h"

#include "platform/window/core/display.h"
#include "platform/window/core/window_table.h"

namespace platform {

namespace {

struct InputRecord {
    POINT pointer{-1, -1};
    bool down[256] = {};
    bool toggled[256] = {};
    const KeySet* watched = nullptr;
};

InputRecord& State() {
    return Lasting<InputRecord>();
}

void NoteModifiers(const InputState& state) {
    bool(&down)[256] = State().down;
    down[VK_SHIFT] = state.shift;
    down[VK_CONTROL] = state.control;
    down[VK_MENU] = state.alt;
    down[VK_LBUTTON] = state.left;
    down[VK_MBUTTON] = state.middle;
    down[VK_RBUTTON] = state.right;
}

}  // namespace

bool IsKeyDown(UINT virtualKey) {
    return virtualKey < 256 && State().down[virtualKey];
}

InputState HeldInput() {
    const bool(&down)[256] = State().down;
    return {down[VK_SHIFT],   down[VK_CONTROL], down[VK_MENU],
            down[VK_LBUTTON], down[VK_MBUTTON], down[VK_RBUTTON]};
}

POINT PointerPosition() {
    return State().pointer;
}

void NotePointerPosition(POINT screen) {
    State().pointer = screen;
}

void NoteInputState(const event::Pointer& event) {
    NoteModifiers(event.state);
    if (event.kind != event::Pointer::Button) return;
    InputRecord& keys = State();
    const int key = event.button == 1 ? VK_LBUTTON : event.button == 2 ? VK_MBUTTON : VK_RBUTTON;
    if (event.down) keys.toggled[key] = !keys.toggled[key];
    keys.down[key] = event.down;
}

void NoteInputState(const event::Key& event) {
    InputRecord& keys = State();
    const bool isKnown = event.virtualKey < 256;
    if (isKnown && event.down && !keys.down[event.virtualKey])
        keys.toggled[event.virtualKey] = !keys.toggled[event.virtualKey];
    NoteModifiers(event.state);
    if (isKnown) keys.down[event.virtualKey] = event.down;
}

void NoteKeysHeld(const KeySet& held) {
    InputRecord& keys = State();
    for (std::size_t key = 0; key < held.size(); ++key) {
        const bool isButton = key == VK_LBUTTON || key == VK_RBUTTON || key == VK_MBUTTON;
        if (!isButton) keys.down[key] = held[key];
    }
}

WatchedKeys::WatchedKeys(const KeySet& keys) : before_(std::exchange(State().watched, &keys)) {}

WatchedKeys::~WatchedKeys() {
    State().watched = before_;
}

void ResetInputState() {
    ResetLasting<InputRecord>();
}

}  // namespace platform

using namespace platform;

std::int16_t GetKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255 || !IsOwningThread()) return 0;
    const InputRecord& keys = Lasting<InputRecord>();
    const bool down =
        keys.watched ? (*keys.watched)[static_cast<std::size_t>(virtualKey)] : keys.down[virtualKey];
    return static_cast<std::int16_t>((down ? 0x8000U : 0U) | (keys.toggled[virtualKey] ? 1U : 0U));
}

std::int16_t GetAsyncKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255 || !IsOwningThread()) return 0;
    WindowSystem* system = System();
    const bool down = system && system->KeysDown()[static_cast<std::size_t>(virtualKey)];
    return static_cast<std::int16_t>(down ? 0x8000U : 0U);
}
