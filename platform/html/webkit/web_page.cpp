#include "platform/html/webkit/web_page.h"

#include <algorithm>
#include <array>
#include <utility>

#include <gtk/gtkx.h>

#include <platform/html.h>

#include "platform/html/webkit/error_page.h"
#include "platform/html/webkit/navigation_error.h"

namespace platform::html {

namespace {

constexpr const char* kNoScrollBars =
    "html,body{scrollbar-width:none!important}::-webkit-scrollbar{display:none!important}";

std::string SchemeOf(const std::string& url) {
    const char* const scheme = g_uri_peek_scheme(url.c_str());  // in lower case
    return Text(scheme);
}

// As a user writes it: a path, or a server without "http://".
std::string Completed(const std::string& url) {
    if (!SchemeOf(url).empty()) return url;
    return url.starts_with('/') ? "file://" + url : "http://" + url;
}

bool IsItself(const std::string& target) {
    return target.empty() || target == "_self" || target == "_top" || target == "_parent";
}

WebKitSettings* Settings() {
    WebKitSettings* const settings = webkit_settings_new();
    // Drawn by the processor: faster and smaller for what dialogs show, and sure to work on every display.
    webkit_settings_set_hardware_acceleration_policy(settings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    return settings;
}

}  // namespace

bool CanOpen(const std::string& url) {
    static constexpr std::array kSchemes{"http",  "https", "file", "res",
                                         "about", "data",  "blob", "javascript"};
    const std::string scheme = SchemeOf(url);
    return std::any_of(kSchemes.begin(), kSchemes.end(), [&](const char* one) { return scheme == one; });
}

WebPage::WebPage(WebKitWebContext* context, std::uint64_t socket, int scale, PageEvents& events)
    : events_(events) {
    const Owned<WebKitUserContentManager> manager(webkit_user_content_manager_new());
    const Owned<WebKitSettings> settings(Settings());
    manager_ = manager.get();
    view_.reset(WEBKIT_WEB_VIEW(
        g_object_ref_sink(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context, "settings",
                                       settings.get(), "user-content-manager", manager.get(), nullptr))));
    plug_ = gtk_plug_new(static_cast<::Window>(socket));
    // The browser enlarges pages by the screen's density on its own account, to fractions as well.
    constexpr double kUsualDpi = 96;
    const double dpi = gdk_screen_get_resolution(gtk_widget_get_screen(plug_));
    if (scale > 1)
        webkit_web_view_set_zoom_level(view_.get(), scale * kUsualDpi / (dpi > 0 ? dpi : kUsualDpi));
    g_signal_connect(plug_, "destroy", G_CALLBACK(gtk_widget_destroyed), &plug_);
    gtk_container_add(GTK_CONTAINER(plug_), GTK_WIDGET(view_.get()));
    g_object_set_data(G_OBJECT(view_.get()), "page", this);
    Connect();
    gtk_widget_realize(plug_);
    gtk_widget_show_all(plug_);
    // The socket's owner speaks to the window over a connection of its own.
    gdk_display_sync(gtk_widget_get_display(plug_));
}

WebPage::~WebPage() {
    if (later_ != 0) g_source_remove(later_);
    poster_.Cancel();
    g_signal_handlers_disconnect_matched(view_.get(), G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, this);
    g_object_set_data(G_OBJECT(view_.get()), "page", nullptr);
    g_signal_handler_disconnect(manager_, newsHandler_);
    // A page in an endless loop would not hear that it is closed.
    webkit_web_view_terminate_web_process(view_.get());
    if (!plug_) return;
    g_signal_handlers_disconnect_by_data(plug_, &plug_);
    gtk_widget_destroy(plug_);
}

std::uint64_t WebPage::Window() const {
    return plug_ ? gtk_plug_get_id(GTK_PLUG(plug_)) : 0;
}

// ---- navigation

void WebPage::Navigate(const PageRequest& request) {
    PageRequest asked = request;
    asked.url = Completed(request.url);
    poster_.Cancel();
    if (!IsItself(asked.target))
        NavigateNamed(asked);
    else if (asked.postedData || !CanOpen(asked.url))
        BeginLater(asked);
    else {
        const Owned<WebKitURIRequest> load(webkit_uri_request_new(asked.url.c_str()));
        if (SoupMessageHeaders* const headers = webkit_uri_request_get_http_headers(load.get()))
            AddHeaders(headers, asked.headers);
        own_ = Text(webkit_uri_request_get_uri(load.get()));
        webkit_web_view_load_request(view_.get(), load.get());
    }
}

// Into a frame by its name, which only the page can find.
void WebPage::NavigateNamed(const PageRequest& request) {
    if (request.target == "_blank") {
        OnCreate(request.url, true);
        return;
    }
    const Owned<JSCContext> quoting(jsc_context_new());
    const auto quoted = [&](const std::string& text) {
        const Owned<JSCValue> value(jsc_value_new_string(quoting.get(), text.c_str()));
        const OwnedText json(jsc_value_to_json(value.get(), 0));
        return Text(json.get());
    };
    const std::string script = "window.open(" + quoted(request.url) + "," + quoted(request.target) + ");";
    webkit_web_view_evaluate_javascript(view_.get(), script.c_str(), -1, nullptr, nullptr, nullptr, nullptr,
                                        nullptr);
}

// With events from the loop, as every other navigation.
void WebPage::BeginLater(const PageRequest& request) {
    waiting_ = request;
    if (later_ != 0) return;
    later_ = g_idle_add(
        [](gpointer data) noexcept -> gboolean {
            auto* const page = static_cast<WebPage*>(data);
            page->later_ = 0;
            page->Begin(std::exchange(page->waiting_, {}));
            return G_SOURCE_REMOVE;
        },
        this);
}

void WebPage::Begin(const PageRequest& request) {
    const Life life = life_;
    if (!events_.BeforeNavigate("", request) || life.expired()) return;
    if (!CanOpen(request.url))
        Fail(request.url, INET_E_UNKNOWN_PROTOCOL);
    else
        Post(request);
}

void WebPage::Post(const PageRequest& request) {
    const std::string url = request.url;
    const bool sent = poster_.Send(request, [this, url](const PostAnswer* answer, const GError* error) {
        const Life life = life_;
        if (!answer) {
            const std::optional<std::uint32_t> code = NavigationErrorOf(error);
            if (code) Fail(url, *code);
            return;
        }
        if (answer->status >= 400 && (!events_.Failed("", answer->url, answer->status) || life.expired()))
            return;
        exempt_ = true;
        webkit_web_view_load_bytes(view_.get(), answer->body, answer->mimeType.c_str(),
                                   answer->encoding.empty() ? nullptr : answer->encoding.c_str(),
                                   answer->url.c_str());
    });
    if (!sent) Fail(url, INET_E_INVALID_URL);
}

void WebPage::Fail(const std::string& url, std::uint32_t code) {
    const Life life = life_;
    if (!events_.Failed("", url, code) || life.expired()) return;
    mainUrl_ = url;
    webkit_web_view_load_alternate_html(view_.get(), ErrorPage(url, code).c_str(), url.c_str(), nullptr);
}

bool WebPage::GoBack() {
    if (!webkit_web_view_can_go_back(view_.get())) return false;
    webkit_web_view_go_back(view_.get());
    return true;
}

bool WebPage::GoForward() {
    if (!webkit_web_view_can_go_forward(view_.get())) return false;
    webkit_web_view_go_forward(view_.get());
    return true;
}

void WebPage::Reload() {
    webkit_web_view_reload(view_.get());
}

void WebPage::Stop() {
    if (later_ != 0) g_source_remove(std::exchange(later_, 0));
    poster_.Cancel();
    webkit_web_view_stop_loading(view_.get());
}

// ---- looks

void WebPage::SetFocus(bool focused) {
    if (focused) gtk_widget_grab_focus(GTK_WIDGET(view_.get()));
}

void WebPage::HideScrollBars(bool hidden) {
    if (std::exchange(hidesScrollBars_, hidden) == hidden) return;
    webkit_user_content_manager_remove_all_style_sheets(manager_);
    if (!hidden) return;
    WebKitUserStyleSheet* const sheet = webkit_user_style_sheet_new(
        kNoScrollBars, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(manager_, sheet);
    webkit_user_style_sheet_unref(sheet);
}

std::string WebPage::Title() const {
    return title_;
}

std::string WebPage::Url() const {
    return Text(webkit_web_view_get_uri(view_.get()));
}

std::string WebPage::DocumentType() const {
    return type_;
}

}  // namespace platform::html
