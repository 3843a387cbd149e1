// The seam between an HTML view and a browser: what is asked of a page, and what it reports. A browser is a
// plugin that shares nothing with the library but this header, so only the language and the standard library
// are spoken here; texts are UTF-8. All calls, both ways, come on the thread of the view's window.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::html {

// Where a frame stands in its page: empty for the page itself, "1" for its second frame, "1.0" for the first
// frame in that, "?" for a frame that nobody can tell yet.
using FramePath = std::string;

struct PageRequest {
    std::string url;
    std::string target;                                // the name of a frame; empty: where it comes from
    std::string headers;                               // lines that end in CR LF
    std::optional<std::vector<std::byte>> postedData;  // set: a POST
};

// What a page reports. A page may be destroyed from inside any of these.
class PageEvents {
  public:
    // A frame is about to go somewhere. False keeps it where it is.
    [[nodiscard]] virtual bool BeforeNavigate(const FramePath& frame, const PageRequest& request) = 0;
    // The page wants a window for an address. True when the page itself has nothing more to do about it.
    [[nodiscard]] virtual bool NewWindow(const std::string& url) = 0;
    // The frame shows another document from now on, and is done with loading it. What commits completes.
    virtual void Committed(const FramePath& frame, const std::string& url) = 0;
    virtual void Completed(const FramePath& frame, const std::string& url) = 0;
    // `code` as in <platform/html.h>. True: the page shows what went wrong, which commits and completes.
    [[nodiscard]] virtual bool Failed(const FramePath& frame, const std::string& url, std::uint32_t code) = 0;
    virtual void TitleChanged(const std::string& title) = 0;
    virtual void StatusChanged(const std::string& text) = 0;

  protected:
    ~PageEvents() = default;
};

class PageHost {
  public:
    virtual ~PageHost() = default;
    // Each is carried out later, with events.
    virtual void Navigate(const PageRequest& request) = 0;
    virtual bool GoBack() = 0;  // false where there is nothing to go to
    virtual bool GoForward() = 0;
    virtual void Reload() = 0;
    virtual void Stop() = 0;
    virtual void SetFocus(bool focused) = 0;
    virtual void HideScrollBars(bool hidden) = 0;
    [[nodiscard]] virtual std::string Title() const = 0;
    [[nodiscard]] virtual std::string Url() const = 0;
    // A kind of document, such as "text/html"; empty before the first.
    [[nodiscard]] virtual std::string DocumentType() const = 0;
    // What stands where the page would, when this is no browser; else empty.
    [[nodiscard]] virtual std::string Note() const { return {}; }
};

// The answer to a page that asks for a res: address.
struct ResourceAnswer {
    std::vector<std::byte> bytes;
    std::string mimeType;
};

// What a browser needs of the library.
class PageSources {
  public:
    // Empty: there is no such resource.
    [[nodiscard]] virtual std::optional<ResourceAnswer> FindResource(const std::string& url) = 0;

  protected:
    ~PageSources() = default;
};

// A browser.
class PageMaker {
  public:
    virtual ~PageMaker() = default;
    // A page in a window of another library's window system. Null when the browser cannot start there.
    // `window` receives the page's own window, for the socket's owner to place. A unit of the page is `scale`
    // pixels.
    [[nodiscard]] virtual std::unique_ptr<PageHost> MakePage(std::uint64_t socket, int scale,
                                                             PageEvents& events, std::uint64_t* window) = 0;
};

// What a plugin exports, under this name. It lives as long as the process.
using OpenBrowserFunction = PageMaker* (*)(PageSources* sources);
inline constexpr const char* kOpenBrowserName = "OpenPageMaker";

}  // namespace platform::html
