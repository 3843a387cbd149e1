// A page of the browser, in a window inside another window.
//
// The browser's signals become the events of the seam (web_page_events.cpp). Any of these may destroy the
// page, so handlers hold what they need and ask Alive before they go on.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

#include "platform/html/page_host.h"
#include "platform/html/webkit/frame_script.h"
#include "platform/html/webkit/owned.h"
#include "platform/html/webkit/poster.h"

namespace platform::html {

class WebPage final : public PageHost {
  public:
    // The page's own window is made inside `socket`, hidden.
    WebPage(WebKitWebContext* context, std::uint64_t socket, int scale, PageEvents& events);
    ~WebPage() override;
    std::uint64_t Window() const;

    void Navigate(const PageRequest& request) override;
    bool GoBack() override;
    bool GoForward() override;
    void Reload() override;
    void Stop() override;
    void SetFocus(bool focused) override;
    void HideScrollBars(bool hidden) override;
    std::string Title() const override;
    std::string Url() const override;
    std::string DocumentType() const override;

  private:
    using Life = std::weak_ptr<const int>;

    // ---- web_page_events
    void Connect();
    void ConnectLoading();
    void ConnectUser();
    template <class Handler>
    void On(const char* signal, Handler* handler) {
        g_signal_connect(view_.get(), signal, G_CALLBACK(handler), this);
    }
    void OnNews(const FrameNews& news);
    void OnLoadChanged(WebKitLoadEvent event);
    void OnCommitted();
    // True: the failure is seen to.
    bool OnLoadFailed(const std::string& url, std::uint32_t code, bool committed);
    bool OnDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    // Whether to go on.
    bool DecideNavigation(WebKitNavigationPolicyDecision* decision);
    bool DecideResponse(WebKitResponsePolicyDecision* decision);
    void OnCreate(const std::string& url, bool byUser);
    void TitleIs(const std::string& title);
    void NoteType();
    void OnResource(WebKitWebResource* resource, const std::string& url);
    void OnTerminated();

    FramePath FrameOf(WebKitNavigationAction* action, const std::string& url) const;
    // The address as the link just clicked has it, when it leads to `url` and the browser opens no such.
    std::string Written(const std::string& url);

    // ---- what the browser does not do by itself
    void BeginLater(const PageRequest& request);
    void Begin(const PageRequest& request);
    void Post(const PageRequest& request);
    void NavigateNamed(const PageRequest& request);
    // Tells of a failure of the page itself, and shows it unless that is cancelled.
    void Fail(const std::string& url, std::uint32_t code);

    PageEvents& events_;
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0);
    GtkWidget* plug_ = nullptr;  // destroyed by us, or with its window
    Owned<WebKitWebView> view_;
    WebKitUserContentManager* manager_ = nullptr;  // the view's
    gulong newsHandler_ = 0;
    guint later_ = 0;  // a source that begins `waiting_`
    PageRequest waiting_;
    Poster poster_;

    std::string title_;                   // as was reported
    std::string type_;                    // of the document shown
    std::optional<std::string> own_;      // the address that Navigate asked for, until it is decided on
    std::string mainUrl_;                 // where the page was let go last
    std::string written_;                 // of the link clicked last
    std::vector<std::string> frameUrls_;  // where frames were let go, and have not come to
    bool exempt_ = false;                 // what comes next has been decided on
    bool loading_ = false;                // committed, and not finished
    bool ignoreFinish_ = false;           // the next end of a load belongs to a failure
    bool hidesScrollBars_ = false;
};

// Schemes that the browser opens.
[[nodiscard]] bool CanOpen(const std::string& url);

}  // namespace platform::html
