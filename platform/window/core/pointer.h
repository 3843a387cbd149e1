// From pointer events to pointer messages: who gets them, clicks, capture, leaving, the cursor.
#pragma once

#include <optional>

#include "platform/window/core/core.h"

namespace platform {

// What an input event comes to.
struct Routed {
    enum class Outcome {
        Nothing,  // taken in; no window hears of it
        Message,
        Later  // something else was put ahead of it: ask again
    };
    Outcome outcome = Outcome::Nothing;
    MSG message{};
    int hit = HTCLIENT;
};

// Who gets a pointer event and as what. `place` is where the event stands in the queue.
Routed RoutePointer(const event::Pointer& event, MessageQueue::Order place);
// The side effects of taking the message: activation, the click count, WM_SETCURSOR. False when the window
// did not survive them.
bool TakePointer(const event::Pointer& event, const Routed& routed);

// The pointer left a top-level, or the core wants to know whether it did.
void PointerLeftTopLevel(HWND topLevel);
void CheckPointer();

// The deepest window that takes the pointer at a point of the screen; children that are disabled count.
HWND FindPointerTarget(POINT screen, int* hit);

// False, and nobody holds the pointer, when the window system does not give it.
bool SetPointerCapture(HWND window);
void ReleasePointerCapture();
// The window is no longer there to be pointed at: hidden, minimised, disabled or on its way out.
void WithdrawPointer(const Window& window);

// Gives the window system the cursor that the messages decided on. Deferred to the next wait, so that a
// cursor that changes twice in one move does not flicker.
void ShowCursorDecided();
// WM_SETCURSOR's default: the parent may decide, then the class.
LRESULT DefaultSetCursor(Window& window, WPARAM wParam, LPARAM lParam);

}  // namespace platform
