// Keys, buttons and the pointer, as of the message being handled.
#pragma once

#include "platform/window/core/lasting.h"
#include "platform/window/window_events.h"

namespace platform {

// As messages have reported it; unlike GetKeyState, also while a hook is asked.
bool IsKeyDown(UINT virtualKey);
// The buttons and modifiers.
InputState HeldInput();
POINT PointerPosition();
void NotePointerPosition(POINT screen);
// The effects of a message that is taken, or of an event that no window hears of.
void NoteInputState(const event::Pointer& event);
void NoteInputState(const event::Key& event);
// Keys went up and down without events of their own: these are down now.
void NoteKeysHeld(const KeySet& held);

// What is down while a hook is asked: all keys, whoever has the keyboard.
class WatchedKeys {
  public:
    explicit WatchedKeys(const KeySet& keys);
    ~WatchedKeys();
    WatchedKeys(const WatchedKeys&) = delete;
    WatchedKeys& operator=(const WatchedKeys&) = delete;

  private:
    const KeySet* before_;
};

void ResetInputState();

}  // namespace platform
