/// @file
/// Points, sizes and rectangles with operations. All coordinates are pixels; arithmetic saturates at the
/// ends of a LONG instead of overflowing.
#pragma once

#include <algorithm>

#include <platform/saturate.h>
#include <platform/types.h>

class PLATFORM_API CSize : public SIZE {
  public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(const SIZE& size) : SIZE(size) {}  ///< NOLINT
    CSize& operator+=(const SIZE& by);
    CSize& operator-=(const SIZE& by);
};

class PLATFORM_API CPoint : public POINT {
  public:
    CPoint() : POINT{0, 0} {}
    CPoint(int px, int py) : POINT{px, py} {}
    CPoint(const POINT& point) : POINT(point) {}  ///< NOLINT
    /// The signed words of a message parameter.
    explicit CPoint(LPARAM packed) : POINT{GET_X_LPARAM(packed), GET_Y_LPARAM(packed)} {}
    void SetPoint(int px, int py) { *this = CPoint(px, py); }
    void Offset(int dx, int dy) {
        x = platform::SaturatedSum(x, dx);
        y = platform::SaturatedSum(y, dy);
    }
    void Offset(const POINT& by) { Offset(by.x, by.y); }
    void Offset(const SIZE& by) { Offset(by.cx, by.cy); }
    CPoint& operator+=(const SIZE& by);
    CPoint& operator-=(const SIZE& by);
    CPoint& operator+=(const POINT& by);
    CPoint& operator-=(const POINT& by);
};

/// A rectangle is empty when it has no pixel: `right <= left` or `bottom <= top`.
class PLATFORM_API CRect : public RECT {
  public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}                              ///< NOLINT
    CRect(const RECT* rect) : CRect(rect ? *rect : RECT{0, 0, 0, 0}) {}  ///< NOLINT
    CRect(const POINT& topLeft, const SIZE& size)
        : RECT{topLeft.x, topLeft.y, platform::SaturatedSum(topLeft.x, size.cx),
               platform::SaturatedSum(topLeft.y, size.cy)} {}
    CRect(const POINT& topLeft, const POINT& bottomRight)
        : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    int Width() const { return platform::SaturatedDifference(right, left); }
    int Height() const { return platform::SaturatedDifference(bottom, top); }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    CPoint CenterPoint() const;
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    /// Left and top edges are inside, right and bottom are not.
    bool PtInRect(const POINT& point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void SetRect(const POINT& topLeft, const POINT& bottomRight) { *this = CRect(topLeft, bottomRight); }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(const RECT* rect) { *this = CRect(rect); }
    bool EqualRect(const RECT* rect) const;
    void OffsetRect(int dx, int dy) {
        *this = CRect(platform::SaturatedSum(left, dx), platform::SaturatedSum(top, dy),
                      platform::SaturatedSum(right, dx), platform::SaturatedSum(bottom, dy));
    }
    void OffsetRect(const POINT& by) { OffsetRect(by.x, by.y); }
    void OffsetRect(const SIZE& by) { OffsetRect(by.cx, by.cy); }
    ///@{
    /// The size is kept.
    void MoveToX(int x);
    void MoveToY(int y);
    void MoveToXY(int x, int y) { *this = CRect(POINT{x, y}, Size()); }
    void MoveToXY(const POINT& to) { MoveToXY(to.x, to.y); }
    ///@}
    ///@{
    /// The edges go outwards (inwards): by one distance for each axis, or one for each edge.
    void InflateRect(int dx, int dy) { InflateRect(dx, dy, dx, dy); }
    void InflateRect(const SIZE& by) { InflateRect(by.cx, by.cy); }
    void InflateRect(const RECT* by) { InflateRect(by->left, by->top, by->right, by->bottom); }
    void InflateRect(int l, int t, int r, int b);
    ///@}
    void DeflateRect(int dx, int dy) { DeflateRect(dx, dy, dx, dy); }
    void DeflateRect(const SIZE& by) { DeflateRect(by.cx, by.cy); }
    void DeflateRect(const RECT* by) { DeflateRect(by->left, by->top, by->right, by->bottom); }
    void DeflateRect(int l, int t, int r, int b);
    void NormalizeRect();
    ///@{
    /// This becomes the common part of two rectangles (empty: all zero, result false), or the smallest one
    /// that holds both (an empty one counts for nothing).
    bool IntersectRect(const RECT& a, const RECT& b);
    bool IntersectRect(const RECT* a, const RECT* b) { return IntersectRect(*a, *b); }
    ///@}
    bool UnionRect(const RECT& a, const RECT& b);
    bool UnionRect(const RECT* a, const RECT* b) { return UnionRect(*a, *b); }
    /// The first without the second, where that is a rectangle: the second covers it from edge to edge on one
    /// axis. Else the first.
    bool SubtractRect(const RECT* from, const RECT* what);
    CRect& operator+=(const POINT& by);
    CRect& operator-=(const POINT& by);
    CRect& operator&=(const RECT& other);
    CRect& operator|=(const RECT& other);
    operator RECT*() { return this; }              ///< NOLINT
    operator const RECT*() const { return this; }  ///< NOLINT
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

inline bool CRect::IntersectRect(const RECT& a, const RECT& b) {
    const CRect common(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                       std::min(a.bottom, b.bottom));
    const bool meet = !CRect(a).IsRectEmpty() && !CRect(b).IsRectEmpty() && !common.IsRectEmpty();
    *this = meet ? common : CRect();
    return meet;
}

inline bool CRect::UnionRect(const RECT& a, const RECT& b) {
    const CRect first(a), second(b);
    if (first.IsRectEmpty())
        *this = second.IsRectEmpty() ? CRect() : second;
    else if (second.IsRectEmpty())
        *this = first;
    else
        *this = CRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                      std::max(a.bottom, b.bottom));
    return !IsRectEmpty();
}

inline CSize operator+(CSize a, const SIZE& b) {
    return a += b;
}
inline CSize operator-(CSize a, const SIZE& b) {
    return a -= b;
}
inline CPoint operator+(CPoint point, const SIZE& by) {
    return point += by;
}
inline CPoint operator-(CPoint point, const SIZE& by) {
    return point -= by;
}
inline CPoint operator+(CPoint point, const POINT& by) {
    return point += by;
}
inline CSize operator-(CPoint a, const POINT& b) {
    a -= b;
    return CSize(a.x, a.y);
}
inline CRect operator+(CRect rect, const POINT& by) {
    return rect += by;
}
inline CRect operator-(CRect rect, const POINT& by) {
    return rect -= by;
}
/// The common part, and the smallest rectangle around both.
inline CRect operator&(CRect a, const RECT& b) {
    return a &= b;
}
inline CRect operator|(CRect a, const RECT& b) {
    return a |= b;
}

/// The same for plain rectangles. FALSE for a null pointer, and where the result is empty.
PLATFORM_API BOOL SetRect(RECT* rect, int left, int top, int right, int bottom);
PLATFORM_API BOOL SetRectEmpty(RECT* rect);
PLATFORM_API BOOL CopyRect(RECT* to, const RECT* from);
PLATFORM_API BOOL IsRectEmpty(const RECT* rect);
PLATFORM_API BOOL EqualRect(const RECT* a, const RECT* b);
PLATFORM_API BOOL PtInRect(const RECT* rect, POINT point);
PLATFORM_API BOOL OffsetRect(RECT* rect, int dx, int dy);
PLATFORM_API BOOL InflateRect(RECT* rect, int dx, int dy);
PLATFORM_API BOOL IntersectRect(RECT* common, const RECT* a, const RECT* b);
PLATFORM_API BOOL UnionRect(RECT* both, const RECT* a, const RECT* b);
PLATFORM_API BOOL SubtractRect(RECT* rest, const RECT* from, const RECT* what);
