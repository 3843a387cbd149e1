#include "platform/framework/window_access.h"

#include <atomic>

#include "platform/framework/modal_loop.h"
#include "platform/framework/program.h"
#include "platform/framework/window_objects.h"
#include "platform/window/core/control.h"

namespace platform {
namespace {

constexpr LPCWSTR WindowClassName = u"Framework:Window";

thread_local PendingCreation* innermostCreation = nullptr;

}  // namespace

LPCWSTR FrameworkWindowClass() {
    // Fails, to be tried again, while another thread owns windows; creating the window fails then, too.
    static std::atomic<bool> registered = false;
    if (!registered) {
        WNDCLASSW description;
        description.lpfnWndProc = &WindowAccess::Procedure;
        description.lpszClassName = WindowClassName;
        description.hCursor = LoadCursorW({}, IDC_ARROW);
        registered = RegisterClassW(&description) != FALSE;
        SetMessageFilter(&TakenBefore);
    }
    return WindowClassName;
}

MessageFrame::MessageFrame(CWnd& target, HWND targetWindow, UINT messageNumber, WPARAM w, LPARAM l)
    : object(&target),
      window(targetWindow),
      message(messageNumber),
      wParam(w),
      lParam(l),
      outer(WindowAccess::InnermostFrame(target)) {
    WindowAccess::InnermostFrame(target) = this;
}

MessageFrame::~MessageFrame() {
    if (object) WindowAccess::InnermostFrame(*object) = outer;
}

PendingCreation::PendingCreation(CWnd& object) : object_(&object), outer_(innermostCreation) {
    innermostCreation = this;
}

PendingCreation::~PendingCreation() {
    innermostCreation = outer_;
    // A refused window may go without a last message.
    if (object_ && window_ && object_->m_hWnd == window_ && !IsWindow(window_)) {
        const DWORD error = GetLastError();
        try {
            WindowAccess::Detach(*object_);
        } catch (...) {
            // An exception may be what refused the window; this one is lost behind it.
        }
        SetLastError(error);
    }
}

CWnd* PendingCreation::Take(HWND window, LPARAM parameter) {
    PendingCreation* const pending = innermostCreation;
    if (!pending || !pending->object_ || pending->window_) return nullptr;
    if (reinterpret_cast<LPARAM>(pending->object_) != parameter) return nullptr;
    pending->window_ = window;
    return pending->object_;
}

void PendingCreation::Forget(const CWnd& object) {
    for (PendingCreation* one = innermostCreation; one; one = one->outer_)
        if (one->object_ == &object) one->object_ = nullptr;
}

LRESULT WindowAccess::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* object = ObjectOf(window);
    if (!object && message == WM_NCCREATE) {
        object = PendingCreation::Take(window, lParam);
        if (object) {
            BindObject(window, object);
            object->m_hWnd = window;
        }
    }
    if (!object) return DefWindowProcW(window, message, wParam, lParam);

    MessageFrame frame(*object, window, message, wParam, lParam);
    const auto leave = [&] {
        if (message != WM_NCDESTROY) return;
        ModalLoop::WindowLeaves(window);
        if (frame.object && frame.object->m_hWnd == window) Detach(*frame.object);
    };
    LRESULT result = 0;
    try {
        result = object->WindowProc(message, wParam, lParam);
    } catch (const CException&) {
        // It ends the message that raised it, not the host's loop.
    } catch (...) {
        leave();
        throw;
    }
    leave();
    return result;
}

bool WindowAccess::HasWindow(CWnd& object) {
    if (!object.m_hWnd || IsWindow(object.m_hWnd)) return static_cast<bool>(object.m_hWnd);
    UnbindObject(object.m_hWnd);
    object.m_hWnd = nullptr;
    return false;
}

void WindowAccess::Detach(CWnd& object) {
    UnbindObject(object.m_hWnd);
    object.m_hWnd = nullptr;
    MainWindowLeaves(object);
    object.PostNcDestroy();
}

}  // namespace platform
