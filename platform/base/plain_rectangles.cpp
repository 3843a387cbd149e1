// Rectangles without an object: by pointer.
#include <platform/geometry.h>

namespace {

// Runs `change` on a rectangle as an object.
template <class Change>
BOOL Changed(RECT* rect, Change change) {
    if (!rect) return FALSE;
    CRect changed(*rect);
    change(changed);
    *rect = changed;
    return TRUE;
}

// Sets a rectangle to what a function of two others makes of it, and says whether that has any pixel.
BOOL Combined(RECT* result, const RECT* a, const RECT* b, bool (CRect::*combine)(const RECT*, const RECT*)) {
    if (!result || !a || !b) return FALSE;
    CRect combined;
    const bool any = (combined.*combine)(a, b);
    *result = combined;
    return any;
}

}  // namespace

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom) {
    return Changed(rect, [&](CRect& changed) { changed.SetRect(left, top, right, bottom); });
}

BOOL SetRectEmpty(RECT* rect) {
    return Changed(rect, [](CRect& changed) { changed.SetRectEmpty(); });
}

BOOL CopyRect(RECT* to, const RECT* from) {
    return from && Changed(to, [&](CRect& changed) { changed = *from; });
}

BOOL IsRectEmpty(const RECT* rect) {
    return !rect || CRect(*rect).IsRectEmpty();
}

BOOL EqualRect(const RECT* a, const RECT* b) {
    return a && b && *a == *b;
}

BOOL PtInRect(const RECT* rect, POINT point) {
    return rect && CRect(*rect).PtInRect(point);
}

BOOL OffsetRect(RECT* rect, int dx, int dy) {
    return Changed(rect, [&](CRect& changed) { changed.OffsetRect(dx, dy); });
}

BOOL InflateRect(RECT* rect, int dx, int dy) {
    return Changed(rect, [&](CRect& changed) { changed.InflateRect(dx, dy); });
}

BOOL IntersectRect(RECT* common, const RECT* a, const RECT* b) {
    return Combined(common, a, b, &CRect::IntersectRect);
}

BOOL UnionRect(RECT* both, const RECT* a, const RECT* b) {
    return Combined(both, a, b, &CRect::UnionRect);
}

BOOL SubtractRect(RECT* rest, const RECT* from, const RECT* what) {
    return Combined(rest, from, what, &CRect::SubtractRect);
}
