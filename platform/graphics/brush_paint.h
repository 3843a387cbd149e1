// What a brush puts onto a shape: one colour, which the platform's own loops blend, or a pattern of cairo's.
#pragma once

#include <cairo.h>

#include <memory>
#include <optional>

#include <platform/gdiplus.h>

namespace platform {

class BrushPaint {
  public:
    explicit BrushPaint(const Gdiplus::Color& color) : color_(color) {}
    // Nothing for a null brush, and for a gradient without a length or memory.
    static std::optional<BrushPaint> Of(const Gdiplus::Brush* brush);

    bool IsColor() const { return !pattern_; }
    const Gdiplus::Color& Color() const { return color_; }
    // In units of the world; null for a colour.
    cairo_pattern_t* Pattern() const { return pattern_.get(); }
    // Nothing of it can be seen.
    bool IsClear() const { return IsColor() && color_.GetA() == 0; }

  private:
    Gdiplus::Color color_;
    std::shared_ptr<cairo_pattern_t> pattern_;
};

}  // namespace platform
