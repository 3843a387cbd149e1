// The application framework: run-time class information, windows as objects, message maps, dialogs.
#pragma once

#include <type_traits>

#include <platform/collections.h>
#include <platform/geometry.h>
#include <platform/ole.h>
#include <platform/resources.h>
#include <platform/window.h>

// ---- Run-time class information -----------------------------------------------------------------------

class CObject;

struct CRuntimeClass {
    const char* m_lpszClassName;
    const CRuntimeClass* m_pBaseClass;
    CObject* (*m_pfnCreateObject)();  // null for a class that cannot be created by name

    PLATFORM_API bool IsDerivedFrom(const CRuntimeClass* base) const;
    // A new object of the class, owned by the caller; null when it cannot be created.
    CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }
};

class PLATFORM_API CObject {
  public:
    virtual ~CObject();
    virtual const CRuntimeClass* GetRuntimeClass() const;
    bool IsKindOf(const CRuntimeClass* runtimeClass) const;
    static const CRuntimeClass classCObject;

  protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(name) (&name::class##name)
#define DECLARE_DYNAMIC(name)               \
  public:                                   \
    static const CRuntimeClass class##name; \
    const CRuntimeClass* GetRuntimeClass() const override;
#define IMPLEMENT_DYNAMIC(name, base)                                              \
    const CRuntimeClass name::class##name = {#name, RUNTIME_CLASS(base), nullptr}; \
    const CRuntimeClass* name::GetRuntimeClass() const {                           \
        return RUNTIME_CLASS(name);                                                \
    }
// For a class with a default constructor whose objects may be made from its CRuntimeClass alone.
#define DECLARE_DYNCREATE(name) DECLARE_DYNAMIC(name) static CObject* CreateObject();
#define IMPLEMENT_DYNCREATE(name, base)                                                       \
    CObject* name::CreateObject() {                                                           \
        return new name;                                                                      \
    }                                                                                         \
    const CRuntimeClass name::class##name = {#name, RUNTIME_CLASS(base), name::CreateObject}; \
    const CRuntimeClass* name::GetRuntimeClass() const {                                      \
        return RUNTIME_CLASS(name);                                                           \
    }

// ---- Message maps -------------------------------------------------------------------------------------

class CWnd;
class CCmdTarget;

// A message goes to the first line that names it, in the map of the object's own class first and then in
// those of its bases, in the order of their lines; one handler gets it. A handler that wants what its base
// does calls the base's handler or Default().

// One line of a message map: which message, and the function that unpacks its parameters and calls the
// handler. The result of a handler that returns nothing is 0.
struct AFX_MSGMAP_ENTRY {
    UINT message;
    LRESULT (*handle)(CCmdTarget* target, WPARAM wParam, LPARAM lParam);  // null ends the map
};
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*base)();  // null in the root's map
    const AFX_MSGMAP_ENTRY* entries;
};

class PLATFORM_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
  protected:
    virtual const AFX_MSGMAP* GetMessageMap() const;
    static const AFX_MSGMAP* GetThisMessageMap();
};

#define DECLARE_MESSAGE_MAP()                     \
  protected:                                      \
    static const AFX_MSGMAP* GetThisMessageMap(); \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                         \
    const AFX_MSGMAP* theClass::GetMessageMap() const {                                                \
        return GetThisMessageMap();                                                                    \
    }                                                                                                  \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                                  \
        using ThisClass [[maybe_unused]] = theClass;                                                   \
        using TheBaseClass = baseClass;                                                                \
        static_assert(std::is_base_of_v<baseClass, theClass> && !std::is_same_v<baseClass, theClass>); \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                      \
    { 0, nullptr }                                                             \
    }                                                                          \
    ;                                                                          \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries}; \
    return &map;                                                               \
    }

#define AFX_MSGMAP_LINE(id, ...)                                                                   \
    {id, [](CCmdTarget* target, [[maybe_unused]] WPARAM w, [[maybe_unused]] LPARAM l) -> LRESULT { \
         [[maybe_unused]] auto* self = static_cast<ThisClass*>(target);                            \
         __VA_ARGS__                                                                               \
     }},
#define AFX_POINT_LINE(id, handler)                                                                    \
    AFX_MSGMAP_LINE(id, self->handler(static_cast<UINT>(w), CPoint(GET_X_LPARAM(l), GET_Y_LPARAM(l))); \
                    return 0;)

#define ON_WM_PAINT() AFX_MSGMAP_LINE(WM_PAINT, self->OnPaint(); return 0;)
#define ON_WM_ERASEBKGND() AFX_MSGMAP_LINE(WM_ERASEBKGND, return self->OnEraseBkgnd(HDC::FromParam(w));)
#define ON_WM_MOVE() AFX_MSGMAP_LINE(WM_MOVE, self->OnMove(GET_X_LPARAM(l), GET_Y_LPARAM(l)); return 0;)
#define ON_WM_SIZE()                                                                                   \
    AFX_MSGMAP_LINE(WM_SIZE, self->OnSize(static_cast<UINT>(w), LOWORD(static_cast<std::uint64_t>(l)), \
                                          HIWORD(static_cast<std::uint64_t>(l)));                      \
                    return 0;)
#define ON_WM_CLOSE() AFX_MSGMAP_LINE(WM_CLOSE, self->OnClose(); return 0;)
#define ON_WM_DESTROY() AFX_MSGMAP_LINE(WM_DESTROY, self->OnDestroy(); return 0;)
#define ON_WM_TIMER() AFX_MSGMAP_LINE(WM_TIMER, self->OnTimer(static_cast<UINT_PTR>(w)); return 0;)
#define ON_WM_ACTIVATE()                                                                                    \
    AFX_MSGMAP_LINE(WM_ACTIVATE,                                                                            \
                    self->OnActivate(LOWORD(w), HWND::FromParam(static_cast<std::uint64_t>(l)), HIWORD(w)); \
                    return 0;)
#define ON_WM_MOUSEMOVE() AFX_POINT_LINE(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_POINT_LINE(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_POINT_LINE(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_POINT_LINE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_POINT_LINE(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_POINT_LINE(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_MOUSELEAVE() AFX_MSGMAP_LINE(WM_MOUSELEAVE, self->OnMouseLeave(); return 0;)
// void handler(HDROP). A window of DragAcceptMoves has a handler that returns what it did: ON_MESSAGE.
#define ON_WM_DROPFILES() AFX_MSGMAP_LINE(WM_DROPFILES, self->OnDropFiles(HDROP::FromParam(w)); return 0;)
// int handler(CWnd* topLevel, UINT hitTest, UINT message)
#define ON_WM_MOUSEACTIVATE()                                                                   \
    AFX_MSGMAP_LINE(WM_MOUSEACTIVATE, const auto words = static_cast<std::uint64_t>(l);         \
                    return self->OnMouseActivate(CWnd::FromHandlePermanent(HWND::FromParam(w)), \
                                                 LOWORD(words), HIWORD(words));)
#define ON_WM_KEYDOWN() AFX_MSGMAP_LINE(WM_KEYDOWN, self->OnKeyDown(static_cast<UINT>(w)); return 0;)
// LRESULT handler(WPARAM, LPARAM)
#define ON_MESSAGE(id, handler) AFX_MSGMAP_LINE(id, return self->handler(w, l);)

// ---- Windows ------------------------------------------------------------------------------------------

class COleControlSite;
struct VARIANT;               // see <platform/automation.h>
using DISPID = std::int32_t;  // names a property or an event

namespace platform {
struct MessageFrame;
class ModalLoop;
struct WindowAccess;
}  // namespace platform

// A window as an object. The object does not own the window's life: it is attached when the window is
// created (before its first message is handled) and detached when the window is destroyed, after which
// m_hWnd is empty. Destroying the object destroys its window; the handlers of derived classes are out of
// reach by then. An object belongs to the thread that created its window, and may be destroyed inside its
// own handlers.
//
// What a handler throws, other than a CException, passes through the message loop that delivered the message,
// but not through the destructor of an object: what handlers of other windows throw then is lost.
class PLATFORM_API CWnd : public CCmdTarget {
    DECLARE_DYNAMIC(CWnd)
  public:
    CWnd() = default;
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd;

    HWND GetSafeHwnd() const { return m_hWnd; }
    // The object of a window, or null when the window has none on the calling thread.
    static CWnd* FromHandlePermanent(HWND window);

    // A window of the framework's own class, attached to this object. False with the last error of
    // CreateWindowExW, or ERROR_INVALID_PARAMETER for an object that has a window.
    virtual BOOL CreateEx(DWORD exStyle, LPCWSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    virtual BOOL DestroyWindow();

    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    // True when the style changed, false also when there is no window. `flags` other than 0 are given to
    // SetWindowPos.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);

    BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
    void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
    void ScreenToClient(RECT* rect) const;
    void ClientToScreen(RECT* rect) const;
    BOOL SetWindowPos(HWND after, int x, int y, int width, int height, UINT flags) {
        return ::SetWindowPos(m_hWnd, after, x, y, width, height, flags);
    }
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    // Centres on the parent or owner, or on the primary monitor where there is none to see; a top-level
    // window is kept inside the work area of the monitor.
    void CenterWindow();
    void SetWindowText(LPCWSTR text) { ::SetWindowTextW(m_hWnd, text); }
    // The picture in task lists and frames; the icon stays the caller's. Returns the one before.
    HICON SetIcon(HICON icon, BOOL big) {
        const WPARAM size = big ? ICON_BIG : ICON_SMALL;
        return HICON::FromParam(static_cast<std::uint64_t>(
            ::SendMessageW(m_hWnd, WM_SETICON, size, static_cast<LPARAM>(icon.ToParam()))));
    }
    HICON GetIcon(BOOL big) const {
        return HICON::FromParam(
            static_cast<std::uint64_t>(::SendMessageW(m_hWnd, WM_GETICON, big ? ICON_BIG : ICON_SMALL, 0)));
    }
    CString GetWindowText() const { return ::GetWindowTextW(m_hWnd); }
    // The control with an identifier; the empty handle when there is none.
    HWND GetDlgItem(int id) const { return ::GetDlgItem(m_hWnd, id); }
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(const RECT* rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
    LRESULT SendMessage(UINT message, WPARAM w = 0, LPARAM l = 0) {
        return ::SendMessageW(m_hWnd, message, w, l);
    }
    BOOL PostMessage(UINT message, WPARAM w = 0, LPARAM l = 0) {
        return ::PostMessageW(m_hWnd, message, w, l);
    }
    UINT_PTR SetTimer(UINT_PTR id, UINT interval) { return ::SetTimer(m_hWnd, id, interval, nullptr); }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }
    void DragAcceptFiles(BOOL accept = TRUE) { ::DragAcceptFiles(m_hWnd, accept); }

    // True takes a message out before it is translated and dispatched. Called by the framework's loops for
    // the message's window and each of its parents up to the top-level; an owner is not asked.
    virtual BOOL PreTranslateMessage(MSG* message);
    // The framework's loops call this for a message: the PreTranslateMessage of the window and its parents.
    // True when one of them took the message.
    static BOOL WalkPreTranslateTree(MSG* message);

    // Answers what a control in the window asks of its surroundings; TRUE when `value` holds the answer.
    virtual BOOL OnAmbientProperty(COleControlSite* site, DISPID property, VARIANT* value);
    // Every message of the window comes here; routes it through the message maps, or to DefWindowProc.
    // A CException that leaves it ends the message with the result 0.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    // Defaults of the handlers that a message map may route to; each runs Default().
    void OnPaint() { Default(); }
    BOOL OnEraseBkgnd(HDC) { return static_cast<BOOL>(Default()); }
    void OnMove(int, int) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnClose() { Default(); }
    void OnDestroy() { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    void OnActivate(UINT, HWND, BOOL) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    void OnMouseLeave() { Default(); }
    int OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
    void OnKeyDown(UINT) { Default(); }
    void OnDropFiles(HDROP) { Default(); }

  protected:
    // Default processing of the message being handled, with its own parameters. Outside a handler, or once
    // the window is gone, it does nothing and returns 0.
    LRESULT Default();
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Called last of all, after the window is gone; an object on the heap may delete itself here. Not called
    // when creation failed before there was a window.
    virtual void PostNcDestroy();
    DECLARE_MESSAGE_MAP()

  private:
    friend struct platform::WindowAccess;
    platform::MessageFrame* m_frame = nullptr;  // the innermost message being handled
};

// ---- Dialogs ------------------------------------------------------------------------------------------

class CDataExchange;

class PLATFORM_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
  public:
    CDialog() = default;
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    // Modeless: the window and its controls from a template, then WM_INITDIALOG, then shown if the template
    // says WS_VISIBLE. False with the last error when the template or the window system fails, when the
    // object has a window, or when the window was destroyed on the way.
    virtual BOOL Create(UINT templateId, CWnd* parent = nullptr);
    // Modal: creates the window, disables the parent's top-level, sends WM_INITDIALOG, shows the dialog and
    // runs messages until EndDialog or until the window is destroyed, then enables and activates the parent
    // again; it ends with the window destroyed. Returns the result given to EndDialog; IDCANCEL when the
    // window was destroyed otherwise or WM_QUIT came (which is posted on to the outer loop); -1 with the
    // last error when the window cannot be created, when the object has one, or when the display server
    // went away. It ends in the same way, without a result, when an exception leaves a handler.
    virtual INT_PTR DoModal();
    // Ends DoModal after the message being handled, with the result given last; enables the parent and hides
    // the window at once. The window of a modeless dialog is destroyed.
    void EndDialog(int result);

    // What WM_INITDIALOG does: the window and its controls exist and are not shown yet.
    virtual BOOL OnInitDialog();
    // Sends the command IDCANCEL for the Escape key, and IDOK for Enter.
    BOOL PreTranslateMessage(MSG* message) override;
    UINT m_nTemplateId = 0;

  protected:
    // What the commands IDOK and IDCANCEL do; WM_CLOSE is the command IDCANCEL. They end the dialog with that
    // result.
    virtual void OnOK();
    virtual void OnCancel();
    // A place for hosts that move data to and from controls; the framework does not call it.
    virtual void DoDataExchange(CDataExchange* exchange);
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    DECLARE_MESSAGE_MAP()

  private:
    friend class platform::ModalLoop;
    CWnd* m_pParentWnd = nullptr;
    platform::ModalLoop* m_modalLoop = nullptr;  // while DoModal runs
};

// ---- The host's message loop --------------------------------------------------------------------------

// Runs messages until WM_QUIT, and returns its exit code; -1 when the display server went away.
PLATFORM_API int AfxRunMessageLoop();
// Waits for one message, filters it through PreTranslateMessage, translates and dispatches it. False on
// WM_QUIT, which is then out of the queue, or when the display server went away.
PLATFORM_API BOOL AfxPumpMessage();
