// From key events to key messages, and the state of the keys as of the message being handled.
#pragma once

#include "platform/window/core/pointer.h"

namespace platform {

Routed RouteKey(const event::Key& event);
// The side effects of taking the message, or of an event that no window hears of.
void NoteInputState(const event::Pointer& event);
void NoteInputState(const event::Key& event);
// Keys went up and down without events of their own: these are down now.
void NoteKeysHeld(const KeySet& held);
void TakeKey(const event::Key& event, const Routed& routed);

}  // namespace platform
