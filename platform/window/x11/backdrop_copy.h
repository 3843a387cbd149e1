// The pixels of the wallpaper, for windows that the server cannot blend with it.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/window/x11/connection.h"

namespace platform::x11 {

// Who draws the wallpaper leaves it in a pixmap that a property of the root names. It is read once, when it
// is first needed.
class BackdropCopy {
  public:
    explicit BackdropCopy(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

    // False when nobody left one that can be read.
    bool IsThere();
    // A row from (x, y) of the screen on, `count` pixels; a small picture repeats.
    void Row(int x, int y, std::uint32_t* pixels, std::size_t count) const;
    // Another one was left.
    void Forget();

  private:
    void Read();

    std::shared_ptr<Connection> connection_;
    bool read_ = false;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;  // empty: there is none
};

}  // namespace platform::x11
