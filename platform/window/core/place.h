// Rectangles, showing, minimising.
#pragma once

#include "platform/window/core/core.h"

namespace platform {

constexpr int kLongestSide = 32767;

enum class Redraw { No, Yes };

// Gives a window a new rectangle (screen coordinates, or the parent's) and tells the window system, but not
// yet the window: the caller sends the news with SendPlaceMessages when its own work is done.
struct PlaceChange {
    bool moved = false;
    bool sized = false;
};
PlaceChange ChangeRect(Window& window, const CRect& rect, Redraw redraw);
void SendPlaceMessages(const std::shared_ptr<Window>& window, PlaceChange change);

// The outside moved or sized a top-level.
void AcceptPlace(const std::shared_ptr<Window>& window, const CRect& rect);
// The window is minimised or back; tells it and the core's other parts, not the window system.
void AcceptMinimised(const std::shared_ptr<Window>& window, bool minimised);

enum class Activate { No, Yes };
// WM_SHOWWINDOW and all that follows; nothing when the window is in that state already.
void SetShown(const std::shared_ptr<Window>& window, bool shown, Activate activate);

}  // namespace platform
