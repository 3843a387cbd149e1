// The cursors of the user's theme.
#pragma once

#include <array>
#include <memory>

#include <xcb/xcb.h>
#include <xcb/xcb_cursor.h>

#include "platform/window/window_system.h"
#include "platform/window/x11/connection.h"

namespace platform::x11 {

class Cursors {
  public:
    explicit Cursors(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
    ~Cursors();
    Cursors(const Cursors&) = delete;
    Cursors& operator=(const Cursors&) = delete;
    // Loaded when first asked for; 0, the parent's cursor, when the theme has none of its names.
    xcb_cursor_t Get(CursorShape shape);

  private:
    xcb_cursor_t Load(CursorShape shape);
    xcb_cursor_t MakeInvisible();

    std::shared_ptr<Connection> connection_;
    xcb_cursor_context_t* theme_ = nullptr;
    static constexpr auto kShapes = static_cast<std::size_t>(CursorShape::Count);
    std::array<xcb_cursor_t, kShapes> loaded_{};
    std::array<bool, kShapes> tried_{};
};

}  // namespace platform::x11
