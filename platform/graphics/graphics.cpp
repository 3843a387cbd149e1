// Graphics: what it draws on, and the state it draws under.
#include <cmath>
#include <utility>

#include <platform/gdiplus.h>

#include "platform/graphics/device_context.h"
#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/ground.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/pixel_rows.h"

namespace Gdiplus {

using platform::GraphicsData;
using platform::Ground;
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

Status Graphics::Keep(Status status) const {
    return last_ = status;
}

Status Graphics::GetLastStatus() const {
    return data_->status != Ok ? data_->status : std::exchange(last_, Ok);
}

HDC Graphics::GetHDC() {
    Ground ground;
    if (Keep(ground.Take(*data_)) != Ok) return {};
    if (!data_->onImage) return data_->lent = data_->context;
    const std::shared_ptr<ImageData> image = data_->image.lock();
    image->BeginLending();
    data_->lent = platform::MakeDeviceContext(ground.Share(), {0, 0}, platform::Region(ground.Box()));
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
    if (mode != SmoothingModeDefault && mode != SmoothingModeNone && mode != SmoothingModeAntiAlias)
        return Keep(InvalidParameter);
    data_->smoothing = mode;
    return Keep(Ok);
}

Status Graphics::SetInterpolationMode(InterpolationMode mode) {
    switch (mode) {
        case InterpolationModeDefault:
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

Status Graphics::SetClip(const Rect& rect, CombineMode mode) {
    if (mode != CombineModeReplace && mode != CombineModeIntersect) return Keep(InvalidParameter);
    const double x = rect.X;
    const double y = rect.Y;
    const platform::World world(*data_, {0, 0});
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
    Ground ground;
    if (Keep(ground.Take(*data_)) != Ok) return last_;
    const ARGB value = color.GetValue();
    const std::uint32_t pixel = ground.IsOpaqueFormat() ? value | 0xFF000000U : platform::Premultiply(value);
    ground.Paint(ground.Box(),
                 [&](const CRect& part) { platform::FillPixels(ground.Pixels(), part, pixel); });
    return Ok;
}

}  // namespace Gdiplus
