#include "platform/window/core/sizing.h"

#include <algorithm>

namespace platform {

namespace {

constexpr int kCorner = 2 * kSizingBorder;

// -1 at the near end, 1 at the far one, 0 between, for ends of a length.
int EndOf(int position, int length, int end) {
    if (position < end) return -1;
    return position >= length - end ? 1 : 0;
}

// The edges that a code moves: -1 left or top, 1 right or bottom, 0 none.
struct Edges {
    int x, y;
};
Edges EdgesOf(int hit) {
    switch (hit) {
        case HTLEFT:
            return {-1, 0};
        case HTRIGHT:
            return {1, 0};
        case HTTOP:
            return {0, -1};
        case HTTOPLEFT:
            return {-1, -1};
        case HTTOPRIGHT:
            return {1, -1};
        case HTBOTTOM:
            return {0, 1};
        case HTBOTTOMLEFT:
            return {-1, 1};
        case HTBOTTOMRIGHT:
            return {1, 1};
        default:
            return {0, 0};
    }
}

// One axis of Sized: the edge that moves keeps its distance from the other within the lengths allowed.
void MoveEdge(int edge, int by, int least, int most, LONG& near, LONG& far) {
    const int length = far - near;
    if (edge < 0)
        near = far - std::clamp(length - by, least, most);
    else if (edge > 0)
        far = near + std::clamp(length + by, least, most);
}

}  // namespace

int SizingHit(CSize size, POINT client) {
    int x = EndOf(client.x, size.cx, kSizingBorder);
    int y = EndOf(client.y, size.cy, kSizingBorder);
    if (x != 0 && y == 0) y = EndOf(client.y, size.cy, kCorner);
    if (y != 0 && x == 0) x = EndOf(client.x, size.cx, kCorner);
    for (int hit = HTLEFT; hit <= HTBOTTOMRIGHT; ++hit)
        if (const Edges edges = EdgesOf(hit); edges.x == x && edges.y == y) return hit;
    return HTCLIENT;
}

CursorShape SizingCursor(int hit) {
    const Edges edges = EdgesOf(hit);
    if (edges.y == 0) return CursorShape::SizeWE;
    if (edges.x == 0) return CursorShape::SizeNS;
    return edges.x == edges.y ? CursorShape::SizeNWSE : CursorShape::SizeNESW;
}

CRect Sized(const CRect& start, int hit, CSize by, SIZE least, SIZE most) {
    const Edges edges = EdgesOf(hit);
    CRect rect = start;
    MoveEdge(edges.x, by.cx, least.cx, most.cx, rect.left, rect.right);
    MoveEdge(edges.y, by.cy, least.cy, most.cy, rect.top, rect.bottom);
    return rect;
}

}  // namespace platform
