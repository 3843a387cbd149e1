// A set of pixels, as a value over cairo's regions.
#pragma once

#include <memory>
#include <vector>

#include <platform/geometry.h>

typedef struct _cairo_region cairo_region_t;

namespace platform {

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
    CRect Rect(int index) const;

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
