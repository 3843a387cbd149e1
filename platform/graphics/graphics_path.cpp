// Paths: outlines in world units.
#include <cairo.h>

#include <cmath>

#include <platform/gdiplus.h>

#include "platform/graphics/cairo_paint.h"
#include "platform/graphics/graphics_data.h"

namespace platform {

PathData::PathData(Gdiplus::FillMode fillMode) : mode(fillMode) {
    // Glyphs far from a surface leave no outline; this one is everywhere.
    cairo_surface_t* const everywhere = cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr);
    outline = cairo_create(everywhere);
    cairo_surface_destroy(everywhere);
}

PathData::~PathData() {
    cairo_destroy(outline);
}

void AddEllipseTo(cairo_t* cairo, double x, double y, double width, double height) {
    cairo_save(cairo);
    cairo_translate(cairo, x + width / 2, y + height / 2);
    cairo_scale(cairo, width / 2, height / 2);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, 0, 0, 1, 0, 2 * M_PI);
    cairo_close_path(cairo);
    cairo_restore(cairo);
}

}  // namespace platform

namespace Gdiplus {
namespace {

bool IsAddable(const RectF& rect) {
    return platform::IsNear(rect.X) && platform::IsNear(rect.Y) && platform::IsNear(rect.GetRight()) &&
           platform::IsNear(rect.GetBottom());
}

}  // namespace

GraphicsPath::GraphicsPath(FillMode mode) : data_(std::make_unique<platform::PathData>(mode)) {}

GraphicsPath::~GraphicsPath() = default;

Status GraphicsPath::AddRectangle(const RectF& rect) {
    if (!IsAddable(rect)) return InvalidParameter;
    if (rect.Width <= 0 || rect.Height <= 0) return Ok;
    cairo_rectangle(data_->outline, rect.X, rect.Y, rect.Width, rect.Height);
    return Ok;
}

Status GraphicsPath::AddEllipse(const RectF& rect) {
    if (!IsAddable(rect)) return InvalidParameter;
    if (rect.Width <= 0 || rect.Height <= 0) return Ok;
    platform::AddEllipseTo(data_->outline, rect.X, rect.Y, rect.Width, rect.Height);
    return Ok;
}

Status GraphicsPath::GetBounds(RectF* bounds) const {
    if (!bounds) return InvalidParameter;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_path_extents(data_->outline, &left, &top, &right, &bottom);
    *bounds = RectF(static_cast<REAL>(left), static_cast<REAL>(top), static_cast<REAL>(right - left),
                    static_cast<REAL>(bottom - top));
    return Ok;
}

}  // namespace Gdiplus
