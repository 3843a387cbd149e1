// From key events to key messages, and the state of the keys as of the message being handled.
#pragma once

#include "platform/window/core/pointer.h"

namespace platform {

Routed RouteKey(const SystemEvent& event);
// The side effects of taking the message, or of an event that no window hears of.
void NoteInputState(const SystemEvent& event);
void TakeKey(const SystemEvent& event, const Routed& routed);

}  // namespace platform
