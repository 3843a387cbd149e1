// From the browser's signals to the events of a page.
#include <algorithm>
#include <utility>

#include <platform/html.h>

#include "platform/html/webkit/navigation_error.h"
#include "platform/html/webkit/web_page.h"

namespace platform::html {

namespace {

constexpr guint kFirstBadStatus = 400;

// Two addresses that differ in how their characters are escaped, and in the case of their schemes.
bool LeadsTo(const std::string& written, const std::string& url) {
    const auto plain = [](const std::string& text) {
        const OwnedText unescaped(g_uri_unescape_string(text.c_str(), nullptr));
        std::string result = unescaped ? unescaped.get() : text;
        const std::size_t colon = std::min(result.find(':'), result.size());
        std::transform(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(colon), result.begin(),
                       g_ascii_tolower);
        std::erase_if(result, [](char c) { return c == '\n' || c == '\r' || c == '\t'; });
        return result;
    };
    const OwnedText trimmed(g_strstrip(g_strdup(written.c_str())));
    return plain(trimmed.get()) == plain(url);
}

std::string UrlOf(WebKitNavigationAction* action) {
    return Text(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
}

}  // namespace

void WebPage::Connect() {
    ConnectLoading();
    ConnectUser();
    newsHandler_ = WatchFrames(manager_, [this](const FrameNews& news) { OnNews(news); });
}

void WebPage::ConnectLoading() {
    On(
        "load-changed",
        +[](WebKitWebView*, WebKitLoadEvent event, WebPage* page) noexcept { page->OnLoadChanged(event); });
    On(
        "load-failed",
        +[](WebKitWebView*, WebKitLoadEvent event, const char* url, GError* error,
            WebPage* page) noexcept -> gboolean {
            const std::optional<std::uint32_t> code = NavigationErrorOf(error);
            if (code) page->OnLoadFailed(Text(url), *code, event == WEBKIT_LOAD_COMMITTED);
            return TRUE;
        });
    On(
        "load-failed-with-tls-errors",
        +[](WebKitWebView*, const char* url, GTlsCertificate*, GTlsCertificateFlags,
            WebPage* page) noexcept -> gboolean {
            page->OnLoadFailed(Text(url), INET_E_SECURITY_PROBLEM, false);
            return TRUE;
        });
    On(
        "web-process-terminated",
        +[](WebKitWebView*, WebKitWebProcessTerminationReason reason, WebPage* page) noexcept {
            if (reason != WEBKIT_WEB_PROCESS_TERMINATED_BY_API) page->OnTerminated();
        });
    On(
        "resource-load-started",
        +[](WebKitWebView*, WebKitWebResource* resource, WebKitURIRequest* request, WebPage* page) noexcept {
            page->OnResource(resource, Text(webkit_uri_request_get_uri(request)));
        });
    On(
        "notify::title", +[](WebKitWebView*, GParamSpec*, WebPage* page) noexcept {
            page->TitleIs(Text(webkit_web_view_get_title(page->view_.get())));
        });
}

// What the page and its user want to open, and where the pointer is.
void WebPage::ConnectUser() {
    On(
        "decide-policy",
        +[](WebKitWebView* view, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
            WebPage* page) noexcept -> gboolean {
            const Owned<WebKitWebView> keepsView = Share(view);
            const Owned<WebKitPolicyDecision> keeps = Share(decision);
            if (page->OnDecidePolicy(decision, type))
                webkit_policy_decision_use(decision);
            else
                webkit_policy_decision_ignore(decision);
            return TRUE;
        });
    On(
        "create",
        +[](WebKitWebView* view, WebKitNavigationAction* action, WebPage* page) noexcept -> GtkWidget* {
            const Owned<WebKitWebView> keeps = Share(view);
            page->OnCreate(UrlOf(action), webkit_navigation_action_is_user_gesture(action) != FALSE);
            return nullptr;
        });
    On(
        "mouse-target-changed", +[](WebKitWebView*, WebKitHitTestResult* hit, guint, WebPage* page) noexcept {
            const bool link = webkit_hit_test_result_context_is_link(hit) != FALSE;
            page->events_.StatusChanged(link ? Text(webkit_hit_test_result_get_link_uri(hit)) : "");
        });
}

void WebPage::OnNews(const FrameNews& news) {
    switch (news.kind) {
        case FrameNews::Kind::Clicked:
            written_ = news.text;
            break;
        case FrameNews::Kind::Titled:
            TitleIs(news.text);
            break;
        case FrameNews::Kind::Committed:
            std::erase(frameUrls_, news.text);
            events_.Committed(news.frame, news.text);
            break;
        case FrameNews::Kind::Loaded:
            events_.Completed(news.frame, news.text);
            break;
    }
}

// ---- loading

void WebPage::OnLoadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_COMMITTED) {
        OnCommitted();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        // The end of a load that failed comes too, with the address of the page before it.
        if (std::exchange(ignoreFinish_, false)) return;
        if (!std::exchange(loading_, false)) return;
        NoteType();
        events_.Completed("", Url());
    }
}

void WebPage::OnCommitted() {
    const std::string url = Url();
    // Ports that no page may use are answered by an empty page, without a word.
    if (url == "about:blank" && (mainUrl_.starts_with("http:") || mainUrl_.starts_with("https:"))) {
        ignoreFinish_ = true;
        Fail(std::exchange(mainUrl_, {}), INET_E_CANNOT_CONNECT);
        return;
    }
    ignoreFinish_ = false;
    exempt_ = false;
    loading_ = true;
    title_.clear();
    NoteType();
    frameUrls_.clear();
    events_.Committed("", url);
}

bool WebPage::OnLoadFailed(const std::string& url, std::uint32_t code, bool committed) {
    if (committed) return events_.Failed("", url, code);  // what came is shown, and ends here
    ignoreFinish_ = true;
    Fail(url, code);
    return true;
}

void WebPage::OnTerminated() {
    loading_ = false;
    ignoreFinish_ = false;
    Fail(Url(), INET_E_TERMINATED_BIND);
}

// The browser's own news come late, sometimes after the end of the load.
void WebPage::TitleIs(const std::string& title) {
    if (title.empty() || std::exchange(title_, title) == title) return;
    events_.TitleChanged(title);
}

void WebPage::NoteType() {
    WebKitWebResource* const main = webkit_web_view_get_main_resource(view_.get());
    WebKitURIResponse* const response = main ? webkit_web_resource_get_response(main) : nullptr;
    type_ = response ? Text(webkit_uri_response_get_mime_type(response)) : std::string();
    if (type_.empty()) type_ = "text/html";
}

// ---- decisions

bool WebPage::OnDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE)
        return DecideResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
    if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION) return true;  // asked for by "create"
    return DecideNavigation(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
}

FramePath WebPage::FrameOf(WebKitNavigationAction* action, const std::string& url) const {
    if (own_ == url || (webkit_navigation_action_is_redirect(action) && url != mainUrl_ && !loading_))
        return "";
    switch (webkit_navigation_action_get_navigation_type(action)) {
        case WEBKIT_NAVIGATION_TYPE_BACK_FORWARD:
        case WEBKIT_NAVIGATION_TYPE_RELOAD:
            return "";
        default:
            // While the page loads, what goes somewhere by itself is a frame of it.
            return loading_ && !webkit_navigation_action_is_user_gesture(action) ? "?" : "";
    }
}

std::string WebPage::Written(const std::string& url) {
    if (CanOpen(url)) return url;
    const std::string written = std::exchange(written_, {});
    return !written.empty() && LeadsTo(written, url) ? written : url;
}

bool WebPage::DecideNavigation(WebKitNavigationPolicyDecision* decision) {
    if (std::exchange(exempt_, false)) return true;
    WebKitNavigationAction* const action = webkit_navigation_policy_decision_get_navigation_action(decision);
    const std::string url = UrlOf(action);
    const FramePath frame = FrameOf(action, url);
    if (own_ == url) own_.reset();
    PageRequest request;
    request.url = Written(url);
    request.target = Text(webkit_navigation_action_get_frame_name(action));
    const Life life = life_;
    if (!events_.BeforeNavigate(frame, request) || life.expired()) return false;
    if (frame.empty())
        mainUrl_ = url;
    else
        frameUrls_.push_back(url);
    return true;
}

bool WebPage::DecideResponse(WebKitResponsePolicyDecision* decision) {
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    const guint status = webkit_uri_response_get_status_code(response);
    const bool main = webkit_response_policy_decision_is_main_frame_main_resource(decision) != FALSE;
    const std::string url = Text(webkit_uri_response_get_uri(response));
    if (status >= kFirstBadStatus && !events_.Failed(main ? "" : "?", url, status)) return false;
    return webkit_response_policy_decision_is_mime_type_supported(decision) != FALSE;
}

void WebPage::OnCreate(const std::string& url, bool byUser) {
    const std::string written = Written(url);
    const Owned<WebKitWebView> keeps = Share(view_.get());
    if (events_.NewWindow(written) || !byUser) return;
    g_app_info_launch_default_for_uri(url.c_str(), nullptr, nullptr);
}

// Frames whose documents fail report it by this alone.
void WebPage::OnResource(WebKitWebResource* resource, const std::string& url) {
    const auto found = std::find(frameUrls_.begin(), frameUrls_.end(), url);
    if (found == frameUrls_.end()) return;
    g_signal_connect_object(
        resource, "failed", G_CALLBACK(+[](WebKitWebResource* failed, GError* error, WebKitWebView* view) {
            const std::optional<std::uint32_t> code = NavigationErrorOf(error);
            void* const page = g_object_get_data(G_OBJECT(view), "page");
            if (!code || !page) return;
            auto& events = static_cast<WebPage*>(page)->events_;
            static_cast<void>(events.Failed("?", Text(webkit_web_resource_get_uri(failed)), *code));
        }),
        view_.get(), GConnectFlags{});
}

}  // namespace platform::html
