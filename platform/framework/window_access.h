// How windows and objects meet: the framework's window class, the creation of a window for an object, and
// the message that an object is handling.
#pragma once

#include <platform/framework.h>

namespace platform {

// The name of the window class whose windows deliver their messages to objects.
LPCWSTR FrameworkWindowClass();

// One message being handled by an object, on the stack of the window procedure. Messages nest: every object
// knows its innermost frame, and each frame the one around it. An object that is destroyed leaves its frames.
struct MessageFrame {
    MessageFrame(CWnd& target, HWND targetWindow, UINT messageNumber, WPARAM w, LPARAM l);
    ~MessageFrame();
    MessageFrame(const MessageFrame&) = delete;
    MessageFrame& operator=(const MessageFrame&) = delete;

    CWnd* object;  // null once it is destroyed
    const HWND window;
    const UINT message;
    const WPARAM wParam;
    const LPARAM lParam;
    MessageFrame* const outer;
};

// Names the object that the next window of the framework's class belongs to, on this thread, until that
// window has come or the scope is left. Pass the object as the creation parameter.
class PendingCreation {
  public:
    explicit PendingCreation(CWnd& object);
    ~PendingCreation();
    PendingCreation(const PendingCreation&) = delete;
    PendingCreation& operator=(const PendingCreation&) = delete;

    // The object for a window that is being created with this parameter; null when none was named.
    static CWnd* Take(HWND window, LPARAM parameter);
    // The object is being destroyed.
    static void Forget(const CWnd& object);

  private:
    CWnd* object_;
    HWND window_;  // given to the object
    PendingCreation* outer_;
};

// The doors into CWnd for the rest of the framework.
struct WindowAccess {
    static LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Whether an object has a window. One that was taken away without a word, as when the window system was
    // shut down, is forgotten here.
    static bool HasWindow(CWnd& object);
    // The window is gone: takes it from its object, which may delete itself.
    static void Detach(CWnd& object);
    static MessageFrame*& InnermostFrame(CWnd& object) { return object.m_frame; }
};

}  // namespace platform
