/// @file
/// A browser inside a dialog.
#pragma once

#include <memory>

#include <platform/html.h>

/// Called when the page has loaded, with all its frames: the value that the host set, the page's document
/// (may be null; valid during the call), and whether anything failed to load since the last time.
using QKDocCompleteProc = void (*)(DWORD_PTR param, IDispatch* document, BOOL navError);

/// A browser in the place of a control of a dialog template. Links to "app:..." command the host. The object
/// belongs to the dialog: it outlives its window, and may be destroyed from inside every call that it makes.
/// Pages, events and failures are those of CHtmlView; calls that need the browser do nothing without a
/// window.
class PLATFORM_API CHtmlCtrls : public CHtmlView {
    DECLARE_DYNAMIC(CHtmlCtrls)
  public:
    CHtmlCtrls();
    ~CHtmlCtrls() override;

    QKDocCompleteProc m_pfnDocComplete;
    DWORD_PTR m_pDocCompleteParam = 0;
    BOOL m_bNavError = FALSE;         ///< something failed since the page last completed
    IDispatch* m_pTopDisp = nullptr;  ///< the page that is loading; holds no reference
    BOOL m_bDocComplete = FALSE;      ///< a page has completed since CreateFromStatic
    BOOL m_bHasNavError = FALSE;      ///< something failed since CreateFromStatic

    /// Creates the control, hidden, in the place of the dialog item `nID` of `pParent`, which is destroyed;
    /// without such an item in an empty rectangle at the parent's origin. FALSE when the browser or its
    /// window cannot be had: see CHtmlView::Create.
    BOOL CreateFromStatic(UINT nID, CWnd* pParent);

    ///@{
    /// With post data, `dwPostDataLen` is its length in bytes. 0 takes the data for a terminated text, and
    /// posts as many bytes as it has characters: the first half of it.
    void Navigate(LPCWSTR lpszURL, DWORD dwFlags = 0, LPCWSTR lpszTargetFrameName = nullptr,
                  LPCWSTR lpszHeaders = nullptr, LPVOID lpvPostData = nullptr, DWORD dwPostDataLen = 0);
    void Navigate(const platform::Utf8& url) { Navigate(url.Utf16()); }
    ///@}
    ///@{
    /// A page of the current resource module (AfxSetResourceHandle), by name or number: an RT_HTML resource,
    /// whose links and pictures name others. FALSE where the module has no file.
    BOOL LoadFromResource(LPCWSTR lpszResource);
    BOOL LoadFromResource(UINT nRes);
    BOOL LoadFromResource(const platform::Utf8& name) { return LoadFromResource(name.Utf16()); }
    ///@}

    CString GetFullName() const;
    CString GetType() const;
    CString GetLocationName() const;
    CString GetLocationURL() const;
    /// With one added reference; null when there is none.
    CComPtr<IWebBrowser2> GetWebBrow();

    BOOL OnAmbientProperty(COleControlSite* site, DISPID property, VARIANT* value) override;

  protected:
    void PostNcDestroy() override;

  public:
    HRESULT OnGetHostInfo(DOCHOSTUIINFO* pInfo) override;
    void OnBeforeNavigate2(LPCWSTR lpszURL, DWORD nFlags, LPCWSTR lpszTargetFrameName,
                           CByteArray& baPostedData, LPCWSTR lpszHeaders, BOOL* pbCancel) override;
    void OnNewWindow2(LPDISPATCH* ppDisp, BOOL* pbCancel) override;
    void OnDocumentComplete(LPCWSTR lpszURL) override;
    virtual void OnNavigateError(LPCWSTR lpszURL, LPCWSTR lpszFrame, DWORD dwError, BOOL* pbCancel);
    void NavigateComplete2(LPDISPATCH pDisp, VARIANT* URL) override;
    void DocumentComplete(LPDISPATCH pDisp, VARIANT* URL) override;
    virtual void NavigateError(LPDISPATCH pDisp, VARIANT* pvURL, VARIANT* pvFrame, VARIANT* pvStatusCode,
                               VARIANT_BOOL* pvbCancel);
    /// A link to "app:" was followed; the text behind the colon, as the page has it.
    virtual void OnAppCmd(LPCWSTR lpszWhere);

    void OnDestroy();
    int OnMouseActivate(CWnd* topLevel, UINT hitTest, UINT message);
    void OnSize(UINT nType, int cx, int cy);
    BOOL OnEraseBkgnd(HDC dc);
    DECLARE_EVENTSINK_MAP()
    DECLARE_MESSAGE_MAP()

  private:
    std::shared_ptr<const void> m_pLife;  ///< ends with the object
};
