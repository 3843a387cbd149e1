// What the core knows of one window.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <platform/window.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"
#include "platform/window/core/update_region.h"
#include "platform/window/window_system.h"

namespace platform {

struct WindowClass {
    std::u16string name;
    WNDPROC procedure = nullptr;
    HCURSOR cursor;
    bool letsPointerThrough = false;  // draws nothing either, so that nobody clips it out
};

// Layered state of a top-level.
struct Layering {
    bool hasAttributes = false;  // SetLayeredWindowAttributes was called
    bool fed = false;            // UpdateLayeredWindow was called, and no attributes since
    // What the last push came from, and the revision of the window's surface after it.
    std::weak_ptr<const Surface> fedFrom;
    POINT fedOrigin{0, 0};
    std::uint64_t fedRevision = 0;
    Compositing chosen;  // what the attributes or the last feed asked for
    Compositing sent;    // to the window system, last
};

struct Window {
    HWND handle;
    std::shared_ptr<const WindowClass> type;
    DWORD style = 0;  // WS_VISIBLE, WS_DISABLED, WS_MINIMIZE and WS_MAXIMIZE are the state itself
    DWORD exStyle = 0;
    CString title;
    UINT_PTR id = 0;
    LONG_PTR userData = 0;
    bool movesFiles = false;  // that are dropped on it, when it says so
    bool created = false;     // WM_CREATE was answered; geometry messages flow
    bool destroying = false;  // WM_DESTROY is on its way

    // A child has a parent; a top-level has an owner, or none.
    HWND parent;
    std::vector<HWND> children;  // bottom to top
    std::vector<HWND> owned;     // top-levels this one owns, oldest first
    HWND host;                   // of a top-level: another program's window that it lies in
    HWND lastFocus;              // of a top-level: it or its child that had the keyboard when it was active

    // Screen coordinates for a top-level, the parent's for a child. While minimised: the place to go back to.
    CRect rect;

    CRect normalRect;      // while maximised: the place to go back to
    SIZE leastSize{0, 0};  // what WM_GETMINMAXINFO last said
    SIZE mostSize{32767, 32767};

    UpdateRegion update;  // window coordinates
    bool eraseWanted = false;
    bool listedDirty = false;      // stands in the core's list of windows to paint
    std::uint64_t validation = 0;  // counts whatever takes from `update`

    std::shared_ptr<Surface> surface;  // of a top-level, made when first drawn on
    bool neverShown = true;            // nothing of `surface` was presented yet
    bool lacksPixels = false;          // was drawn on while no surface could be had
    Layering layering;
    std::optional<Region> shape;
    struct {
        HICON handle;
        std::shared_ptr<const Surface> picture;
    } icons[2];           // by ICON_SMALL and ICON_BIG
    WindowTraits traits;  // as sent to the window system
    CursorShape cursorSent = CursorShape::Arrow;
    unsigned systemSerial = 0;  // the window system that knows this window; 0 for a child

    bool IsChild() const { return (style & WS_CHILD) != 0; }
    bool IsShown() const { return (style & WS_VISIBLE) != 0; }
    bool IsMinimised() const { return (style & WS_MINIMIZE) != 0; }
    bool IsMaximised() const { return (style & WS_MAXIMIZE) != 0; }
    bool IsDecorated() const { return (style & WS_CAPTION) == WS_CAPTION; }
    bool IsDisabled() const { return (style & WS_DISABLED) != 0; }
    bool IsLayered() const { return (exStyle & WS_EX_LAYERED) != 0; }
    CRect Bounds() const { return CRect(0, 0, rect.Width(), rect.Height()); }
};

}  // namespace platform
