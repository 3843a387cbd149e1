// Ellipses, arcs, pies, polygons and curves: each a path of its own.
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include <platform/gdiplus.h>

#include "platform/graphics/cairo_paint.h"
#include "platform/graphics/graphics_data.h"

namespace platform {
namespace {

bool AreNear(const Gdiplus::PointF* points, INT count) {
    return std::all_of(points, points + count,
                       [](const Gdiplus::PointF& point) { return IsNear(point.X) && IsNear(point.Y); });
}

std::vector<Gdiplus::PointF> ToReal(const Gdiplus::Point* points, INT count) {
    std::vector<Gdiplus::PointF> real;
    for (INT i = 0; points && i < count; ++i)
        real.push_back(Gdiplus::ToReal(points[i]));
    return real;
}

INT CountOf(const std::vector<Gdiplus::PointF>& points) {
    return static_cast<INT>(points.size());
}

// An angle on the ellipse of a box as the one on the circle that it is squeezed from.
double OnCircle(double degrees, const Gdiplus::RectF& rect) {
    const double radians = degrees * M_PI / 180;
    const double turns = std::floor((radians + M_PI) / (2 * M_PI));
    const double angle = radians - turns * 2 * M_PI;
    return std::atan2(std::sin(angle) * rect.Width, std::cos(angle) * rect.Height) + turns * 2 * M_PI;
}

// False for angles that are none.
bool AddArcTo(cairo_t* cairo, const Gdiplus::RectF& rect, double start, double sweep) {
    if (!IsNear(start) || !IsNear(sweep)) return false;
    sweep = std::clamp(sweep, -360.0, 360.0);
    const double from = OnCircle(start, rect);
    const bool whole = std::abs(sweep) == 360;
    const double to = whole ? from + sweep * M_PI / 180 : OnCircle(start + sweep, rect);
    cairo_save(cairo);
    cairo_translate(cairo, rect.X + rect.Width / 2, rect.Y + rect.Height / 2);
    cairo_scale(cairo, rect.Width / 2, rect.Height / 2);
    if (sweep >= 0)
        cairo_arc(cairo, 0, 0, 1, from, to);
    else
        cairo_arc_negative(cairo, 0, 0, 1, from, to);
    cairo_restore(cairo);
    return true;
}

// Whether something can be drawn in the box: 1; 0 for one without an area, -1 for none at all.
int Area(const Gdiplus::RectF& rect) {
    if (!IsNear(rect.X) || !IsNear(rect.Y) || !IsNear(rect.GetRight()) || !IsNear(rect.GetBottom()))
        return -1;
    return rect.Width > 0 && rect.Height > 0 ? 1 : 0;
}

}  // namespace
}  // namespace platform

namespace Gdiplus {

Status GraphicsPath::AddLine(REAL x1, REAL y1, REAL x2, REAL y2) {
    const PointF ends[] = {{x1, y1}, {x2, y2}};
    return AddLines(ends, 2);
}

Status GraphicsPath::AddLines(const PointF* points, INT count) {
    if (!points || count < 1 || !platform::AreNear(points, count)) return InvalidParameter;
    for (INT i = 0; i < count; ++i)
        cairo_line_to(data_->outline, points[i].X, points[i].Y);
    return Ok;
}

Status GraphicsPath::AddArc(const RectF& rect, REAL start, REAL sweep) {
    const int area = platform::Area(rect);
    if (area <= 0) return area < 0 ? InvalidParameter : Ok;
    return platform::AddArcTo(data_->outline, rect, start, sweep) ? Ok : InvalidParameter;
}

Status GraphicsPath::AddBezier(REAL x1, REAL y1, REAL x2, REAL y2, REAL x3, REAL y3, REAL x4, REAL y4) {
    const PointF points[] = {{x1, y1}, {x2, y2}, {x3, y3}, {x4, y4}};
    if (!platform::AreNear(points, 4)) return InvalidParameter;
    cairo_line_to(data_->outline, x1, y1);
    cairo_curve_to(data_->outline, x2, y2, x3, y3, x4, y4);
    return Ok;
}

Status GraphicsPath::AddPie(const RectF& rect, REAL start, REAL sweep) {
    const int area = platform::Area(rect);
    if (area <= 0) return area < 0 ? InvalidParameter : Ok;
    cairo_new_sub_path(data_->outline);
    cairo_move_to(data_->outline, rect.X + rect.Width / 2, rect.Y + rect.Height / 2);
    const bool added = platform::AddArcTo(data_->outline, rect, start, sweep);
    cairo_close_path(data_->outline);
    cairo_new_sub_path(data_->outline);
    return added ? Ok : InvalidParameter;
}

Status GraphicsPath::AddPolygon(const PointF* points, INT count) {
    if (!points || count < 3 || !platform::AreNear(points, count)) return InvalidParameter;
    cairo_new_sub_path(data_->outline);
    AddLines(points, count);
    return CloseFigure();
}

Status GraphicsPath::AddPolygon(const Point* points, INT count) {
    const std::vector<PointF> real = platform::ToReal(points, count);
    return AddPolygon(real.data(), platform::CountOf(real));
}

Status GraphicsPath::StartFigure() {
    cairo_new_sub_path(data_->outline);
    return Ok;
}

Status GraphicsPath::CloseFigure() {
    if (cairo_has_current_point(data_->outline)) cairo_close_path(data_->outline);
    return StartFigure();
}

Status GraphicsPath::Reset() {
    cairo_new_path(data_->outline);
    return Ok;
}

Status Graphics::FillPie(const Brush* brush, const RectF& rect, REAL start, REAL sweep) {
    GraphicsPath path;
    if (Keep(path.AddPie(rect, start, sweep)) != Ok) return last_;
    return FillPath(brush, &path);
}

Status Graphics::FillPolygon(const Brush* brush, const PointF* points, INT count, FillMode mode) {
    GraphicsPath path(mode);
    if (Keep(path.AddPolygon(points, count)) != Ok) return last_;
    return FillPath(brush, &path);
}

Status Graphics::FillPolygon(const Brush* brush, const Point* points, INT count, FillMode mode) {
    const std::vector<PointF> real = platform::ToReal(points, count);
    return FillPolygon(brush, real.data(), platform::CountOf(real), mode);
}

Status Graphics::DrawEllipse(const Pen* pen, const RectF& rect) {
    GraphicsPath path;
    if (Keep(path.AddEllipse(rect)) != Ok) return last_;
    return DrawPath(pen, &path);
}

Status Graphics::DrawArc(const Pen* pen, const RectF& rect, REAL start, REAL sweep) {
    GraphicsPath path;
    if (Keep(path.AddArc(rect, start, sweep)) != Ok) return last_;
    return DrawPath(pen, &path);
}

Status Graphics::DrawPie(const Pen* pen, const RectF& rect, REAL start, REAL sweep) {
    GraphicsPath path;
    if (Keep(path.AddPie(rect, start, sweep)) != Ok) return last_;
    return DrawPath(pen, &path);
}

Status Graphics::DrawPolygon(const Pen* pen, const PointF* points, INT count) {
    GraphicsPath path;
    if (Keep(path.AddPolygon(points, count)) != Ok) return last_;
    return DrawPath(pen, &path);
}

Status Graphics::DrawPolygon(const Pen* pen, const Point* points, INT count) {
    const std::vector<PointF> real = platform::ToReal(points, count);
    return DrawPolygon(pen, real.data(), platform::CountOf(real));
}

Status Graphics::DrawLines(const Pen* pen, const PointF* points, INT count) {
    GraphicsPath path;
    if (Keep(count < 2 ? InvalidParameter : path.AddLines(points, count)) != Ok) return last_;
    return DrawPath(pen, &path);
}

Status Graphics::DrawLines(const Pen* pen, const Point* points, INT count) {
    const std::vector<PointF> real = platform::ToReal(points, count);
    return DrawLines(pen, real.data(), platform::CountOf(real));
}

Status Graphics::DrawBezier(const Pen* pen, const PointF& p1, const PointF& p2, const PointF& p3,
                            const PointF& p4) {
    GraphicsPath path;
    if (Keep(path.AddBezier(p1.X, p1.Y, p2.X, p2.Y, p3.X, p3.Y, p4.X, p4.Y)) != Ok) return last_;
    return DrawPath(pen, &path);
}

}  // namespace Gdiplus
