/// @file
/// Message maps: which handler of a class takes which message.
#pragma once

#include <type_traits>

#include <platform/geometry.h>
#include <platform/message_forms.h>
#include <platform/run_time_class.h>
#include <platform/window.h>

class CWnd;
class CCmdTarget;

// A message goes to the first line that names it, in the map of the object's own class first and then in
// those of its bases, in the order of their lines; one handler gets it. A handler that wants what its base
// does calls the base's handler or Default().

/// One line of a message map: which message, and the function that unpacks its parameters and calls the
/// handler. The result of a handler that returns nothing is 0.
struct AFX_MSGMAP_ENTRY {
    UINT message;
    LRESULT (*handle)(CCmdTarget* target, WPARAM wParam, LPARAM lParam);  ///< null ends the map
    UINT command = 0;  ///< of WM_COMMAND: 0 for any, else this one without a notification
};
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*base)();  ///< null in the root's map
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

/// A line for a message whose handler may be declared in more than one way.
#define AFX_FORM_LINE(id, handler) \
    AFX_MSGMAP_LINE(id, return platform::Handle##handler(*self, &ThisClass::handler, w, l);)
#define AFX_KEY_LINE(id, handler) \
    AFX_MSGMAP_LINE(id, return platform::CallKeyHandler(*self, &ThisClass::handler, w, l);)

#define ON_WM_CREATE() AFX_FORM_LINE(WM_CREATE, OnCreate)
#define ON_WM_PAINT() AFX_MSGMAP_LINE(WM_PAINT, self->OnPaint(); return 0;)
#define ON_WM_ERASEBKGND() AFX_FORM_LINE(WM_ERASEBKGND, OnEraseBkgnd)
#define ON_WM_MOVE() AFX_MSGMAP_LINE(WM_MOVE, self->OnMove(GET_X_LPARAM(l), GET_Y_LPARAM(l)); return 0;)
#define ON_WM_SIZE()                                                                                   \
    AFX_MSGMAP_LINE(WM_SIZE, self->OnSize(static_cast<UINT>(w), LOWORD(static_cast<std::uint64_t>(l)), \
                                          HIWORD(static_cast<std::uint64_t>(l)));                      \
                    return 0;)
#define ON_WM_GETMINMAXINFO() \
    AFX_MSGMAP_LINE(WM_GETMINMAXINFO, self->OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(l)); return 0;)
#define ON_WM_SHOWWINDOW() \
    AFX_MSGMAP_LINE(WM_SHOWWINDOW, self->OnShowWindow(static_cast<BOOL>(w), static_cast<UINT>(l)); return 0;)
#define ON_WM_ENABLE() AFX_MSGMAP_LINE(WM_ENABLE, self->OnEnable(static_cast<BOOL>(w)); return 0;)
#define ON_WM_CLOSE() AFX_MSGMAP_LINE(WM_CLOSE, self->OnClose(); return 0;)
#define ON_WM_DESTROY() AFX_MSGMAP_LINE(WM_DESTROY, self->OnDestroy(); return 0;)
#define ON_WM_NCDESTROY() AFX_MSGMAP_LINE(WM_NCDESTROY, self->OnNcDestroy(); return 0;)
#define ON_WM_TIMER() AFX_FORM_LINE(WM_TIMER, OnTimer)
#define ON_WM_ACTIVATE() AFX_FORM_LINE(WM_ACTIVATE, OnActivate)
#define ON_WM_SETFOCUS() AFX_FORM_LINE(WM_SETFOCUS, OnSetFocus)
#define ON_WM_KILLFOCUS() AFX_FORM_LINE(WM_KILLFOCUS, OnKillFocus)
#define ON_WM_SETCURSOR() AFX_FORM_LINE(WM_SETCURSOR, OnSetCursor)
#define ON_WM_NCHITTEST() \
    AFX_MSGMAP_LINE(WM_NCHITTEST, return static_cast<LRESULT>(self->OnNcHitTest(CPoint(l)));)
#define ON_WM_SYSCOMMAND() \
    AFX_MSGMAP_LINE(WM_SYSCOMMAND, self->OnSysCommand(static_cast<UINT>(w), l); return 0;)
#define ON_WM_MOUSEMOVE() AFX_POINT_LINE(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() AFX_POINT_LINE(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_POINT_LINE(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_POINT_LINE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_POINT_LINE(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_POINT_LINE(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_RBUTTONDBLCLK() AFX_POINT_LINE(WM_RBUTTONDBLCLK, OnRButtonDblClk)
#define ON_WM_MBUTTONDOWN() AFX_POINT_LINE(WM_MBUTTONDOWN, OnMButtonDown)
#define ON_WM_MBUTTONUP() AFX_POINT_LINE(WM_MBUTTONUP, OnMButtonUp)
#define ON_WM_MBUTTONDBLCLK() AFX_POINT_LINE(WM_MBUTTONDBLCLK, OnMButtonDblClk)
#define ON_WM_MOUSELEAVE() AFX_MSGMAP_LINE(WM_MOUSELEAVE, self->OnMouseLeave(); return 0;)
/// BOOL handler(UINT keys, short delta, CPoint screen); 120 for each notch, away from the user above 0
#define ON_WM_MOUSEWHEEL()         \
    AFX_MSGMAP_LINE(WM_MOUSEWHEEL, \
                    return self->OnMouseWheel(LOWORD(w), GET_WHEEL_DELTA_WPARAM(w), CPoint(l));)
/// void handler(CWnd* window, CPoint screen); the point is (-1, -1) when a key asked
#define ON_WM_CONTEXTMENU()                                                                        \
    AFX_MSGMAP_LINE(WM_CONTEXTMENU,                                                                \
                    self->OnContextMenu(CWnd::FromHandlePermanent(HWND::FromParam(w)), CPoint(l)); \
                    return 0;)
/// int handler(CWnd* topLevel, UINT hitTest, UINT message)
#define ON_WM_MOUSEACTIVATE()                                                                   \
    AFX_MSGMAP_LINE(WM_MOUSEACTIVATE, const auto words = static_cast<std::uint64_t>(l);         \
                    return self->OnMouseActivate(CWnd::FromHandlePermanent(HWND::FromParam(w)), \
                                                 LOWORD(words), HIWORD(words));)
/// void handler(UINT key), or (UINT key, UINT repeats, UINT flags): flags are the upper word of lParam
#define ON_WM_KEYDOWN() AFX_KEY_LINE(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() AFX_KEY_LINE(WM_KEYUP, OnKeyUp)
#define ON_WM_CHAR() AFX_KEY_LINE(WM_CHAR, OnChar)
#define ON_WM_SYSKEYDOWN() AFX_KEY_LINE(WM_SYSKEYDOWN, OnSysKeyDown)
#define ON_WM_SYSKEYUP() AFX_KEY_LINE(WM_SYSKEYUP, OnSysKeyUp)
/// void handler(HDROP). A window of DragAcceptMoves has a handler that returns what it did: ON_MESSAGE.
#define ON_WM_DROPFILES() AFX_MSGMAP_LINE(WM_DROPFILES, self->OnDropFiles(HDROP::FromParam(w)); return 0;)
/// LRESULT handler(WPARAM, LPARAM): the name alone, without an address
#define ON_MESSAGE(id, handler) AFX_MSGMAP_LINE(id, return self->handler(w, l);)
/// void handler(), by its address (`&Class::Name`): Enter is the command IDOK, Escape IDCANCEL; a host may
/// send others.
#define ON_COMMAND(id, handler)                           \
    {WM_COMMAND,                                          \
     [](CCmdTarget* target, WPARAM, LPARAM) -> LRESULT {  \
         (static_cast<ThisClass*>(target)->*(handler))(); \
         return 1;                                        \
     },                                                   \
     static_cast<UINT>(id)},
#define ON_BN_CLICKED(id, handler) ON_COMMAND(id, handler)
