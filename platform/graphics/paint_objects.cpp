// Brushes, matrices and image attributes: small values that drawing is told with.
#include <algorithm>
#include <cmath>
#include <utility>

#include <platform/gdiplus.h>

namespace Gdiplus {

Brush::~Brush() = default;
SolidBrush::~SolidBrush() = default;

Status SolidBrush::GetColor(Color* color) const {
    if (!color) return InvalidParameter;
    *color = color_;
    return Ok;
}

Status SolidBrush::SetColor(const Color& color) {
    color_ = color;
    return Ok;
}

LinearGradientBrush::LinearGradientBrush(const PointF& from, const PointF& to, const Color& first,
                                         const Color& last)
    : from_(from), to_(to), stops_{{0, first}, {1, last}} {}

namespace {

// Half a gradient's line, from the middle of its rectangle.
PointF HalfLine(const RectF& rect, LinearGradientMode mode) {
    // Diagonal: what has one colour is parallel to the other diagonal.
    const double square =
        static_cast<double>(rect.Width) * rect.Width + static_cast<double>(rect.Height) * rect.Height;
    const double k = square > 0 ? static_cast<double>(rect.Width) * rect.Height / square : 0;
    const REAL x = static_cast<REAL>(k * rect.Height);
    const REAL y = static_cast<REAL>(k * rect.Width);
    switch (mode) {
        case LinearGradientModeHorizontal:
            return {rect.Width / 2, 0};
        case LinearGradientModeVertical:
            return {0, rect.Height / 2};
        case LinearGradientModeForwardDiagonal:
            return {x, y};
        case LinearGradientModeBackwardDiagonal:
            return {-x, y};
    }
    return {};
}

PointF HalfLine(const RectF& rect, REAL angle) {
    const double radians = std::remainder(static_cast<double>(angle), 360) * M_PI / 180;
    const double x = std::cos(radians);
    const double y = std::sin(radians);
    const double length = std::abs(rect.Width / 2 * x) + std::abs(rect.Height / 2 * y);
    return {static_cast<REAL>(x * length), static_cast<REAL>(y * length)};
}

PointF MiddleOf(const RectF& rect, const PointF& by) {
    return {rect.X + rect.Width / 2 + by.X, rect.Y + rect.Height / 2 + by.Y};
}

PointF Opposite(const PointF& point) {
    return {-point.X, -point.Y};
}

}  // namespace

LinearGradientBrush::LinearGradientBrush(const RectF& rect, const Color& first, const Color& last,
                                         LinearGradientMode mode)
    : LinearGradientBrush(MiddleOf(rect, Opposite(HalfLine(rect, mode))),
                          MiddleOf(rect, HalfLine(rect, mode)), first, last) {}

LinearGradientBrush::LinearGradientBrush(const RectF& rect, const Color& first, const Color& last, REAL angle)
    : LinearGradientBrush(MiddleOf(rect, Opposite(HalfLine(rect, angle))),
                          MiddleOf(rect, HalfLine(rect, angle)), first, last) {}

LinearGradientBrush::~LinearGradientBrush() = default;

Status LinearGradientBrush::SetLinearColors(const Color& first, const Color& last) {
    stops_ = {{0, first}, {1, last}};
    return Ok;
}

Status LinearGradientBrush::SetInterpolationColors(const Color* colors, const REAL* places, INT count) {
    if (!colors || !places || count < 2 || places[0] != 0 || places[count - 1] != 1) return InvalidParameter;
    std::vector<Stop> stops;
    for (INT i = 0; i < count; ++i) {
        if (i > 0 && !(places[i] >= places[i - 1])) return InvalidParameter;
        stops.push_back({places[i], colors[i]});
    }
    stops_ = std::move(stops);
    return Ok;
}

Status LinearGradientBrush::SetWrapMode(WrapMode mode) {
    if (mode < WrapModeTile || mode > WrapModeTileFlipXY) return InvalidParameter;
    mode_ = mode;
    return Ok;
}

void Matrix::GetElements(REAL* six) const {
    std::copy(m_, m_ + 6, six);
}

Status ImageAttributes::SetWrapMode(WrapMode mode, const Color& color, BOOL) {
    if (mode < WrapModeTile || mode > WrapModeClamp) return InvalidParameter;
    mode_ = mode;
    color_ = color;
    return Ok;
}

}  // namespace Gdiplus
