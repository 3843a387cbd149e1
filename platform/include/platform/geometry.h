// Points, sizes and rectangles with operations. All coordinates are pixels; arithmetic saturates at the
// ends of a LONG instead of overflowing.
#pragma once

#include <platform/types.h>

class PLATFORM_API CSize : public SIZE {
  public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(const SIZE& size) : SIZE(size) {}  // NOLINT
};

class PLATFORM_API CPoint : public POINT {
  public:
    CPoint() : POINT{0, 0} {}
    CPoint(int px, int py) : POINT{px, py} {}
    CPoint(const POINT& point) : POINT(point) {}  // NOLINT
    void Offset(int dx, int dy);
};

// A rectangle is empty when it has no pixel: right <= left or bottom <= top.
class PLATFORM_API CRect : public RECT {
  public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}  // NOLINT
    CRect(const POINT& topLeft, const SIZE& size);

    int Width() const;
    int Height() const;
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    CPoint CenterPoint() const;
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    // Left and top edges are inside, right and bottom are not.
    bool PtInRect(const POINT& point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void SetRectEmpty() { *this = CRect(); }
    void OffsetRect(int dx, int dy);
    void InflateRect(int dx, int dy);
    void DeflateRect(int dx, int dy);
    void NormalizeRect();
    // This becomes the common part of two rectangles (empty: all zero, result false), or the smallest one
    // that holds both (an empty one counts for nothing).
    bool IntersectRect(const RECT& a, const RECT& b);
    bool UnionRect(const RECT& a, const RECT& b);
    operator RECT*() { return this; }              // NOLINT
    operator const RECT*() const { return this; }  // NOLINT
};

inline bool operator==(const SIZE& a, const SIZE& b) {
    return a.cx == b.cx && a.cy == b.cy;
}
inline bool operator==(const POINT& a, const POINT& b) {
    return a.x == b.x && a.y == b.y;
}
inline bool operator==(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
