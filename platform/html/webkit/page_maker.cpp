// The browser's start, and the plugin's entry.
#include <X11/Xlib.h>
#include <gtk/gtkx.h>
#include <webkit2/webkit2.h>

#include <memory>

#include "platform/html/page_host.h"
#include "platform/html/webkit/owned.h"
#include "platform/html/webkit/web_page.h"

namespace platform::html {

namespace {

// The environment chooses among display servers that our windows are not on.
class WithoutBackendChoice {
  public:
    WithoutBackendChoice() : choice_(g_strdup(g_getenv(kName))) { g_unsetenv(kName); }
    ~WithoutBackendChoice() {
        if (choice_) g_setenv(kName, choice_.get(), TRUE);
    }
    WithoutBackendChoice(const WithoutBackendChoice&) = delete;
    WithoutBackendChoice& operator=(const WithoutBackendChoice&) = delete;

  private:
    static constexpr const char* kName = "GDK_BACKEND";
    OwnedText choice_;
};

// The toolkit's connection to the display server. When it breaks, the toolkit would end the process: it is
// kept from that, and no page can be made any more.
class ToolkitDisplay {
  public:
    static bool IsLost() { return lost_; }
    // Before and after the toolkit has set its own handler.
    static void Remember() {
        others_ = XSetIOErrorHandler(nullptr);
        XSetIOErrorHandler(others_);
    }
    static void Guard(Display* display) {
        display_ = display;
        XSetIOErrorHandler(OnError);
        XSetIOErrorExitHandler(
            display, [](Display*, void*) {}, nullptr);
    }

  private:
    static int OnError(Display* display) {
        if (display != display_) return others_ ? others_(display) : 0;
        lost_ = true;
        return 0;
    }
    static inline Display* display_ = nullptr;
    static inline XIOErrorHandler others_ = nullptr;
    static inline bool lost_ = false;
};

bool StartToolkit() {
    const WithoutBackendChoice any;
    ToolkitDisplay::Remember();
    gdk_set_allowed_backends("x11");
    gtk_disable_setlocale();  // the host's locale is the host's
    if (!gtk_init_check(nullptr, nullptr)) return false;
    // For good: a window that vanishes under a page, with the top-level around it, must not end the process.
    GdkDisplay* const display = gdk_display_get_default();
    gdk_x11_display_error_trap_push(display);
    ToolkitDisplay::Guard(gdk_x11_display_get_xdisplay(display));
    return true;
}

void AnswerResource(WebKitURISchemeRequest* request, gpointer data) noexcept {
    auto* const sources = static_cast<PageSources*>(data);
    const char* const url = webkit_uri_scheme_request_get_uri(request);
    const std::optional<ResourceAnswer> answer = sources->FindResource(Text(url));
    if (!answer) {
        GError* const error =
            g_error_new(G_IO_ERROR, G_IO_ERROR_NOT_FOUND, "There is no resource %s", Text(url).c_str());
        webkit_uri_scheme_request_finish_error(request, error);
        g_error_free(error);
        return;
    }
    const auto size = static_cast<gssize>(answer->bytes.size());
    GBytes* const bytes = g_bytes_new(answer->bytes.data(), answer->bytes.size());
    const Owned<GInputStream> stream(g_memory_input_stream_new_from_bytes(bytes));
    webkit_uri_scheme_request_finish(request, stream.get(), size, answer->mimeType.c_str());
    g_bytes_unref(bytes);
}

class WebPageMaker final : public PageMaker {
  public:
    explicit WebPageMaker(PageSources* sources)
        // What pages store lives as long as the process.
        : context_(webkit_web_context_new_ephemeral()) {
        webkit_web_context_register_uri_scheme(context_, "res", AnswerResource, sources, nullptr);
    }
    std::unique_ptr<PageHost> MakePage(std::uint64_t socket, int scale, PageEvents& events,
                                       std::uint64_t* window) override {
        if (ToolkitDisplay::IsLost()) return nullptr;
        auto page = std::make_unique<WebPage>(context_, socket, scale, events);
        *window = page->Window();
        return *window != 0 ? std::move(page) : nullptr;
    }

  private:
    WebKitWebContext* context_;  // as long as the process
};

}  // namespace

}  // namespace platform::html

extern "C" __attribute__((visibility("default"))) platform::html::PageMaker* OpenPageMaker(
    platform::html::PageSources* sources) {
    if (!platform::html::StartToolkit()) return nullptr;
    static auto* const maker = new platform::html::WebPageMaker(sources);
    return maker;
}
