#include "platform/graphics/brush_paint.h"

namespace platform {
namespace {

std::shared_ptr<cairo_pattern_t> PatternOf(const Gdiplus::LinearGradientBrush& brush) {
    const Gdiplus::PointF& from = brush.From();
    const Gdiplus::PointF& to = brush.To();
    if (from.X == to.X && from.Y == to.Y) return {};
    std::shared_ptr<cairo_pattern_t> pattern(cairo_pattern_create_linear(from.X, from.Y, to.X, to.Y),
                                             cairo_pattern_destroy);
    for (const auto& [place, color] : brush.Stops())
        cairo_pattern_add_color_stop_rgba(pattern.get(), place, color.GetR() / 255.0, color.GetG() / 255.0,
                                          color.GetB() / 255.0, color.GetA() / 255.0);
    cairo_pattern_set_extend(pattern.get(), brush.GetWrapMode() == Gdiplus::WrapModeTile
                                                ? CAIRO_EXTEND_REPEAT
                                                : CAIRO_EXTEND_REFLECT);
    if (cairo_pattern_status(pattern.get()) != CAIRO_STATUS_SUCCESS) return {};
    return pattern;
}

}  // namespace

std::optional<BrushPaint> BrushPaint::Of(const Gdiplus::Brush* brush) {
    Gdiplus::Color color;
    if (const auto* const solid = dynamic_cast<const Gdiplus::SolidBrush*>(brush)) {
        solid->GetColor(&color);
        return BrushPaint(color);
    }
    const auto* const gradient = dynamic_cast<const Gdiplus::LinearGradientBrush*>(brush);
    if (!gradient) return {};
    BrushPaint paint(color);
    paint.pattern_ = PatternOf(*gradient);
    if (!paint.pattern_) return {};
    return paint;
}

}  // namespace platform
