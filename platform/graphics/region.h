// A set of pixels, as a value over cairo's regions.
#pragma once

#include <memory>
#include <vector>

#include <platform/geometry.h>

typedef struct _cairo_region cairo_region_t;

namespace platform {

// Coordinates are cut at +-2^29, where no surface reaches.
class Region {
  public:
    Region();                           // empty
    explicit Region(const RECT& rect);  // an empty rectangle gives the empty region
    explicit Region(const std::vector<RECT>& rects);
    static Region RoundRect(const RECT& rect, int ellipseWidth, int ellipseHeight);
    ~Region();
    Region(const Region& other);
    Region(Region&& other) noexcept;
    Region& operator=(const Region& other);
    Region& operator=(Region&& other) noexcept;

    bool IsEmpty() const;
    CRect Box() const;
    bool Contains(int x, int y) const;
    bool Intersects(const RECT& rect) const;
    bool Covers(const RECT& rect) const;  // holds every pixel of it
    int Count() const;                    // rectangles it is made of
    CRect Rect(int index) const;          // empty for an index outside
    // The index of the first rectangle that reaches below row y: where to start for what lies at y.
    int FirstBelow(int y) const;
    // Calls f(part) for every part of the region inside `rect`, top to bottom; costs nothing for the rest.
    template <class F>
    void ForEachIn(const RECT& rect, F f) const {
        const int count = Count();
        if (count == 0 || rect.right <= rect.left || rect.bottom <= rect.top) return;
        for (int i = count == 1 ? 0 : FirstBelow(rect.top); i < count; ++i) {
            const CRect band = Rect(i);
            if (band.top >= rect.bottom) return;
            CRect part;
            if (part.IntersectRect(band, rect)) f(part);
        }
    }

    void Add(const RECT& rect);
    void Add(const Region& other);
    void Subtract(const Region& other);
    void Intersect(const Region& other);
    void Intersect(const RECT& rect);
    void Xor(const Region& other);
    void Offset(int dx, int dy);
    friend bool operator==(const Region& a, const Region& b) { return a.Equal(b); }

    const cairo_region_t* Cairo() const { return region_; }

  private:
    bool Equal(const Region& other) const;
    cairo_region_t* region_;  // owned; never null
};

}  // namespace platform
