#include <platform/geometry.h>

#include <algorithm>

#include "platform/base/saturate.h"

using platform::SaturatedDifference;
using platform::SaturatedSum;

namespace {

bool IsEmpty(const RECT& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

}  // namespace

void CPoint::Offset(int dx, int dy) {
    x = SaturatedSum(x, dx);
    y = SaturatedSum(y, dy);
}

CRect::CRect(const POINT& topLeft, const SIZE& size)
    : RECT{topLeft.x, topLeft.y, SaturatedSum(topLeft.x, size.cx), SaturatedSum(topLeft.y, size.cy)} {}

int CRect::Width() const {
    return SaturatedDifference(right, left);
}

int CRect::Height() const {
    return SaturatedDifference(bottom, top);
}

CPoint CRect::CenterPoint() const {
    return CPoint(static_cast<LONG>((std::int64_t{left} + right) / 2),
                  static_cast<LONG>((std::int64_t{top} + bottom) / 2));
}

void CRect::OffsetRect(int dx, int dy) {
    *this = CRect(SaturatedSum(left, dx), SaturatedSum(top, dy), SaturatedSum(right, dx),
                  SaturatedSum(bottom, dy));
}

void CRect::InflateRect(int dx, int dy) {
    *this = CRect(SaturatedDifference(left, dx), SaturatedDifference(top, dy), SaturatedSum(right, dx),
                  SaturatedSum(bottom, dy));
}

// Not InflateRect(-dx, -dy): the smallest LONG has no negative.
void CRect::DeflateRect(int dx, int dy) {
    *this = CRect(SaturatedSum(left, dx), SaturatedSum(top, dy), SaturatedDifference(right, dx),
                  SaturatedDifference(bottom, dy));
}

void CRect::NormalizeRect() {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
}

bool CRect::IntersectRect(const RECT& a, const RECT& b) {
    CRect common(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                 std::min(a.bottom, b.bottom));
    if (IsEmpty(a) || IsEmpty(b) || common.IsRectEmpty()) common.SetRectEmpty();
    *this = common;
    return !IsRectEmpty();
}

bool CRect::UnionRect(const RECT& a, const RECT& b) {
    CRect both;
    if (IsEmpty(a)) {
        if (!IsEmpty(b)) both = b;
    } else if (IsEmpty(b)) {
        both = a;
    } else {
        both = CRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                     std::max(a.bottom, b.bottom));
    }
    *this = both;
    return !IsRectEmpty();
}
