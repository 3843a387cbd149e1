// From key events to key messages, and from those to characters.
#pragma once

#include "platform/window/core/message_queue.h"
#include "platform/window/core/routed.h"

namespace platform {

Routed RouteKey(const event::Key& event);
void TakeKey(const event::Key& event, const Routed& routed);
void ResetKeyboard();

}  // namespace platform
