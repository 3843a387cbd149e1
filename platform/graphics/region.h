// A set of pixels, as a value over cairo's regions.
#pragma once

#include <memory>
#include <vector>

#include <platform/geometry.h>

typedef struct _cairo_region cairo_region_t;

namespace platform {

// Coordinates are cut at +-2^29, where no surface reaches. A region for which memory ran out is emptied, and
// not intact any more; nor is one that is made of it.
class Region {
  public:
    // The highest corner of a round rectangle: that of the highest window.
    static constexpr int kMostCornerRows = 32767;

    Region();                           // empty
    explicit Region(const RECT& rect);  // an empty rectangle gives the empty region
    explicit Region(const std::vector<RECT>& rects);
    // Each row of a corner is a rectangle of the region: not intact above kMostCornerRows.
    static Region RoundRect(const RECT& rect, int ellipseWidth, int ellipseHeight);
    ~Region();
    Region(const Region& other);
    Region(Region&& other) noexcept;
    Region& operator=(const Region& other);
    Region& operator=(Region&& other) noexcept;

    bool IsIntact() const { return intact_; }
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
    // With every coordinate times `factor`; and back: the units of `scale` pixels that it touches.
    Region Scaled(int factor) const;
    Region Units(int scale) const;
    friend bool operator==(const Region& a, const Region& b) { return a.Equal(b); }

    const cairo_region_t* Cairo() const { return region_; }

  private:
    bool Equal(const Region& other) const;
    Region FromParts(const std::vector<RECT>& rects) const;
    // Notes the outcome of an operation that takes memory.
    void Keep(int cairoStatus);
    void Keep(int cairoStatus, const Region& other);
    void Lose();

    cairo_region_t* region_;  // owned; never null
    bool intact_ = true;
};

}  // namespace platform
