// Windows from their first message to their last.
#include <exception>
#include <new>
#include <vector>

#include <platform/foreign.h>

#include "platform/window/core/activation.h"
#include "platform/window/core/bounds.h"
#include "platform/window/core/caption_move.h"
#include "platform/window/core/capture.h"
#include "platform/window/core/display.h"
#include "platform/window/core/foreign.h"
#include "platform/window/core/inbox.h"
#include "platform/window/core/showing.h"
#include "platform/window/core/size_limits.h"
#include "platform/window/core/stacking.h"
#include "platform/window/core/timers.h"
#include "platform/window/core/traits.h"
#include "platform/window/core/tree.h"
#include "platform/window/core/window_classes.h"
#include "platform/window/core/window_contexts.h"
#include "platform/window/core/window_surface.h"

namespace platform {

namespace {

// The parent of a child, the owner of a top-level; false with the last error set when there is none to be.
bool ResolveParent(HWND parent, DWORD style, HWND* resolved) {
    *resolved = HWND();
    if (!parent) {
        if (!(style & WS_CHILD)) return true;
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    const Window* found = Require(parent);
    if (!found) return false;
    if (found->destroying) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    *resolved = style & WS_CHILD ? parent : TopLevelOf(parent);
    return true;
}

// Everything of a window that is left when WM_NCDESTROY was answered.
void Forget(const std::shared_ptr<Window>& window) {
    const HWND handle = window->handle;
    DropContexts(handle);
    Timers().KillAll(handle);
    WithdrawPointer(*window);
    ForgetActivation(handle);
    RemoveFromTree(*window);
    if (!window->IsChild())
        if (WindowSystem* system = SystemOf(*window)) system->Destroy(handle);
    window->systemSerial = 0;
    window->surface.reset();
    Remove(handle);
    FailSentTo(handle);
}

// Removes a window and what hangs on it without a word, when an exception left one of its messages.
class ForgetOnException {
  public:
    explicit ForgetOnException(std::shared_ptr<Window> window)
        : window_(std::move(window)), exceptions_(std::uncaught_exceptions()) {}
    ~ForgetOnException() {
        if (std::uncaught_exceptions() > exceptions_) ForgetTree(window_);
    }
    ForgetOnException(const ForgetOnException&) = delete;
    ForgetOnException& operator=(const ForgetOnException&) = delete;

  private:
    static void ForgetTree(const std::shared_ptr<Window>& window) {
        if (!window || !Peek(window->handle)) return;
        const std::vector<HWND> children = window->children;
        const std::vector<HWND> owned = window->owned;
        for (HWND handle : children)
            ForgetTree(PeekShared(handle));
        for (HWND handle : owned)
            ForgetTree(PeekShared(handle));
        ForgetCaptionMove(window->handle);
        if (Peek(window->handle)) Forget(window);
    }
    std::shared_ptr<Window> window_;
    int exceptions_;
};

void DestroyTree(const std::shared_ptr<Window>& window) {
    const ForgetOnException guard(window);
    window->destroying = true;
    CallProcedure(window, WM_DESTROY, 0, 0);
    // Nothing is added to these any more, and what is destroyed meanwhile stays in them.
    for (std::size_t i = 0; i < window->children.size(); ++i) {
        const std::shared_ptr<Window> child = PeekShared(window->children[i]);
        if (child && !child->destroying) DestroyTree(child);
    }
    for (std::size_t i = 0; i < window->owned.size(); ++i) {
        const std::shared_ptr<Window> other = PeekShared(window->owned[i]);
        if (other && !other->destroying) DestroyWindow(other->handle);
    }
    CallProcedure(window, WM_NCDESTROY, 0, 0);
    if (Peek(window->handle)) Forget(window);
}

// Gives up a window that refused to be created.
void Abandon(const std::shared_ptr<Window>& window, bool tellDestroy) {
    window->destroying = true;
    if (tellDestroy)
        DestroyTree(window);
    else {
        CallProcedure(window, WM_NCDESTROY, 0, 0);
        if (Peek(window->handle)) Forget(window);
    }
}

// What was made of it in the system, when memory ran out in between, is taken back.
bool TryCreate(WindowSystem& system, Window& window) try {
    UpdateTraits(window);
    return system.Create(window.handle, window.rect, window.traits);
} catch (const std::bad_alloc&) {
    system.Destroy(window.handle);
    return false;
}

bool CreateInSystem(Window& window) {
    WindowSystem* system = System();
    if (!system || !TryCreate(*system, window)) {
        if (system && !system->IsAlive()) MarkSystemLost();
        SetLastError(System() ? ERROR_NOT_ENOUGH_MEMORY : ERROR_CONNECTION_UNAVAIL);
        return false;
    }
    window.systemSerial = SystemSerial();
    // WM_NCCREATE may have set these up already.
    window.surface.reset();
    window.layering.sent = Compositing();
    UpdateCompositing(window);
    if (window.shape) system->SetShape(window.handle, &*window.shape);
    return true;
}

// Sends the first messages. False when the window is gone again.
bool SendFirstMessages(const std::shared_ptr<Window>& window, LPVOID parameter) {
    const HWND handle = window->handle;
    const ForgetOnException guard(window);
    const auto lParam = reinterpret_cast<LPARAM>(parameter);
    const bool accepted = CallProcedure(window, WM_NCCREATE, 0, lParam) != FALSE;
    if (!Peek(handle)) return false;
    if (!accepted) {
        Abandon(window, false);
        return false;
    }
    RefreshSizes(window);
    if (!Peek(handle)) return false;
    if (!window->IsChild() && !CreateInSystem(*window)) {
        const DWORD error = GetLastError();
        Abandon(window, false);
        SetLastError(error);
        return false;
    }
    const bool created = CallProcedure(window, WM_CREATE, 0, lParam) != -1;
    if (!Peek(handle)) return false;
    if (!created) {
        Abandon(window, true);
        return false;
    }
    window->created = true;
    CallProcedure(window, WM_SIZE, SIZE_RESTORED, MAKELPARAM(window->rect.Width(), window->rect.Height()));
    if (!Peek(handle)) return false;
    CallProcedure(window, WM_MOVE, 0, MAKELPARAM(window->rect.left, window->rect.top));
    return Peek(handle) != nullptr;
}

// A record of a window that nobody has heard of yet; null with the last error set.
std::shared_ptr<Window> MakeRecord(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style,
                                   const CRect& rect, HWND parent) {
    std::shared_ptr<Window> window;
    try {
        const std::shared_ptr<const WindowClass> type = FindWindowClass(className);
        if (!type) {
            SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
            return nullptr;
        }
        HWND resolved;
        if (!ResolveParent(parent, style, &resolved)) return nullptr;
        if (!(style & WS_CHILD) && !EnsureSystem()) return nullptr;
        window = std::make_shared<Window>();
        window->type = type;
        window->style = style & ~DWORD{WS_VISIBLE | WS_MINIMIZE | WS_MAXIMIZE};
        window->exStyle = exStyle;
        if (title && !IS_INTRESOURCE(title)) window->title = CString(title);
        window->parent = resolved;
        window->rect = rect;
        Insert(window);
        AddToTree(*window);
        if (window->IsChild() && (exStyle & WS_EX_ACCEPTFILES)) UpdateTraits(*TopLevelOf(*window));
        return window;
    } catch (const std::bad_alloc&) {
        if (window && window->handle) {
            RemoveFromTree(*window);
            Remove(window->handle);
        }
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

}  // namespace

}  // namespace platform

using namespace platform;

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y, int width,
                     int height, HWND parent, UINT_PTR id, HINSTANCE, LPVOID parameter) {
    if (!ClaimThread()) return HWND();
    if (width < 0 || height < 0 || width > kLongestSide || height > kLongestSide) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return HWND();
    }
    const std::shared_ptr<Window> window =
        MakeRecord(exStyle, className, title, style, CRect(CPoint(x, y), CSize(width, height)), parent);
    if (!window) return HWND();
    window->id = id;
    const HWND handle = window->handle;
    if (!SendFirstMessages(window, parameter)) return HWND();
    if (style & WS_MINIMIZE && !window->IsChild())
        ShowWindow(handle, SW_MINIMIZE);
    else if (style & WS_VISIBLE)
        ShowWindow(handle, style & WS_MAXIMIZE && !window->IsChild() ? SW_MAXIMIZE : SW_SHOW);
    return Peek(handle) ? handle : HWND();
}

BOOL DestroyWindow(HWND handle) {
    const std::shared_ptr<Window> window = RequireShared(handle);
    if (!window || window->destroying) return FALSE;
    const ForgetOnException guard(window);
    window->destroying = true;
    SetShown(window, false, Activate::No);
    if (Peek(handle)) EndCaptionMove(handle);
    if (Peek(handle)) DestroyTree(window);
    return TRUE;
}

BOOL IsWindow(HWND window) {
    if (window == GetDesktopWindow()) return TRUE;
    if (ForeignHandles::IsForeign(window)) return FindForeign(window).has_value();
    return IsLive(window);
}

CREATESTRUCTW platform::DescribeCreation(HWND handle, LPVOID parameter) {
    CREATESTRUCTW record{};
    record.lpCreateParams = parameter;
    record.hInstance = AfxGetResourceHandle();
    const Window* window = Require(handle);
    if (!window) return record;
    record.hwndParent = window->parent;
    record.x = window->rect.left;
    record.y = window->rect.top;
    record.cx = window->rect.Width();
    record.cy = window->rect.Height();
    record.style = static_cast<LONG>(window->style);
    record.lpszName = window->title;
    record.lpszClass = window->type->name.c_str();
    record.dwExStyle = window->exStyle;
    return record;
}
