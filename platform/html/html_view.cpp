// The views of the public API.
#include <platform/html.h>

#include <cstring>
#include <string_view>

#include "platform/html/browser_window.h"

IMPLEMENT_DYNAMIC(CView, CWnd)
IMPLEMENT_DYNAMIC(CScrollView, CView)
IMPLEMENT_DYNAMIC(CFormView, CScrollView)
IMPLEMENT_DYNAMIC(CHtmlView, CFormView)

BEGIN_MESSAGE_MAP(CView, CWnd)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CScrollView, CView)
ON_WM_SIZE()
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CFormView, CScrollView)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CHtmlView, CFormView)
ON_WM_SIZE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_MESSAGE(WM_SETFOCUS, OnSetFocus)
END_MESSAGE_MAP()

const AFX_EVENTSINKMAP* CHtmlView::GetEventSinkMap() const {
    return GetThisEventSinkMap();
}

const AFX_EVENTSINKMAP* CHtmlView::GetThisEventSinkMap() {
    static const AFX_EVENTSINKMAP_ENTRY entries[] = {
        // clang-format off
        ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, 102, StatusTextChange)
        ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, 113, TitleChange)
        ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, 250, BeforeNavigate2)
        ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, 251, NewWindow2)
        ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, 252, NavigateComplete2)
        ON_EVENT(CHtmlView, AFX_IDW_PANE_FIRST, 259, DocumentComplete)
        // clang-format on
        {0, 0, nullptr}};
    static const AFX_EVENTSINKMAP map = {nullptr, entries};
    return &map;
}

// ---- views in general

void CView::PostNcDestroy() {
    delete this;
}

void CScrollView::OnSize(UINT type, int cx, int cy) {
    CView::OnSize(type, cx, cy);
}

// ---- life

CHtmlView::CHtmlView() = default;

CHtmlView::~CHtmlView() {
    m_pBrowserApp.Release();
    m_browserWindow.reset();
}

BOOL CHtmlView::Create(LPCWSTR, LPCWSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                       CCreateContext*) {
    // From here on a view that fails may delete itself.
    if (!CreateEx(0, title, style & ~DWORD{WS_VISIBLE}, rect, parent, id)) return FALSE;
    const HWND window = m_hWnd;
    m_browserWindow = std::make_unique<platform::html::BrowserWindow>();
    if (!m_browserWindow->Open(*this)) {
        const DWORD error = GetLastError();
        DestroyWindow();
        SetLastError(error);
        return FALSE;
    }
    m_pBrowserApp = m_browserWindow->WebBrowser();
    m_wndBrowser = m_browserWindow->m_hWnd;
    CRect client;
    GetClientRect(client);
    SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.Width(), client.Height()));
    if (IsWindow(window) && (style & WS_VISIBLE)) ::ShowWindow(window, SW_SHOW);
    return IsWindow(window);
}

void CHtmlView::OnDestroy() {
    m_pBrowserApp.Release();
    Default();
}

// The browser covers all of the view.
void CHtmlView::OnPaint() {
    PAINTSTRUCT paint;
    if (BeginPaint(m_hWnd, &paint)) EndPaint(m_hWnd, &paint);
}

void CHtmlView::OnSize(UINT type, int cx, int cy) {
    CFormView::OnSize(type, cx, cy);
    if (IsWindow(m_wndBrowser)) ::MoveWindow(m_wndBrowser, 0, 0, cx, cy, TRUE);
}

LRESULT CHtmlView::OnSetFocus(WPARAM, LPARAM) {
    if (IsWindow(m_wndBrowser)) SetFocus(m_wndBrowser);
    return 0;
}

// ---- the browser

namespace {

LPCWSTR TextOf(const VARIANT* value) {
    return value && value->vt == VT_BSTR && value->bstrVal ? value->bstrVal : u"";
}

}  // namespace

void CHtmlView::GoBack() {
    if (m_pBrowserApp) m_pBrowserApp->GoBack();
}

void CHtmlView::GoForward() {
    if (m_pBrowserApp) m_pBrowserApp->GoForward();
}

void CHtmlView::Refresh() {
    if (m_pBrowserApp) m_pBrowserApp->Refresh();
}

void CHtmlView::Stop() {
    if (m_pBrowserApp) m_pBrowserApp->Stop();
}

LPDISPATCH CHtmlView::GetHtmlDocument() const {
    LPDISPATCH document = nullptr;
    if (m_pBrowserApp) m_pBrowserApp->get_Document(&document);
    return document;
}

// ---- events

HRESULT CHtmlView::OnGetHostInfo(DOCHOSTUIINFO*) {
    return S_FALSE;
}

void CHtmlView::OnBeforeNavigate2(LPCWSTR, DWORD, LPCWSTR, CByteArray&, LPCWSTR, BOOL*) {}
void CHtmlView::OnNewWindow2(LPDISPATCH*, BOOL*) {}
void CHtmlView::OnNavigateComplete2(LPCWSTR) {}
void CHtmlView::OnDocumentComplete(LPCWSTR) {}
void CHtmlView::OnTitleChange(LPCWSTR) {}
void CHtmlView::OnStatusTextChange(LPCWSTR) {}

void CHtmlView::BeforeNavigate2(LPDISPATCH, VARIANT* url, VARIANT* flags, VARIANT* targetFrame,
                                VARIANT* postData, VARIANT* headers, VARIANT_BOOL* cancel) {
    CByteArray posted;
    void* data = nullptr;
    if (postData->vt == (VT_ARRAY | VT_UI1) && SUCCEEDED(SafeArrayAccessData(postData->parray, &data))) {
        const ULONG count = SafeArrayCount(postData->parray);
        posted.SetSize(static_cast<INT_PTR>(count));
        if (count > 0) std::memcpy(posted.GetData(), data, count);
        SafeArrayUnaccessData(postData->parray);
    }
    BOOL refused = *cancel != VARIANT_FALSE;
    OnBeforeNavigate2(TextOf(url), static_cast<DWORD>(flags->lVal), TextOf(targetFrame), posted,
                      TextOf(headers), &refused);
    *cancel = refused ? VARIANT_TRUE : VARIANT_FALSE;
}

void CHtmlView::NewWindow2(LPDISPATCH* browser, VARIANT_BOOL* cancel) {
    BOOL refused = *cancel != VARIANT_FALSE;
    OnNewWindow2(browser, &refused);
    *cancel = refused ? VARIANT_TRUE : VARIANT_FALSE;
}

void CHtmlView::NavigateComplete2(LPDISPATCH, VARIANT* url) {
    OnNavigateComplete2(TextOf(url));
}

void CHtmlView::DocumentComplete(LPDISPATCH, VARIANT* url) {
    OnDocumentComplete(TextOf(url));
}

void CHtmlView::TitleChange(LPCWSTR title) {
    OnTitleChange(title);
}

void CHtmlView::StatusTextChange(LPCWSTR text) {
    OnStatusTextChange(text);
}
