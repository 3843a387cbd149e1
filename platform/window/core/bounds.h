// The rectangles of windows, and the messages that tell of them.
#pragma once

#include <memory>

#include "platform/window/core/window_record.h"

namespace platform {

constexpr int kLongestSide = 32767;

enum class Redraw { No, Yes };

// Gives a window a new rectangle (screen coordinates, or the parent's) and tells the window system, but not
// yet the window: the caller sends the news with SendBoundsMessages when its own work is done.
struct BoundsChange {
    bool moved = false;
    bool sized = false;
};
BoundsChange ChangeBounds(Window& window, const CRect& rect, Redraw redraw);
void SendBoundsMessages(const std::shared_ptr<Window>& window, BoundsChange change);

// The outside moved or sized a top-level.
void AcceptBounds(const std::shared_ptr<Window>& window, const CRect& rect);

inline LPARAM SizeParam(const Window& window) {
    return MAKELPARAM(window.rect.Width(), window.rect.Height());
}

}  // namespace platform
