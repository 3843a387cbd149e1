// A POST, which the browser itself cannot be asked for: sent by a client of ours, and its answer shown.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <gio/gio.h>
#include <libsoup/soup.h>

#include "platform/html/page_host.h"
#include "platform/html/webkit/owned.h"

namespace platform::html {

struct PostAnswer {
    std::string url;  // after redirections
    std::uint32_t status = 0;
    std::string mimeType;
    std::string encoding;  // may be empty
    GBytes* body = nullptr;
};

// Lines that end in CR LF, each a name, a colon and a value.
void AddHeaders(SoupMessageHeaders* headers, std::string_view lines);

class Poster {
  public:
    // Exactly one of the two is given; the other is null.
    using Done = std::function<void(const PostAnswer*, const GError*)>;
    Poster() = default;
    ~Poster() { Cancel(); }
    Poster(const Poster&) = delete;
    Poster& operator=(const Poster&) = delete;

    // Takes the place of what is under way. False for an address that cannot be posted to.
    [[nodiscard]] bool Send(const PageRequest& request, Done done);
    // `done` is not called any more.
    void Cancel();

  private:
    Owned<SoupSession> session_;
    Owned<GCancellable> cancellable_;
};

}  // namespace platform::html
