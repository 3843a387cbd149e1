// Text that programs hand to each other by copying and pasting, as a window system offers it.
#pragma once

#include <optional>
#include <string>

namespace platform {

class TextClipboard {
  public:
    // From now on this is what is pasted; nothing takes it away again, without having something else there.
    // False when the window system refuses.
    [[nodiscard]] virtual bool Put(std::optional<std::string> utf8) = 0;
    // What would be pasted; nothing without text, and where its owner does not answer within a second.
    virtual std::optional<std::string> Get() = 0;

  protected:
    ~TextClipboard() = default;
};

}  // namespace platform
