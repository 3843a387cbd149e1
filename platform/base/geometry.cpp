#include <platform/geometry.h>

#include <algorithm>

using platform::SaturatedDifference;
using platform::SaturatedSum;

CPoint CRect::CenterPoint() const {
    return CPoint(static_cast<LONG>((std::int64_t{left} + right) / 2),
                  static_cast<LONG>((std::int64_t{top} + bottom) / 2));
}

void CRect::MoveToX(int x) {
    right = SaturatedSum(x, Width());
    left = x;
}

void CRect::MoveToY(int y) {
    bottom = SaturatedSum(y, Height());
    top = y;
}

void CRect::InflateRect(int l, int t, int r, int b) {
    *this = CRect(SaturatedDifference(left, l), SaturatedDifference(top, t), SaturatedSum(right, r),
                  SaturatedSum(bottom, b));
}

// Not InflateRect of the opposites: the smallest LONG has none.
void CRect::DeflateRect(int l, int t, int r, int b) {
    *this = CRect(SaturatedSum(left, l), SaturatedSum(top, t), SaturatedDifference(right, r),
                  SaturatedDifference(bottom, b));
}

void CRect::NormalizeRect() {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
}

bool CRect::EqualRect(const RECT* rect) const {
    return rect && *this == *rect;
}

bool CRect::SubtractRect(const RECT* from, const RECT* what) {
    CRect rest(from);
    CRect common;
    if (common.IntersectRect(from, what)) {
        const bool wide = common.left == from->left && common.right == from->right;
        const bool high = common.top == from->top && common.bottom == from->bottom;
        if (wide && high)
            rest.SetRectEmpty();
        else if (wide && common.top == from->top)
            rest.top = common.bottom;
        else if (wide && common.bottom == from->bottom)
            rest.bottom = common.top;
        else if (high && common.left == from->left)
            rest.left = common.right;
        else if (high && common.right == from->right)
            rest.right = common.left;
    }
    *this = rest;
    return !IsRectEmpty();
}

CSize& CSize::operator+=(const SIZE& by) {
    cx = SaturatedSum(cx, by.cx);
    cy = SaturatedSum(cy, by.cy);
    return *this;
}

CSize& CSize::operator-=(const SIZE& by) {
    cx = SaturatedDifference(cx, by.cx);
    cy = SaturatedDifference(cy, by.cy);
    return *this;
}

CPoint& CPoint::operator+=(const SIZE& by) {
    Offset(by);
    return *this;
}

CPoint& CPoint::operator+=(const POINT& by) {
    Offset(by);
    return *this;
}

CPoint& CPoint::operator-=(const SIZE& by) {
    return *this -= POINT{by.cx, by.cy};
}

CPoint& CPoint::operator-=(const POINT& by) {
    x = SaturatedDifference(x, by.x);
    y = SaturatedDifference(y, by.y);
    return *this;
}

CRect& CRect::operator+=(const POINT& by) {
    OffsetRect(by);
    return *this;
}

CRect& CRect::operator-=(const POINT& by) {
    *this = CRect(SaturatedDifference(left, by.x), SaturatedDifference(top, by.y),
                  SaturatedDifference(right, by.x), SaturatedDifference(bottom, by.y));
    return *this;
}

CRect& CRect::operator&=(const RECT& other) {
    IntersectRect(*this, other);
    return *this;
}

CRect& CRect::operator|=(const RECT& other) {
    UnionRect(*this, other);
    return *this;
}
