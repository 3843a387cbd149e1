// From pointer events to pointer messages.
#pragma once

#include "platform/window/core/message_queue.h"
#include "platform/window/core/routed.h"

namespace platform {

// Who gets a pointer event and as what. `place` is where the event stands in the queue.
Routed RoutePointer(const event::Pointer& event, MessageQueue::Order place);
// The side effects of taking the message: activation, the click count, WM_SETCURSOR. False when the window
// did not survive them.
bool TakePointer(const event::Pointer& event, const Routed& routed);

// The pointer left a top-level, or the core wants to know whether it did.
void PointerLeftTopLevel(HWND topLevel);
void CheckPointer();

}  // namespace platform
