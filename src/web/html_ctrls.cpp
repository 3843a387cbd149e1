#include <qkui/web/html_ctrls.h>

#include <cstring>
#include <string_view>

namespace {

constexpr DISPID kNavigateError = 271;
constexpr DWORD kLongestPath = 260;
constexpr int kSchemeLength = 4;

class TextVariant {
  public:
    explicit TextVariant(LPCWSTR text) {
        value_.vt = VT_BSTR;
        value_.bstrVal = SysAllocString(text);
    }
    ~TextVariant() { VariantClear(&value_); }
    TextVariant(const TextVariant&) = delete;
    TextVariant& operator=(const TextVariant&) = delete;
    VARIANT* Get() { return &value_; }

  private:
    VARIANT value_;
};

VARIANT BytesVariant(LPVOID data, DWORD count) {
    VARIANT value;
    void* bytes = nullptr;
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, count);
    if (FAILED(SafeArrayAccessData(array, &bytes))) return value;
    if (count > 0) std::memcpy(bytes, data, count);
    SafeArrayUnaccessData(array);
    value.vt = VT_ARRAY | VT_UI1;
    value.parray = array;
    return value;
}

CString TextOf(const VARIANT* value) {
    return value && value->vt == VT_BSTR ? CString(value->bstrVal) : CString();
}

CString Property(IWebBrowser2* browser, HRESULT (IWebBrowser2::*get)(BSTR*)) {
    if (!browser) return {};
    BSTR text = nullptr;
    (browser->*get)(&text);
    CString result(text);
    SysFreeString(text);
    return result;
}

// The file of the current resource module; empty when it has none.
CString ResourceFile() {
    WCHAR path[kLongestPath];
    return GetModuleFileNameW(AfxGetResourceHandle(), path, kLongestPath) != 0 ? CString(path) : CString();
}

}  // namespace

IMPLEMENT_DYNAMIC(CHtmlCtrls, CHtmlView)

BEGIN_MESSAGE_MAP(CHtmlCtrls, CHtmlView)
ON_WM_DESTROY()
ON_WM_MOUSEACTIVATE()
ON_WM_SIZE()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

BEGIN_EVENTSINK_MAP(CHtmlCtrls, CHtmlView)
ON_EVENT(CHtmlCtrls, AFX_IDW_PANE_FIRST, kNavigateError, NavigateError)
END_EVENTSINK_MAP()

CHtmlCtrls::CHtmlCtrls() : m_pfnDocComplete(nullptr), m_pLife(std::make_shared<char>()) {}

CHtmlCtrls::~CHtmlCtrls() = default;

// ---- creation

BOOL CHtmlCtrls::CreateFromStatic(UINT nID, CWnd* pParent) {
    m_pTopDisp = nullptr;
    m_bDocComplete = FALSE;
    m_bHasNavError = FALSE;
    CRect rect(0, 0, 0, 0);
    const HWND placeholder = pParent ? pParent->GetDlgItem(static_cast<int>(nID)) : HWND();
    if (placeholder) {
        ::GetWindowRect(placeholder, rect);
        pParent->ScreenToClient(rect);
        ::DestroyWindow(placeholder);
    }
    m_bNavError = FALSE;
    return Create(nullptr, nullptr, WS_CHILD, rect, pParent, nID);
}

void CHtmlCtrls::PostNcDestroy() {}

// ---- pages

void CHtmlCtrls::Navigate(LPCWSTR lpszURL, DWORD dwFlags, LPCWSTR lpszTargetFrameName, LPCWSTR lpszHeaders,
                          LPVOID lpvPostData, DWORD dwPostDataLen) {
    if (!m_pBrowserApp) return;
    auto* const url = SysAllocString(lpszURL);
    VARIANT post;
    if (lpvPostData) {
        DWORD count = dwPostDataLen;
        if (count == 0)
            count = static_cast<DWORD>(std::u16string_view(static_cast<LPCWSTR>(lpvPostData)).size());
        post = BytesVariant(lpvPostData, count);
    }
    VARIANT flags;
    flags.vt = VT_I4;
    flags.lVal = static_cast<LONG>(dwFlags);
    TextVariant target(lpszTargetFrameName);
    TextVariant headers(lpszHeaders);
    m_pBrowserApp->Navigate(url, &flags, target.Get(), &post, headers.Get());
    SysFreeString(url);
    VariantClear(&post);
}

BOOL CHtmlCtrls::LoadFromResource(LPCWSTR lpszResource) {
    const CString file = ResourceFile();
    if (file.IsEmpty()) return FALSE;
    CString url;
    url.Format(u"res://%s/%s", file.GetString(), lpszResource);
    Navigate(url);
    return TRUE;
}

BOOL CHtmlCtrls::LoadFromResource(UINT nRes) {
    const CString file = ResourceFile();
    if (file.IsEmpty()) return FALSE;
    CString url;
    url.Format(u"res://%s/%d", file.GetString(), static_cast<int>(nRes));
    Navigate(url);
    return TRUE;
}

CString CHtmlCtrls::GetFullName() const {
    return Property(m_pBrowserApp, &IWebBrowser2::get_FullName);
}

CString CHtmlCtrls::GetType() const {
    return Property(m_pBrowserApp, &IWebBrowser2::get_Type);
}

CString CHtmlCtrls::GetLocationName() const {
    return Property(m_pBrowserApp, &IWebBrowser2::get_LocationName);
}

CString CHtmlCtrls::GetLocationURL() const {
    return Property(m_pBrowserApp, &IWebBrowser2::get_LocationURL);
}

CComPtr<IWebBrowser2> CHtmlCtrls::GetWebBrow() {
    return m_pBrowserApp;
}

// ---- what the browser asks and reports

BOOL CHtmlCtrls::OnAmbientProperty(COleControlSite* site, DISPID property, VARIANT* value) {
    return CWnd::OnAmbientProperty(site, property, value);
}

HRESULT CHtmlCtrls::OnGetHostInfo(DOCHOSTUIINFO* pInfo) {
    if (pInfo) pInfo->dwFlags = DOCHOSTUIFLAG_SCROLL_NO;
    return S_OK;
}

void CHtmlCtrls::OnBeforeNavigate2(LPCWSTR lpszURL, DWORD, LPCWSTR, CByteArray&, LPCWSTR, BOOL* pbCancel) {
    if (CString(lpszURL).Left(kSchemeLength).CompareNoCase(u"app:") != 0) return;
    // The host may destroy the control in there.
    OnAppCmd(lpszURL + kSchemeLength);
    *pbCancel = TRUE;
}

void CHtmlCtrls::OnNewWindow2(LPDISPATCH* ppDisp, BOOL* pbCancel) {
    CHtmlView::OnNewWindow2(ppDisp, pbCancel);
}

void CHtmlCtrls::OnDocumentComplete(LPCWSTR lpszURL) {
    CHtmlView::OnDocumentComplete(lpszURL);
}

void CHtmlCtrls::OnNavigateError(LPCWSTR, LPCWSTR, DWORD, BOOL* pbCancel) {
    *pbCancel = FALSE;
    m_bHasNavError = TRUE;
    m_bNavError = TRUE;
}

void CHtmlCtrls::NavigateComplete2(LPDISPATCH pDisp, VARIANT*) {
    // After a completed page the first to navigate is the page; its frames follow.
    if (!m_pTopDisp) m_pTopDisp = pDisp;
}

void CHtmlCtrls::DocumentComplete(LPDISPATCH pDisp, VARIANT*) {
    if (!m_pTopDisp || m_pTopDisp != pDisp) return;
    m_pTopDisp = nullptr;
    m_bDocComplete = TRUE;
    const std::weak_ptr<const void> life = m_pLife;
    if (m_pfnDocComplete) {
        CComPtr<IDispatch> document;
        document.Attach(GetHtmlDocument());
        m_pfnDocComplete(m_pDocCompleteParam, document, m_bNavError);
    }
    if (!life.expired()) m_bNavError = FALSE;
}

void CHtmlCtrls::NavigateError(LPDISPATCH, VARIANT* pvURL, VARIANT* pvFrame, VARIANT* pvStatusCode,
                               VARIANT_BOOL* pvbCancel) {
    const CString url = TextOf(pvURL);
    const CString frame = TextOf(pvFrame);
    BOOL cancel = FALSE;
    OnNavigateError(url, frame, static_cast<DWORD>(pvStatusCode->lVal), &cancel);
    if (pvbCancel) *pvbCancel = cancel ? VARIANT_TRUE : VARIANT_FALSE;
}

void CHtmlCtrls::OnAppCmd(LPCWSTR) {}

// ---- the window

void CHtmlCtrls::OnDestroy() {
    m_pBrowserApp.Release();
    CHtmlView::OnDestroy();
}

int CHtmlCtrls::OnMouseActivate(CWnd*, UINT, UINT) {
    return static_cast<int>(Default());
}

void CHtmlCtrls::OnSize(UINT nType, int cx, int cy) {
    CScrollView::OnSize(nType, cx, cy);
    if (!IsWindow(m_wndBrowser)) return;
    // The browser's sunken edge lies outside of what is seen.
    CRect rect;
    GetClientRect(rect);
    AdjustWindowRectEx(rect, GetStyle(), FALSE, WS_EX_CLIENTEDGE);
    ::SetWindowPos(m_wndBrowser, HWND(), rect.left, rect.top, rect.Width(), rect.Height(),
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CHtmlCtrls::OnEraseBkgnd(HDC) {
    return TRUE;
}
