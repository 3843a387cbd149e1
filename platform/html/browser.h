// The browser of an HTML view: the object that hosts hold, and the way from what a page reports to the events
// of the view. It outlives its window while somebody holds it, and does nothing any more then.
#pragma once

#include <atomic>
#include <exception>
#include <map>
#include <memory>
#include <string>

#include <platform/html.h>

#include "platform/html/frame_object.h"
#include "platform/html/page_host.h"

namespace platform::html {

// Posted to the browser's window.
enum : UINT { kRethrow = WM_USER + 4 };

class Browser final : public IWebBrowser2, public PageEvents {
  public:
    // `file` is what the browser came from; `window` is posted kRethrow when a handler has thrown.
    Browser(CHtmlView& view, HWND window, CString file);

    void SetPage(std::unique_ptr<PageHost> page) { page_ = std::move(page); }
    PageHost* Page() const { return page_.get(); }
    // A browser's own code stands between a handler and the loop: what is thrown waits until it is gone.
    void Rethrow();
    // The window goes: no event reaches the view from here on.
    void Close();

    // ---- IWebBrowser2
    ULONG AddRef() override { return ++holders_; }
    ULONG Release() override;
    HRESULT Navigate(BSTR url, VARIANT* flags, VARIANT* targetFrame, VARIANT* postData,
                     VARIANT* headers) override;
    HRESULT GoBack() override;
    HRESULT GoForward() override;
    HRESULT Refresh() override;
    HRESULT Stop() override;
    HRESULT get_FullName(BSTR* path) override;
    HRESULT get_Type(BSTR* type) override;
    HRESULT get_LocationName(BSTR* title) override;
    HRESULT get_LocationURL(BSTR* url) override;
    HRESULT get_Document(IDispatch** document) override;

    // ---- PageEvents
    bool BeforeNavigate(const FramePath& frame, const PageRequest& request) override;
    bool NewWindow(const std::string& url) override;
    void Committed(const FramePath& frame, const std::string& url) override;
    void Completed(const FramePath& frame, const std::string& url) override;
    bool Failed(const FramePath& frame, const std::string& url, std::uint32_t code) override;
    void TitleChanged(const std::string& title) override;
    void StatusChanged(const std::string& text) override;

  private:
    struct Frame {
        CComPtr<FrameObject> object;  // null for the page itself
        bool loading = false;         // committed, and not completed yet
        std::string url;
    };
    ~Browser() override;
    LPDISPATCH DispatchOf(const FramePath& path);
    // Calls the handler of an event. The view, and the page, may be gone afterwards.
    void Fire(DISPID event, VARIANT* arguments);
    void FireForFrame(DISPID event, const FramePath& frame, const std::string& url);
    // The frames of a page that is replaced come to their end.
    void CompleteFrames();
    void ApplyHostInfo();

    std::atomic<ULONG> holders_ = 0;
    CHtmlView* view_;  // null once closed
    HWND window_;
    std::exception_ptr thrown_;
    CString file_;
    std::unique_ptr<PageHost> page_;
    std::map<FramePath, Frame> frames_;
    bool shows_ = false;  // some document was committed
};

}  // namespace platform::html
