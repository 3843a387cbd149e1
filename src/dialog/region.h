// A region that belongs to the scope or object that holds it.
#pragma once

#include <platform/gdi.h>
#include <platform/geometry.h>

namespace qkui {

class Region {
  public:
    Region() : handle_(CreateRectRgn(0, 0, 0, 0)) {}
    ~Region() { DeleteObject(handle_); }
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;

    operator HRGN() const { return handle_; }

    void Set(const CRect& rect) const { SetRectRgn(handle_, rect.left, rect.top, rect.right, rect.bottom); }
    void Copy(HRGN other) const { CombineRgn(handle_, other, HRGN(), RGN_COPY); }
    CRect Box() const {
        CRect box;
        GetRgnBox(handle_, box);
        return box;
    }
    bool Meets(const CRect& rect) const { return !rect.IsRectEmpty() && RectInRegion(handle_, rect); }
    template <class Visit>
    void ForEachRect(Visit visit) const {
        for (int i = 0; i < GetRgnRectCount(handle_); ++i) {
            CRect rect;
            GetRgnRect(handle_, i, rect);
            visit(rect);
        }
    }

  private:
    HRGN handle_;
};

}  // namespace qkui
