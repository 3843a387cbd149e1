// What is known of one top-level window and its counterpart on the server.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <platform/geometry.h>
#include <platform/types.h>
#include <xcb/xcb.h>

#include "platform/graphics/region.h"
#include "platform/window/window_system.h"
#include "platform/window/x11/display_plan.h"
#include "platform/window/x11/pixel_buffer.h"
#include "platform/window/x11/window_outline.h"

namespace platform::x11 {

// Where a window is, against what was asked of it.
struct Placement {
    CRect rect;                     // as the core has it: requested or reported last
    std::optional<CRect> reported;  // by the window manager, in screen coordinates, since the last look
    bool changed = false;           // the server reported a change since the last look
    std::uint64_t quietUntil = 0;   // it is being placed; other positions are not believed before
    bool requested = false;         // by a request of ours, so that reports may be older than it
};

// How pixels get from the core to the window.
struct Pixels {
    std::shared_ptr<Surface> surface;  // the core draws here
    std::shared_ptr<PixelBuffer> buffer;
    std::shared_ptr<PixelBuffer> converted;  // what is sent in its stead where the plan converts
    bool presented = false;                  // something of `surface` was
};

// A wish to map a window that the window manager must let go of first.
struct WaitingMap {
    bool activate = false;
    bool minimised = false;
};

// A wish to minimise a window that was sent to the window manager, which has not fulfilled it.
struct Minimising {
    std::uint64_t until = 0;  // then it is taken for refused
    bool byHint = false;      // sent by the window's hints alone
};

struct NativeWindow {
    HWND handle;
    xcb_window_t id = 0;  // 0 once somebody else has destroyed it
    xcb_gcontext_t context = 0;
    xcb_window_t keyTarget = 0;  // has the X focus for it, when it holds windows of other libraries
    bool alphaChannel = false;   // its pixels have alpha: it is of depth 32
    WindowTraits traits;
    Compositing compositing;
    DisplayPlan plan;
    Placement placement;
    Pixels pixels;
    WindowOutline outline;
    Region exposed;  // collected until the last Expose of a series
    CursorShape cursor = CursorShape::Arrow;

    bool mapRequested = false;  // the core wants it on the screen, minimised or not
    bool mapActivates = false;  // it asked for the focus when it was mapped
    bool mapped = false;        // the server says that it is
    bool taken = false;         // by a window manager, since it was mapped
    bool framed = false;        // a window manager has put it into a frame
    xcb_window_t frame = 0;     // that, when it shows nothing but the window
    bool frameSettles = false;  // it is looked for once more when the window is in its place
    bool maximised = false;     // as the window manager says
    bool hasState = false;      // a window manager keeps its state
    bool iconic = false;        // by that state: minimised, or on another workspace
    bool withdrawing = false;   // unmapped by us, and the window manager has not let go yet
    std::optional<WaitingMap> mapWhenWithdrawn;
    bool minimised = false;
    std::optional<Minimising> minimising;
    xcb_window_t host = 0;                // another program's window that it lies in, or is to
    CPoint hostOrigin;                    // of that on the screen
    std::optional<std::uint64_t> joinBy;  // it waits for the window manager to let go, before it goes there
    bool lowerWhenMapped = false;
    bool unmapsItself = false;  // minimised by us, for want of a window manager
    bool focusWhenMapped = false;
    bool focused = false;
    bool inside = false;  // the pointer

    bool IsManaged() const { return framed || hasState; }
};

}  // namespace platform::x11
