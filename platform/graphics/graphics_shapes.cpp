// Filled and outlined shapes. What lies on whole pixels is filled by the platform's own loops; the rest is
// cairo's.
#include <cairo.h>

#include <algorithm>
#include <cmath>

#include <platform/gdiplus.h>

#include "platform/graphics/brush_paint.h"
#include "platform/graphics/cairo_paint.h"
#include "platform/graphics/draw_target.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/offscreen_layer.h"
#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

using Gdiplus::Ok;
using Gdiplus::Status;

void BlendBox(DrawTarget& target, const CRect& rect, std::uint32_t pixel) {
    target.Paint(rect, [&](const CRect& part) { BlendColor(target.Pixels(), part, pixel); });
}

// A line is drawn around its middle. Without smoothing a pixel belongs to it when the pixel's corner does,
// not its centre, so that a line of width 1 on whole coordinates covers whole pixels.
double StrokeShift(const GraphicsData& graphics) {
    return graphics.IsSmooth() ? 0 : 0.5;
}

// A paint through the shape that `draw` makes with cairo, inside `box`, a rectangle of the world, widened by
// `margin`.
template <class Draw>
Status BlendShape(GraphicsData& graphics, const Box& box, double margin, const BrushPaint& paint, Draw draw) {
    DrawTarget target;
    if (const Status status = target.Take(graphics); status != Ok) return status;
    OffscreenLayer shape;
    const Status status =
        shape.Prepare(graphics, target, box, margin,
                      paint.IsColor() ? OffscreenLayer::Kind::Coverage : OffscreenLayer::Kind::Pixels);
    if (status != Ok || !shape.Cairo() || paint.IsClear()) return status;
    if (!paint.IsColor()) cairo_set_source(shape.Cairo(), paint.Pattern());
    draw(shape.Cairo());
    if (cairo_status(shape.Cairo()) != CAIRO_STATUS_SUCCESS) return Gdiplus::GenericError;
    if (paint.IsColor())
        shape.BlendColor(target, Premultiply(paint.Color().GetValue()));
    else
        shape.BlendPixels(target);
    return Ok;
}

// The same for a stroke: shifted, as wide as the pen, one pixel at least.
template <class Outline>
Status BlendStroke(GraphicsData& graphics, const Gdiplus::Pen& pen, const Box& box, Outline outline) {
    const double width = std::max(0.0, static_cast<double>(pen.GetWidth()));
    if (!IsNear(width)) return Gdiplus::InvalidParameter;
    // A mitre reaches out ten times half the width at most, cairo's limit.
    return BlendShape(graphics, box, width * 5, BrushPaint(pen.GetColor()), [&](cairo_t* cairo) {
        cairo_matrix_t matrix;
        cairo_get_matrix(cairo, &matrix);
        const double shift = StrokeShift(graphics);
        matrix.x0 += shift;
        matrix.y0 += shift;
        cairo_set_matrix(cairo, &matrix);
        outline(cairo);
        const double scale = std::sqrt(std::abs(matrix.xx * matrix.yy - matrix.xy * matrix.yx));
        cairo_set_line_width(cairo, std::max(width, 1.0 / scale));
        cairo_stroke(cairo);
    });
}

Status FillBox(GraphicsData& graphics, const Gdiplus::Brush* brush, const Box& box) {
    const std::optional<BrushPaint> paint = BrushPaint::Of(brush);
    if (!paint || !IsDrawable(box)) return Gdiplus::InvalidParameter;
    DrawTarget target;
    if (const Status status = target.Take(graphics); status != Ok) return status;
    if (!(box.Width() > 0) || !(box.Height() > 0)) return Ok;
    const World world(graphics, target);
    const Box device = Transformed(world, box);
    const auto isWhole = [](double edge) { return std::abs(edge - std::round(edge)) < 1.0 / 512; };
    const bool whole =
        isWhole(device.left) && isWhole(device.top) && isWhole(device.right) && isWhole(device.bottom);
    if (paint->IsColor() && world.IsUpright() && (whole || !graphics.IsSmooth())) {
        if (!IsDrawable(device)) return Gdiplus::InvalidParameter;
        if (!paint->IsClear()) BlendBox(target, Rounded(device), Premultiply(paint->Color().GetValue()));
        return Ok;
    }
    return BlendShape(graphics, box, 0, *paint, [&](cairo_t* cairo) {
        cairo_rectangle(cairo, box.left, box.top, box.Width(), box.Height());
        cairo_fill(cairo);
    });
}

// The frame between two boxes, every pixel once, corners included.
void BlendFrame(DrawTarget& target, const CRect& outer, const CRect& inner, std::uint32_t pixel) {
    if (inner.IsRectEmpty()) {
        BlendBox(target, outer, pixel);
        return;
    }
    BlendBox(target, CRect(outer.left, outer.top, outer.right, inner.top), pixel);
    BlendBox(target, CRect(outer.left, inner.top, inner.left, inner.bottom), pixel);
    BlendBox(target, CRect(inner.right, inner.top, outer.right, inner.bottom), pixel);
    BlendBox(target, CRect(outer.left, inner.bottom, outer.right, outer.bottom), pixel);
}

Status OutlineBox(GraphicsData& graphics, const Gdiplus::Pen* pen, const Box& box) {
    if (!pen || !IsDrawable(box) || !IsNear(pen->GetWidth())) return Gdiplus::InvalidParameter;
    DrawTarget target;
    if (const Status status = target.Take(graphics); status != Ok) return status;
    if (!(box.Width() > 0) || !(box.Height() > 0)) return Ok;
    const World world(graphics, target);
    if (graphics.IsSmooth() || !world.IsUpright())
        return BlendStroke(graphics, *pen, box, [&](cairo_t* cairo) {
            cairo_rectangle(cairo, box.left, box.top, box.Width(), box.Height());
        });
    const Box device = Transformed(world, box);
    const double halfX = std::max(1.0, pen->GetWidth() * std::abs(world.m11)) / 2;
    const double halfY = std::max(1.0, pen->GetWidth() * std::abs(world.m22)) / 2;
    const Box outer{device.left - halfX, device.top - halfY, device.right + halfX, device.bottom + halfY};
    const Box inner{device.left + halfX, device.top + halfY, device.right - halfX, device.bottom - halfY};
    if (!IsDrawable(outer)) return Gdiplus::InvalidParameter;
    const auto corners = [](const Box& edges) {
        return CRect(static_cast<int>(std::ceil(edges.left)), static_cast<int>(std::ceil(edges.top)),
                     static_cast<int>(std::ceil(edges.right)), static_cast<int>(std::ceil(edges.bottom)));
    };
    if (pen->GetColor().GetA() != 0)
        BlendFrame(target, corners(outer), corners(inner), Premultiply(pen->GetColor().GetValue()));
    return Ok;
}

// A line one pixel wide, both ends included: one pixel for every step along its longer axis. Each pixel is
// computed from the ends alone, so a clip cannot move it.
void BlendThinLine(DrawTarget& target, double x1, double y1, double x2, double y2, std::uint32_t pixel) {
    const bool wide = std::abs(x2 - x1) >= std::abs(y2 - y1);
    if (!wide) {
        std::swap(x1, y1);
        std::swap(x2, y2);
    }
    if (x1 > x2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const auto nearest = [](double position) { return static_cast<int>(std::floor(position + 0.5)); };
    const CRect& box = target.Box();
    const int first = std::max(nearest(x1), wide ? box.left : box.top);
    const int last = std::min(nearest(x2), (wide ? box.right : box.bottom) - 1);
    const double slope = x2 > x1 ? (y2 - y1) / (x2 - x1) : 0;
    const auto across = [&](int along) { return nearest(y1 + (along - x1) * slope); };
    for (int start = first; start <= last;) {
        const int line = across(start);
        int end = start + 1;
        while (end <= last && across(end) == line)
            ++end;
        BlendBox(target, wide ? CRect(start, line, end, line + 1) : CRect(line, start, line + 1, end), pixel);
        start = end;
    }
}

Status DrawSegment(GraphicsData& graphics, const Gdiplus::Pen* pen, double x1, double y1, double x2,
                   double y2) {
    const Box box{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    if (!pen || !IsDrawable({x1, y1, x2, y2})) return Gdiplus::InvalidParameter;
    DrawTarget target;
    if (const Status status = target.Take(graphics); status != Ok) return status;
    const World world(graphics, target);
    const double scale = std::sqrt(std::abs(world.m11 * world.m22 - world.m12 * world.m21));
    if (graphics.IsSmooth() || pen->GetWidth() * scale > 1)
        return BlendStroke(graphics, *pen, box, [&](cairo_t* cairo) {
            cairo_move_to(cairo, x1, y1);
            cairo_line_to(cairo, x2, y2);
        });
    const Box ends{world.X(x1, y1), world.Y(x1, y1), world.X(x2, y2), world.Y(x2, y2)};
    if (!IsDrawable(ends)) return Gdiplus::InvalidParameter;
    if (pen->GetColor().GetA() != 0)
        BlendThinLine(target, ends.left, ends.top, ends.right, ends.bottom,
                      Premultiply(pen->GetColor().GetValue()));
    return Ok;
}

// Puts an outline that was collected in world units under a cairo context.
void AppendOutline(cairo_t* cairo, const PathData& path) {
    cairo_path_t* const copy = cairo_copy_path(path.outline);
    cairo_append_path(cairo, copy);
    cairo_path_destroy(copy);
}

Box BoundsOf(const PathData& path) {
    Box box{};
    cairo_path_extents(path.outline, &box.left, &box.top, &box.right, &box.bottom);
    return box;
}

Box BoxOf(double x, double y, double width, double height) {
    return {x, y, x + width, y + height};
}

}  // namespace
}  // namespace platform

namespace Gdiplus {

using platform::BoxOf;
using platform::BrushPaint;

Status Graphics::FillRectangle(const Brush* brush, INT x, INT y, INT width, INT height) {
    return Keep(platform::FillBox(*data_, brush, BoxOf(x, y, width, height)));
}

Status Graphics::FillRectangle(const Brush* brush, REAL x, REAL y, REAL width, REAL height) {
    return Keep(platform::FillBox(*data_, brush, BoxOf(x, y, width, height)));
}

Status Graphics::FillRectangle(const Brush* brush, const Rect& rect) {
    return FillRectangle(brush, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::FillRectangle(const Brush* brush, const RectF& rect) {
    return FillRectangle(brush, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::FillEllipse(const Brush* brush, const RectF& rect) {
    const std::optional<BrushPaint> paint = BrushPaint::Of(brush);
    const platform::Box box = BoxOf(rect.X, rect.Y, rect.Width, rect.Height);
    if (!paint || !platform::IsDrawable(box)) return Keep(InvalidParameter);
    if (!(rect.Width > 0) || !(rect.Height > 0)) return Keep(data_->Check());
    return Keep(platform::BlendShape(*data_, box, 0, *paint, [&](cairo_t* cairo) {
        platform::AddEllipseTo(cairo, rect.X, rect.Y, rect.Width, rect.Height);
        cairo_fill(cairo);
    }));
}

Status Graphics::DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height) {
    return Keep(platform::OutlineBox(*data_, pen, BoxOf(x, y, width, height)));
}

Status Graphics::DrawRectangle(const Pen* pen, REAL x, REAL y, REAL width, REAL height) {
    return Keep(platform::OutlineBox(*data_, pen, BoxOf(x, y, width, height)));
}

Status Graphics::DrawRectangle(const Pen* pen, const RectF& rect) {
    return DrawRectangle(pen, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::DrawLine(const Pen* pen, REAL x1, REAL y1, REAL x2, REAL y2) {
    return Keep(platform::DrawSegment(*data_, pen, x1, y1, x2, y2));
}

Status Graphics::FillPath(const Brush* brush, const GraphicsPath* path) {
    const std::optional<BrushPaint> paint = BrushPaint::Of(brush);
    if (!paint || !path) return Keep(InvalidParameter);
    const platform::PathData& data = path->Data();
    return Keep(platform::BlendShape(*data_, platform::BoundsOf(data), 0, *paint, [&](cairo_t* cairo) {
        platform::AppendOutline(cairo, data);
        cairo_set_fill_rule(
            cairo, data.mode == FillModeWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
        cairo_fill(cairo);
    }));
}

Status Graphics::DrawPath(const Pen* pen, const GraphicsPath* path) {
    if (!pen || !path) return Keep(InvalidParameter);
    const platform::PathData& data = path->Data();
    return Keep(platform::BlendStroke(*data_, *pen, platform::BoundsOf(data),
                                      [&](cairo_t* cairo) { platform::AppendOutline(cairo, data); }));
}

}  // namespace Gdiplus
