// What only a page itself can tell: which of its frames has loaded, how a link is written, and its title as
// soon as it has loaded. A script in a
// world of its own, which pages cannot reach, sends it.
#pragma once

#include <functional>
#include <string>

#include <webkit2/webkit2.h>

namespace platform::html {

struct FrameNews {
    enum class Kind { Committed, Loaded, Titled, Clicked };
    Kind kind;
    std::string frame;  // see FramePath
    std::string text;   // the address; of a link: as it is written; the title of the page that has loaded
};

// Adds the script to the pages of a manager. News that nobody can understand are dropped. `received` lives
// until the manager ends; it is called through `connection`, a handler of the manager's signals.
[[nodiscard]] gulong WatchFrames(WebKitUserContentManager* manager,
                                 std::function<void(const FrameNews&)> received);

}  // namespace platform::html
