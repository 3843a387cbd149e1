// The browser's own window: the child of an HTML view that a page is shown in. It gives the page its place,
// its focus and its keys, and stands for it where the page is not seen yet.
#pragma once

#include <exception>
#include <memory>

#include <platform/html.h>

#include "platform/html/browser.h"
#include "platform/window/core/embedded_window.h"

namespace platform::html {

class BrowserWindow final : public CWnd, public EmbeddedEvents {
  public:
    BrowserWindow() = default;
    ~BrowserWindow() override;

    // The window over all of the view, and the page in it. FALSE with the last error.
    BOOL Open(CHtmlView& view);
    CComPtr<IWebBrowser2> WebBrowser() const { return CComPtr<IWebBrowser2>(browser_.p); }

    BOOL PreTranslateMessage(MSG* message) override;

  private:
    bool MakePage(CHtmlView& view);
    void Close();
    void OnDestroy();
    void OnPaint();
    LRESULT OnFocus(WPARAM other, LPARAM);
    LRESULT OnNoFocus(WPARAM other, LPARAM);
    LRESULT OnKey(WPARAM key, LPARAM state);
    LRESULT OnFocusWanted(WPARAM, LPARAM);
    LRESULT OnFocusLeaves(WPARAM forwards, LPARAM);
    LRESULT OnContinue(WPARAM, LPARAM);
    LRESULT OnRethrow(WPARAM, LPARAM);
    // Of the page; they come as messages of this window, in their turn.
    void FocusWanted() override;
    void FocusLeaves(bool forwards) override;
    DECLARE_MESSAGE_MAP()

    CComPtr<Browser> browser_;
    std::unique_ptr<EmbeddedWindow> embedded_;  // null where a page needs no site of its own
};

}  // namespace platform::html
