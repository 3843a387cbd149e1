/// @file
/// The application framework: windows as objects, dialogs, and the loop that serves them.
#pragma once

#include <platform/collections.h>
#include <platform/device_objects.h>
#include <platform/geometry.h>
#include <platform/message_map.h>
#include <platform/ole.h>
#include <platform/resources.h>
#include <platform/window.h>

// ---- Windows ------------------------------------------------------------------------------------------

class COleControlSite;
struct VARIANT;               ///< see automation.h
using DISPID = std::int32_t;  ///< names a property or an event

namespace platform {
struct MessageFrame;
class ModalLoop;
struct WindowAccess;
}  // namespace platform

/// A window as an object. The object does not own the window's life: it is attached when the window is
/// created (before its first message is handled) and detached when the window is destroyed, after which
/// m_hWnd is empty. Destroying the object destroys its window; the handlers of derived classes are out of
/// reach by then. An object belongs to the thread that created its window, and may be destroyed inside its
/// own handlers.
///
/// What a handler throws, other than a CException, passes through the message loop that delivered the
/// message, but not through the destructor of an object: what handlers of other windows throw then is lost.
class PLATFORM_API CWnd : public CCmdTarget {
    DECLARE_DYNAMIC(CWnd)
  public:
    CWnd() = default;
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd;

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }  ///< NOLINT
    /// The object of a window, or null when the window has none on the calling thread.
    static CWnd* FromHandlePermanent(HWND window);

    ///@{
    /// A window of the framework's own class, attached to this object. False with the last error of
    /// CreateWindowExW, or ERROR_INVALID_PARAMETER for an object that has a window.
    virtual BOOL CreateEx(DWORD exStyle, LPCWSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    BOOL CreateEx(DWORD exStyle, const platform::Utf8& title, DWORD style, const RECT& rect, CWnd* parent,
                  UINT id) {
        return CreateEx(exStyle, title.Utf16(), style, rect, parent, id);
    }
    ///@}
    virtual BOOL DestroyWindow();

    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    ///@{
    /// True when the style changed, false also when there is no window. `flags` other than 0 are given to
    /// SetWindowPos.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);
    ///@}

    BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    BOOL UpdateWindow() { return ::UpdateWindow(m_hWnd); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    BOOL BringWindowToTop() { return ::SetWindowPos(m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); }
    /// The object that had it before, or null.
    CWnd* SetFocus() { return FromHandlePermanent(::SetFocus(m_hWnd)); }
    CWnd* SetCapture() { return FromHandlePermanent(::SetCapture(m_hWnd)); }
    /// The object of the parent, or of the owner; null where that has none.
    CWnd* GetParent() const { return FromHandlePermanent(::GetParent(m_hWnd)); }
    void DragAcceptFiles(BOOL accept = TRUE) { ::DragAcceptFiles(m_hWnd, accept); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    void GetWindowRect(RECT* rect) const { ::GetWindowRect(m_hWnd, rect); }
    void GetClientRect(RECT* rect) const { ::GetClientRect(m_hWnd, rect); }
    void ScreenToClient(RECT* rect) const;
    void ClientToScreen(RECT* rect) const;
    void ScreenToClient(POINT* point) const { ::ScreenToClient(m_hWnd, point); }
    void ClientToScreen(POINT* point) const { ::ClientToScreen(m_hWnd, point); }
    BOOL SetWindowPos(HWND after, int x, int y, int width, int height, UINT flags) {
        return ::SetWindowPos(m_hWnd, after, x, y, width, height, flags);
    }
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    void MoveWindow(const RECT* rect, BOOL repaint = TRUE) {
        MoveWindow(rect->left, rect->top, CRect(rect).Width(), CRect(rect).Height(), repaint);
    }
    BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags) {
        return ::SetWindowPos(m_hWnd, after ? after->m_hWnd : HWND(), x, y, width, height, flags);
    }
    int SetWindowRgn(HRGN region, BOOL redraw) { return ::SetWindowRgn(m_hWnd, region, redraw); }
    BOOL SetLayeredWindowAttributes(COLORREF key, BYTE alpha, DWORD flags) {
        return ::SetLayeredWindowAttributes(m_hWnd, key, alpha, flags);
    }
    /// Centres on the parent or owner, or on the primary monitor where there is none to see; a top-level
    /// window is kept inside the work area of the monitor.
    void CenterWindow();
    void SetWindowText(LPCWSTR text) { ::SetWindowTextW(m_hWnd, text); }
    void SetWindowText(const platform::Utf8& text) { SetWindowText(text.Utf16()); }
    ///@{
    /// The picture in task lists and frames; the icon stays the caller's. Returns the one before.
    HICON SetIcon(HICON icon, BOOL big) {
        const WPARAM size = big ? ICON_BIG : ICON_SMALL;
        return HICON::FromParam(static_cast<std::uint64_t>(
            ::SendMessageW(m_hWnd, WM_SETICON, size, static_cast<LPARAM>(icon.ToParam()))));
    }
    HICON GetIcon(BOOL big) const {
        return HICON::FromParam(
            static_cast<std::uint64_t>(::SendMessageW(m_hWnd, WM_GETICON, big ? ICON_BIG : ICON_SMALL, 0)));
    }
    ///@}
    CString GetWindowText() const { return ::GetWindowTextW(m_hWnd); }
    void GetWindowText(CString& text) const { text = GetWindowText(); }
    int GetWindowTextLength() const { return GetWindowText().GetLength(); }
    /// The control with an identifier; the empty handle when there is none.
    HWND GetDlgItem(int id) const { return ::GetDlgItem(m_hWnd, id); }
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(const RECT* rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
    LRESULT SendMessage(UINT message, WPARAM w = 0, LPARAM l = 0) {
        return ::SendMessageW(m_hWnd, message, w, l);
    }
    BOOL PostMessage(UINT message, WPARAM w = 0, LPARAM l = 0) {
        return ::PostMessageW(m_hWnd, message, w, l);
    }
    /// Without a procedure the window receives WM_TIMER.
    UINT_PTR SetTimer(UINT_PTR id, UINT interval, TIMERPROC procedure = nullptr) {
        return ::SetTimer(m_hWnd, id, interval, procedure);
    }
    /// A context on the whole window, until ReleaseDC, which also ends the object.
    CDC* GetDC();
    int ReleaseDC(CDC* context);

    /// For members that mean the functions of these names.
    static HWND GetParent(HWND window) { return ::GetParent(window); }
    static BOOL IsWindowEnabled(HWND window) { return ::IsWindowEnabled(window); }
    static BOOL IsIconic(HWND window) { return ::IsIconic(window); }
    static BOOL IsZoomed(HWND window) { return ::IsZoomed(window); }
    static BOOL UpdateWindow(HWND window) { return ::UpdateWindow(window); }
    static BOOL SetForegroundWindow(HWND window) { return ::SetForegroundWindow(window); }
    static HWND SetFocus(HWND window) { return ::SetFocus(window); }
    static HWND SetCapture(HWND window) { return ::SetCapture(window); }
    static HDC GetDC(HWND window) { return ::GetDC(window); }
    static int ReleaseDC(HWND window, HDC context) { return ::ReleaseDC(window, context); }
    static int SetWindowRgn(HWND window, HRGN region, BOOL redraw) {
        return ::SetWindowRgn(window, region, redraw);
    }
    static BOOL SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags) {
        return ::SetLayeredWindowAttributes(window, key, alpha, flags);
    }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

    /// True takes a message out before it is translated and dispatched. Called by the framework's loops for
    /// the message's window and each of its parents up to the top-level; an owner is not asked.
    virtual BOOL PreTranslateMessage(MSG* message);
    /// The framework's loops call this for a message: the PreTranslateMessage of the window and its parents.
    /// True when one of them took the message.
    static BOOL WalkPreTranslateTree(MSG* message);

    /// Answers what a control in the window asks of its surroundings; TRUE when `value` holds the answer.
    virtual BOOL OnAmbientProperty(COleControlSite* site, DISPID property, VARIANT* value);
    /// Every message of the window comes here; routes it through the message maps, or to DefWindowProc.
    /// A CException that leaves it ends the message with the result 0.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    /// Defaults of the handlers that a message map may route to; each runs Default().
    int OnCreate(CREATESTRUCTW*) { return static_cast<int>(Default()); }
    void OnPaint() { Default(); }
    BOOL OnEraseBkgnd(HDC) { return static_cast<BOOL>(Default()); }
    BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    void OnShowWindow(BOOL, UINT) { Default(); }
    void OnEnable(BOOL) { Default(); }
    void OnMove(int, int) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnClose() { Default(); }
    void OnDestroy() { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    void OnActivate(UINT, HWND, BOOL) { Default(); }
    void OnActivate(UINT, CWnd*, BOOL) { Default(); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    LRESULT OnNcHitTest(CPoint) { return Default(); }
    void OnSysCommand(UINT, LPARAM) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    void OnRButtonDblClk(UINT, CPoint) { Default(); }
    void OnMButtonDown(UINT, CPoint) { Default(); }
    void OnMButtonUp(UINT, CPoint) { Default(); }
    void OnMButtonDblClk(UINT, CPoint) { Default(); }
    BOOL OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
    void OnContextMenu(CWnd*, CPoint) { Default(); }
    void OnNcDestroy() { Default(); }
    void OnDropFiles(HDROP) { Default(); }
    void OnMouseLeave() { Default(); }
    int OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
    void OnKeyDown(UINT, UINT = 1, UINT = 0) { Default(); }
    void OnKeyUp(UINT, UINT = 1, UINT = 0) { Default(); }
    void OnChar(UINT, UINT = 1, UINT = 0) { Default(); }
    void OnSysKeyDown(UINT, UINT = 1, UINT = 0) { Default(); }
    void OnSysKeyUp(UINT, UINT = 1, UINT = 0) { Default(); }

  protected:
    /// Default processing of the message being handled, with its own parameters. Outside a handler, or once
    /// the window is gone, it does nothing and returns 0.
    LRESULT Default();
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Called last of all, after the window is gone; an object on the heap may delete itself here. Not called
    /// when creation failed before there was a window.
    virtual void PostNcDestroy();
    DECLARE_MESSAGE_MAP()

  private:
    friend struct platform::WindowAccess;
    platform::MessageFrame* m_frame = nullptr;  ///< the innermost message being handled
};

// ---- Dialogs ------------------------------------------------------------------------------------------

class CDataExchange;

class PLATFORM_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
  public:
    CDialog() = default;
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    /// Modeless: the window and its controls from a template, then WM_INITDIALOG, then shown if the template
    /// says WS_VISIBLE. False with the last error when the template or the window system fails, when the
    /// object has a window, or when the window was destroyed on the way.
    virtual BOOL Create(UINT templateId, CWnd* parent = nullptr);
    /// Modal: creates the window, disables the parent's top-level, sends WM_INITDIALOG, shows the dialog and
    /// runs messages until EndDialog or until the window is destroyed, then enables and activates the parent
    /// again; it ends with the window destroyed. Returns the result given to EndDialog; IDCANCEL when the
    /// window was destroyed otherwise or WM_QUIT came (which is posted on to the outer loop); -1 with the
    /// last error when the window cannot be created, when the object has one, or when the display server
    /// went away. It ends in the same way, without a result, when an exception leaves a handler.
    virtual INT_PTR DoModal();
    /// Ends DoModal after the message being handled, with the result given last; enables the parent and hides
    /// the window at once. The window of a modeless dialog is destroyed.
    void EndDialog(int result);

    /// What WM_INITDIALOG does: the window and its controls exist and are not shown yet.
    virtual BOOL OnInitDialog();
    /// Sends the command IDCANCEL for the Escape key, and IDOK for Enter.
    BOOL PreTranslateMessage(MSG* message) override;
    UINT m_nTemplateId = 0;

  protected:
    /// What the commands IDOK and IDCANCEL do; WM_CLOSE is the command IDCANCEL. They end the dialog with
    /// that result.
    virtual void OnOK();
    virtual void OnCancel();
    /// A place for hosts that move data to and from controls; the framework does not call it.
    virtual void DoDataExchange(CDataExchange* exchange);
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    DECLARE_MESSAGE_MAP()

  private:
    friend class platform::ModalLoop;
    CWnd* m_pParentWnd = nullptr;
    platform::ModalLoop* m_modalLoop = nullptr;  ///< while DoModal runs
};

// ---- The host's message loop --------------------------------------------------------------------------

/// Runs messages until WM_QUIT, and returns its exit code; -1 when the display server went away.
PLATFORM_API int AfxRunMessageLoop();
/// Waits for one message, filters it through PreTranslateMessage, translates and dispatches it. False on
/// WM_QUIT, which is then out of the queue, or when the display server went away.
PLATFORM_API BOOL AfxPumpMessage();
