// What a Graphics draws on, at the moment of one drawing operation.
#pragma once

#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "platform/graphics/region.h"
#include "platform/graphics/surface.h"

namespace platform {

class DeviceContext;
struct GraphicsData;

class DrawTarget {
  public:
    // Not Ok for the reasons of GraphicsData::Check.
    Gdiplus::Status Take(GraphicsData& graphics);

    Surface& Pixels() const { return *surface_; }
    const std::shared_ptr<Surface>& Share() const { return surface_; }
    const std::shared_ptr<DeviceContext>& Context() const { return context_; }
    // (0, 0) of what is drawn, in surface coordinates.
    POINT Origin() const { return origin_; }
    // Pixels to a unit of what is drawn.
    int Scale() const { return surface_->Scale(); }
    // Around everything that may be drawn on, in surface coordinates.
    const CRect& Box() const { return box_; }
    // Everything that may be drawn on; costs a copy.
    Region Clip() const;
    bool IsOpaqueFormat() const { return opaqueFormat_; }

    // Calls draw(part) for every part of `rect` that may be drawn on, and notes it as drawn.
    template <class Draw>
    void Paint(const CRect& rect, Draw draw) {
        CRect inside;
        if (!inside.IntersectRect(rect, box_)) return;
        bool any = !region_;
        if (region_) {
            region_->ForEachIn(inside, [&](const CRect& part) {
                draw(part);
                any = true;
            });
        } else {
            draw(inside);
        }
        if (any) Note(inside);
    }

  private:
    void Note(const CRect& touched);

    std::shared_ptr<DeviceContext> context_;  // null on an image
    std::shared_ptr<Surface> surface_;
    const Region* region_ = nullptr;  // of context_; null when box_ says it all
    POINT origin_{0, 0};
    CRect box_;
    bool opaqueFormat_ = false;
};

// The world transform, down to the pixels of the surface.
struct World {
    double m11, m12, m21, m22, dx, dy;

    World(const GraphicsData& graphics, POINT origin, int scale);
    // On a target.
    World(const GraphicsData& graphics, const DrawTarget& target)
        : World(graphics, target.Origin(), target.Scale()) {}
    bool IsUpright() const { return m12 == 0 && m21 == 0; }
    double X(double x, double y) const { return x * m11 + y * m21 + dx; }
    double Y(double x, double y) const { return x * m12 + y * m22 + dy; }
};

// An axis-aligned rectangle between pixels.
struct Box {
    double left, top, right, bottom;
    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
};
// The box around a transformed rectangle.
Box Transformed(const World& world, const Box& box);

// Coordinates beyond this are refused: no surface is near, and the arithmetic stays exact below it.
constexpr double kFarthest = 1e9;
// Whether every edge is a number within +-kFarthest.
bool IsDrawable(const Box& box);
// Edges go to the nearest whole pixel, halves up, and so does what misses a half by an error of floats: edges
// that were shared stay shared.
CRect Rounded(const Box& box);

}  // namespace platform
