// A dialog with a browser in it, which notes what it receives.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QKUILib.h>

namespace html_test {

constexpr UINT kDialog = 101;
constexpr UINT kPlaceholder = 1001;
constexpr UINT kPage = 201;

class Control : public CHtmlCtrls {
  public:
    std::vector<std::string> log;
    std::function<void(const std::string&)> act;  // may destroy the control

    void OnAppCmd(LPCWSTR where) override { Note("app " + ToUtf8(where)); }
    void OnTitleChange(LPCWSTR title) override { Note("title " + ToUtf8(title)); }
    void OnNewWindow2(LPDISPATCH* browser, BOOL* cancel) override {
        CHtmlCtrls::OnNewWindow2(browser, cancel);
        Note("window");
    }
    void OnBeforeNavigate2(LPCWSTR url, DWORD flags, LPCWSTR target, CByteArray& posted, LPCWSTR headers,
                           BOOL* cancel) override {
        const std::size_t before = log.size();
        CHtmlCtrls::OnBeforeNavigate2(url, flags, target, posted, headers, cancel);
        if (!*cancel && log.size() == before) Note("before " + ToUtf8(url));
    }
    void NavigateComplete2(LPDISPATCH frame, VARIANT* url) override {
        CHtmlCtrls::NavigateComplete2(frame, url);
        Note(frame == m_pBrowserApp ? "navigated" : "frame navigated");
    }
    void DocumentComplete(LPDISPATCH frame, VARIANT* url) override {
        const bool top = frame == m_pBrowserApp;
        const std::weak_ptr<int> life = life_;
        CHtmlCtrls::DocumentComplete(frame, url);
        if (!life.expired()) Note(top ? "complete" : "frame complete");
    }
    void OnNavigateError(LPCWSTR url, LPCWSTR frame, DWORD error, BOOL* cancel) override {
        CHtmlCtrls::OnNavigateError(url, frame, error, cancel);
        lastError = error;
        Note("error");
    }
    void Watch() {
        m_pDocCompleteParam = reinterpret_cast<DWORD_PTR>(this);
        m_pfnDocComplete = [](DWORD_PTR self, IDispatch* document, BOOL failed) {
            reinterpret_cast<Control*>(self)->Note(std::string("notified ") + (failed ? "1" : "0") +
                                                   (document ? "" : " without document"));
        };
    }
    int Count(const std::string& what) const {
        int count = 0;
        for (const std::string& line : log)
            count += line == what;
        return count;
    }
    DWORD lastError = 0;
    using CHtmlCtrls::m_pBrowserApp;
    using CHtmlCtrls::m_wndBrowser;

  private:
    void Note(const std::string& what) {
        log.push_back(what);
        if (const auto copy = act) copy(what);
    }
    std::shared_ptr<int> life_ = std::make_shared<int>(0);
};

class Host : public CDialog {
  public:
    Host() : CDialog(kDialog) {}
    BOOL Open(UINT placeholder = kPlaceholder) {
        if (!Create(kDialog)) return FALSE;
        if (!control->CreateFromStatic(placeholder, this)) return FALSE;
        control->Watch();
        control->ShowWindow(SW_SHOW);
        ShowWindow(SW_SHOW);
        return TRUE;
    }
    std::unique_ptr<Control> control = std::make_unique<Control>();
};

}  // namespace html_test
