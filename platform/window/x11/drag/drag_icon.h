// The picture of what is dragged: a window of its own at the pointer, which nobody's search for a receiver
// finds.
#pragma once

#include <cstdint>
#include <memory>

#include <platform/types.h>
#include <xcb/xcb.h>

#include "platform/graphics/surface.h"
#include "platform/window/x11/connection.h"
#include "platform/window/x11/display_plan.h"
#include "platform/window/x11/drag/xdnd.h"

namespace platform::x11 {

class DragIcon {
  public:
    explicit DragIcon(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
    ~DragIcon() { Hide(); }
    DragIcon(const DragIcon&) = delete;
    DragIcon& operator=(const DragIcon&) = delete;

    // `hot` is the pixel that lies at `pointer`. Without a compositor a pixel is there or not.
    void Show(const XdndAtoms& atoms, const Surface& picture, POINT hot, POINT pointer, bool compositor);
    void Follow(POINT pointer);
    void Hide();

  private:
    // The picture on the server, as a window of that format shows it; 0 without memory. The caller's to free.
    xcb_pixmap_t Upload(const Surface& picture, const DisplayPlan& plan, std::uint8_t depth);

    std::shared_ptr<Connection> connection_;
    xcb_window_t window_ = 0;  // 0: not shown
    POINT hot_{0, 0};
};

}  // namespace platform::x11
