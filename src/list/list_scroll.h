// What a list keeps that scrolls: where its content is, seen from the rectangle that shows a part of it.
#pragma once

#include <platform/geometry.h>

class QKVScrollBar;

namespace qkui {

// The list's rectangle is its view. The content lies where its entries are: scrolling moves them all.
struct ListScroll {
    bool on = false;
    CPoint content;               // its top left corner, in client pixels
    QKVScrollBar* bar = nullptr;  // the host's: touched only while it is registered with the list's dialog
    int wheel = 0;                // what turns of the wheel left over, in pixels times WHEEL_DELTA
    bool hasBand = false;         // a rubber band began in the view,
    CPoint carried;               // and the content has been moved by this much since
};

}  // namespace qkui
