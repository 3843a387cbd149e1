/// @file
/// A browser as a window: the HTML view, what it tells of its page, and the browser object behind it.
///
/// A page is shown by a browser that is loaded with the first HTML view. Where there is none (its plugin is
/// not installed) or the window system has no place for one, creating a view fails. On the headless window
/// system a page is a script: see headless_pages.h.
#pragma once

#include <memory>

#include <platform/automation.h>
#include <platform/framework.h>

// ---- The browser --------------------------------------------------------------------------------------

/// Every call but those of IUnknown fails with E_FAIL once the view's window is gone. Texts that are handed
/// out belong to the caller; where a call fails they are null.
class PLATFORM_API IWebBrowser2 : public IDispatch {
  public:
    /// `flags` is a VT_I4 (0; kept for callers), `targetFrame` a VT_BSTR (null, empty or "_self": the page
    /// itself; a name that no frame has: a new window), `postData` an array of VT_UI1 or VT_EMPTY, `headers`
    /// a VT_BSTR of lines that end in CR LF. Any may be null. The page changes later, with events.
    virtual HRESULT Navigate(BSTR url, VARIANT* flags, VARIANT* targetFrame, VARIANT* postData,
                             VARIANT* headers) = 0;
    virtual HRESULT GoBack() = 0;  ///< E_FAIL where there is nothing to go to
    virtual HRESULT GoForward() = 0;
    virtual HRESULT Refresh() = 0;
    virtual HRESULT Stop() = 0;
    virtual HRESULT get_FullName(BSTR* path) = 0;       ///< the file that the browser came from
    virtual HRESULT get_Type(BSTR* type) = 0;           ///< what kind of document it shows: "HTML Document"
    virtual HRESULT get_LocationName(BSTR* title) = 0;  ///< the title, or the address without one
    virtual HRESULT get_LocationURL(BSTR* url) = 0;
    /// The document shown, an IHTMLDocument2. S_FALSE with null before the first.
    virtual HRESULT get_Document(IDispatch** document) = 0;

  protected:
    ~IWebBrowser2() override;
};

/// The document of a page. It stands for whatever the browser shows when it is asked.
class PLATFORM_API IHTMLDocument2 : public IDispatch {
  public:
    virtual HRESULT get_title(BSTR* title) = 0;
    virtual HRESULT get_URL(BSTR* url) = 0;

  protected:
    ~IHTMLDocument2() override;
};

/// Why a navigation failed: the status of a server's answer (400 to 599), or one of these.
enum : DWORD {
    INET_E_INVALID_URL = 0x800C0002,
    INET_E_CANNOT_CONNECT = 0x800C0004,
    INET_E_RESOURCE_NOT_FOUND = 0x800C0005,  ///< the server's name has no address
    INET_E_OBJECT_NOT_FOUND = 0x800C0006,    ///< the file or resource is not there
    INET_E_DOWNLOAD_FAILURE = 0x800C0008,    ///< the connection broke, or the answer made no sense
    INET_E_CONNECTION_TIMEOUT = 0x800C000B,
    INET_E_UNKNOWN_PROTOCOL = 0x800C000D,
    INET_E_SECURITY_PROBLEM = 0x800C000E,  ///< of a secure connection
    INET_E_TERMINATED_BIND = 0x800C0018,   ///< the browser's process ended
};

/// How a page is shown, as the host wants it.
enum : DWORD { DOCHOSTUIFLAG_SCROLL_NO = 0x00000008 };  ///< no scroll bars; the wheel still scrolls
struct DOCHOSTUIINFO {
    ULONG cbSize = sizeof(DOCHOSTUIINFO);
    DWORD dwFlags = 0;
};

// ---- Events of the browser ----------------------------------------------------------------------------

/// An event goes to the first line that names it, in the map of the object's own class first and then in
/// those of its bases. A handler may take its arguments as LPDISPATCH, VARIANT*, VARIANT_BOOL*, LPDISPATCH*,
/// LPCWSTR or LONG, in the order in which the event has them.
///
///     102 StatusTextChange(LPCWSTR)          113 TitleChange(LPCWSTR)
///     250 BeforeNavigate2(LPDISPATCH frame, VARIANT* url, VARIANT* flags, VARIANT* targetFrame,
///                         VARIANT* postData, VARIANT* headers, VARIANT_BOOL* cancel)
///     251 NewWindow2(LPDISPATCH* browser, VARIANT_BOOL* cancel)
///     252 NavigateComplete2(LPDISPATCH frame, VARIANT* url)
///     259 DocumentComplete(LPDISPATCH frame, VARIANT* url)
///     271 NavigateError(LPDISPATCH frame, VARIANT* url, VARIANT* frameName, VARIANT* status,
///                       VARIANT_BOOL* cancel)
///
/// `frame` is the browser itself for the page, and another object for each frame in it. Every frame that
/// completes its navigation completes its document, the page after the frames that it came with. After an
/// error the page that describes it completes like any other, unless the handler cancels that.
struct AFX_EVENTSINKMAP_ENTRY {
    UINT id;  ///< of the control that raises it
    DISPID dispid;
    void (*handle)(CCmdTarget* target, VARIANT* arguments);  ///< null ends the map
};
struct AFX_EVENTSINKMAP {
    const AFX_EVENTSINKMAP* (*base)();  ///< null in the root's map
    const AFX_EVENTSINKMAP_ENTRY* entries;
};

namespace platform {

template <class T>
T EventArgument(VARIANT& value) {
    if constexpr (std::is_same_v<T, VARIANT*>)
        return &value;
    else if constexpr (std::is_same_v<T, LPDISPATCH>)
        return value.pdispVal;
    else if constexpr (std::is_same_v<T, LPDISPATCH*>)
        return value.ppdispVal;
    else if constexpr (std::is_same_v<T, VARIANT_BOOL*>)
        return value.pboolVal;
    else if constexpr (std::is_same_v<T, LONG>)
        return value.lVal;
    else {
        static_assert(std::is_same_v<T, LPCWSTR>, "no event has an argument of this type");
        return value.bstrVal;
    }
}

template <class Class, class... Arguments, std::size_t... Position>
void CallEventHandler(Class* object, void (Class::*handler)(Arguments...), VARIANT* arguments,
                      std::index_sequence<Position...>) {
    (object->*handler)(EventArgument<Arguments>(arguments[Position])...);
}
template <class Target, class Class, class... Arguments>
void HandleEvent(CCmdTarget* target, void (Class::*handler)(Arguments...), VARIANT* arguments) {
    CallEventHandler<Class>(static_cast<Target*>(target), handler, arguments,
                            std::index_sequence_for<Arguments...>());
}

}  // namespace platform

#define DECLARE_EVENTSINK_MAP()                           \
  protected:                                              \
    static const AFX_EVENTSINKMAP* GetThisEventSinkMap(); \
    const AFX_EVENTSINKMAP* GetEventSinkMap() const override;

#define BEGIN_EVENTSINK_MAP(theClass, baseClass)                \
    const AFX_EVENTSINKMAP* theClass::GetEventSinkMap() const { \
        return GetThisEventSinkMap();                           \
    }                                                           \
    const AFX_EVENTSINKMAP* theClass::GetThisEventSinkMap() {   \
        using TheBaseClass = baseClass;                         \
        static const AFX_EVENTSINKMAP_ENTRY entries[] = {
#define ON_EVENT(theClass, id, dispid, handler)                                  \
    {id, dispid, [](CCmdTarget* target, VARIANT* arguments) {                    \
         platform::HandleEvent<theClass>(target, &theClass::handler, arguments); \
     }},
#define END_EVENTSINK_MAP()                                                            \
    { 0, 0, nullptr }                                                                  \
    }                                                                                  \
    ;                                                                                  \
    static const AFX_EVENTSINKMAP map = {&TheBaseClass::GetThisEventSinkMap, entries}; \
    return &map;                                                                       \
    }

// ---- Views --------------------------------------------------------------------------------------------

struct CCreateContext;

/// A window that shows something. Make it with `new`: it deletes itself after its window is gone, unless a
/// derived class overrides PostNcDestroy.
class PLATFORM_API CView : public CWnd {
    DECLARE_DYNAMIC(CView)
  protected:
    void PostNcDestroy() override;
    DECLARE_MESSAGE_MAP()
};

class PLATFORM_API CScrollView : public CView {
    DECLARE_DYNAMIC(CScrollView)
  protected:
    void OnSize(UINT type, int cx, int cy);
    DECLARE_MESSAGE_MAP()
};

class PLATFORM_API CFormView : public CScrollView {
    DECLARE_DYNAMIC(CFormView)
  protected:
    DECLARE_MESSAGE_MAP()
};

namespace platform::html {
class BrowserWindow;
class Browser;
}  // namespace platform::html

/// The identifier of the browser among the children of its view.
enum : UINT { AFX_IDW_PANE_FIRST = 0xE900 };

/// A view filled by a browser. Events come on the thread of the window, from inside its message loop; a
/// handler may destroy the view and everything around it.
class PLATFORM_API CHtmlView : public CFormView {
    DECLARE_DYNAMIC(CHtmlView)
  public:
    CHtmlView();
    ~CHtmlView() override;

    /// The window and the browser in it. `className` is ignored. FALSE with the last error of CreateEx;
    /// with ERROR_MOD_NOT_FOUND where no browser is installed, ERROR_NOT_SUPPORTED where the window system
    /// has no place for one. The object deletes itself then, if it is one that does.
    virtual BOOL Create(LPCWSTR className, LPCWSTR title, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, CCreateContext* context = nullptr);

    void GoBack();
    void GoForward();
    void Refresh();
    void Stop();
    /// The document with one added reference; null before the first.
    LPDISPATCH GetHtmlDocument() const;

    /// What the page asks, before each navigation. Any result but S_OK stands for the defaults.
    virtual HRESULT OnGetHostInfo(DOCHOSTUIINFO* info);

    /// The page or a frame is about to go somewhere; `*cancel` keeps it where it is.
    virtual void OnBeforeNavigate2(LPCWSTR url, DWORD flags, LPCWSTR targetFrame, CByteArray& postedData,
                                   LPCWSTR headers, BOOL* cancel);
    /// A window for a page is wanted. `*browser` may be set to another view's browser, which then goes there;
    /// `*cancel` refuses. Otherwise addresses of the web open in the user's own browser.
    virtual void OnNewWindow2(LPDISPATCH* browser, BOOL* cancel);
    virtual void OnNavigateComplete2(LPCWSTR url);
    virtual void OnDocumentComplete(LPCWSTR url);
    virtual void OnTitleChange(LPCWSTR title);
    virtual void OnStatusTextChange(LPCWSTR text);

    /// The events as they come; each calls the function above.
    virtual void BeforeNavigate2(LPDISPATCH frame, VARIANT* url, VARIANT* flags, VARIANT* targetFrame,
                                 VARIANT* postData, VARIANT* headers, VARIANT_BOOL* cancel);
    virtual void NewWindow2(LPDISPATCH* browser, VARIANT_BOOL* cancel);
    virtual void NavigateComplete2(LPDISPATCH frame, VARIANT* url);
    virtual void DocumentComplete(LPDISPATCH frame, VARIANT* url);
    void TitleChange(LPCWSTR title);
    void StatusTextChange(LPCWSTR text);

  protected:
    void OnSize(UINT type, int cx, int cy);
    void OnDestroy();
    void OnPaint();
    LRESULT OnSetFocus(WPARAM before, LPARAM);
    virtual const AFX_EVENTSINKMAP* GetEventSinkMap() const;
    static const AFX_EVENTSINKMAP* GetThisEventSinkMap();
    DECLARE_MESSAGE_MAP()

    CComPtr<IWebBrowser2> m_pBrowserApp;  ///< null without a window
    HWND m_wndBrowser;                    ///< the browser's own window, a child with AFX_IDW_PANE_FIRST

  private:
    friend class platform::html::Browser;
    std::unique_ptr<platform::html::BrowserWindow> m_browserWindow;
};
