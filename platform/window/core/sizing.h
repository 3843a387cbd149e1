// The border by which a window is sized, as geometry.
#pragma once

#include <platform/window.h>

#include "platform/window/window_system.h"

namespace platform {

constexpr int kSizingBorder = 6;  // pixels, inside the window

constexpr bool IsSizingHit(int hit) {
    return hit >= HTLEFT && hit <= HTBOTTOMRIGHT;
}
// The sizing code of a point in a window of a size; HTCLIENT behind the border. Corners reach along both
// edges.
int SizingHit(CSize size, POINT client);
// The cursor over a sizing code.
CursorShape SizingCursor(int hit);
// A window that is dragged by a sizing code: the edges that it names follow, within sizes that it may have.
CRect Sized(const CRect& start, int hit, CSize by, SIZE least, SIZE most);

}  // namespace platform
