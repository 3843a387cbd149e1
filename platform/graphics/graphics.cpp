// Graphics: what it draws on, and the state it draws under.
#include <cmath>
#include <utility>

#include <platform/gdiplus.h>

#include "platform/graphics/device_context.h"
#include "platform/graphics/draw_target.h"
#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/pixel_rows.h"

namespace Gdiplus {

using platform::DrawTarget;
using platform::GraphicsData;
using platform::ImageData;

Graphics::Graphics(HDC context) : data_(std::make_unique<GraphicsData>()) {
    data_->context = context;
    if (!platform::ShareContext(context)) data_->status = Win32Error;
    last_ = data_->status;
}

Graphics::Graphics(Image* image) : data_(std::make_unique<GraphicsData>()) {
    data_->onImage = true;
    if (image && image->Data()->IsGood())
        data_->image = image->Data();
    else
        data_->status = InvalidParameter;
    last_ = data_->status;
}

Graphics::~Graphics() {
    if (data_->lent) ReleaseHDC(data_->lent);
}

INT Graphics::GetScale() const {
    DrawTarget target;
    return target.Take(*data_) == Ok ? target.Scale() : 1;
}

Status Graphics::Keep(Status status) const {
    return last_ = status;
}

Status Graphics::GetLastStatus() const {
    return data_->status != Ok ? data_->status : std::exchange(last_, Ok);
}

HDC Graphics::GetHDC() {
    DrawTarget target;
    if (Keep(target.Take(*data_)) != Ok) return {};
    if (!data_->onImage) return data_->lent = data_->context;
    const std::shared_ptr<ImageData> image = data_->image.lock();
    image->BeginLending();
    data_->lent = platform::MakeDeviceContext(target.Share(), {0, 0}, platform::Region(target.Box()));
    return data_->lent;
}

Status Graphics::ReleaseHDC(HDC context) {
    if (!data_->lent || !(context == data_->lent)) return Keep(InvalidParameter);
    data_->lent = {};
    if (!data_->onImage) return Keep(Ok);
    platform::DeleteDeviceContext(context);
    if (const std::shared_ptr<ImageData> image = data_->image.lock()) {
        image->EndLending();
        image->RestoreOpacity();
    }
    return Keep(Ok);
}

Status Graphics::SetSmoothingMode(SmoothingMode mode) {
    if (mode < SmoothingModeDefault || mode > SmoothingModeAntiAlias) return Keep(InvalidParameter);
    data_->smoothing = mode;
    return Keep(Ok);
}

Status Graphics::SetCompositingMode(CompositingMode mode) {
    if (mode != CompositingModeSourceOver && mode != CompositingModeSourceCopy) return Keep(InvalidParameter);
    data_->compositing = mode;
    return Keep(Ok);
}

Status Graphics::SetInterpolationMode(InterpolationMode mode) {
    switch (mode) {
        case InterpolationModeDefault:
        case InterpolationModeLowQuality:
        case InterpolationModeHighQuality:
        case InterpolationModeBilinear:
        case InterpolationModeNearestNeighbor:
        case InterpolationModeHighQualityBilinear:
        case InterpolationModeHighQualityBicubic:
            data_->interpolation = mode;
            return Keep(Ok);
    }
    return Keep(InvalidParameter);
}

Status Graphics::SetTransform(const Matrix* matrix) {
    if (!matrix) return Keep(InvalidParameter);
    REAL m[6];
    matrix->GetElements(m);
    for (const REAL element : m)
        if (!std::isfinite(element)) return Keep(InvalidParameter);
    // A transform that flattens everything would draw nothing and cannot be inverted.
    if (static_cast<double>(m[0]) * m[3] - static_cast<double>(m[1]) * m[2] == 0)
        return Keep(InvalidParameter);
    data_->transform = *matrix;
    return Keep(Ok);
}

Status Graphics::ResetTransform() {
    data_->transform = Matrix();
    return Keep(Ok);
}

namespace {

// `first`, and then `second`.
Matrix Combined(const Matrix& first, const Matrix& second) {
    REAL a[6];
    REAL b[6];
    first.GetElements(a);
    second.GetElements(b);
    return {a[0] * b[0] + a[1] * b[2], a[0] * b[1] + a[1] * b[3],        a[2] * b[0] + a[3] * b[2],
            a[2] * b[1] + a[3] * b[3], a[4] * b[0] + a[5] * b[2] + b[4], a[4] * b[1] + a[5] * b[3] + b[5]};
}

Matrix WithStep(const Matrix& present, const Matrix& step, MatrixOrder order) {
    return order == MatrixOrderAppend ? Combined(present, step) : Combined(step, present);
}

}  // namespace

Status Graphics::TranslateTransform(REAL dx, REAL dy, MatrixOrder order) {
    const Matrix moved = WithStep(data_->transform, Matrix(1, 0, 0, 1, dx, dy), order);
    return SetTransform(&moved);
}

Status Graphics::ScaleTransform(REAL sx, REAL sy, MatrixOrder order) {
    const Matrix scaled = WithStep(data_->transform, Matrix(sx, 0, 0, sy, 0, 0), order);
    return SetTransform(&scaled);
}

Status Graphics::RotateTransform(REAL degrees, MatrixOrder order) {
    const double angle = std::remainder(static_cast<double>(degrees), 360) * M_PI / 180;
    const REAL cosine = static_cast<REAL>(std::cos(angle));
    const REAL sine = static_cast<REAL>(std::sin(angle));
    const Matrix turned = WithStep(data_->transform, Matrix(cosine, sine, -sine, cosine, 0, 0), order);
    return SetTransform(&turned);
}

Status Graphics::SetClip(const Rect& rect, CombineMode mode) {
    if (mode != CombineModeReplace && mode != CombineModeIntersect) return Keep(InvalidParameter);
    const double x = rect.X;
    const double y = rect.Y;
    const platform::World world(*data_, {0, 0}, 1);
    const platform::Box box = platform::Transformed(world, {x, y, x + rect.Width, y + rect.Height});
    if (!platform::IsDrawable(box)) return Keep(InvalidParameter);
    CRect clip = rect.Width > 0 && rect.Height > 0 ? platform::Rounded(box) : CRect();
    if (mode == CombineModeIntersect && data_->clip) clip.IntersectRect(clip, *data_->clip);
    data_->clip = clip;
    return Keep(Ok);
}

Status Graphics::ResetClip() {
    data_->clip.reset();
    return Keep(Ok);
}

Status Graphics::Clear(const Color& color) {
    DrawTarget target;
    if (Keep(target.Take(*data_)) != Ok) return last_;
    const ARGB value = color.GetValue();
    const std::uint32_t pixel = target.IsOpaqueFormat() ? value | 0xFF000000U : platform::Premultiply(value);
    target.Paint(target.Box(),
                 [&](const CRect& part) { platform::FillPixels(target.Pixels(), part, pixel); });
    return Ok;
}

Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput*) {
    if (!token || !input || input->GdiplusVersion != 1) return InvalidParameter;
    *token = 1;
    return Ok;
}

void GdiplusShutdown(ULONG_PTR) {}

}  // namespace Gdiplus
