// Brushes, matrices and image attributes: small values that drawing is told with.
#include <algorithm>

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
