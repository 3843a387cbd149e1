// Drawing and measuring text.
#include <cairo.h>
#include <platform/gdiplus.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "platform/graphics/graphics_data.h"
#include "platform/graphics/text/string_argument.h"
#include "platform/graphics/text/text_layout.h"
#include "platform/graphics/text/text_mask.h"
#include "platform/graphics/text/text_shaper.h"

namespace Gdiplus {
namespace {

using platform::CachedText;
using platform::PixelBox;
using platform::TextFormat;

// Coverage above this is rendered anew each time, where it is visible.
constexpr std::int64_t kMostKeptCoverage = std::int64_t{1} << 20;
// Farther away nothing is visible, and whole numbers hold.
constexpr double kFarthest = 1e6;

struct Job {
    RectF layout;
    TextFormat format;
    Color color;
};

bool MovesOnly(const cairo_matrix_t& matrix) {
    return matrix.xx == 1 && matrix.yy == 1 && matrix.xy == 0 && matrix.yx == 0;
}

// Everything that may be drawn on, in pixels of the surface.
PixelBox ClipOf(cairo_t* cairo) {
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    cairo_identity_matrix(cairo);
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(cairo, &left, &top, &right, &bottom);
    cairo_set_matrix(cairo, &matrix);
    return {static_cast<int>(std::floor(left)), static_cast<int>(std::floor(top)),
            static_cast<int>(std::ceil(right)), static_cast<int>(std::ceil(bottom))};
}

// The layout's rectangle in pixels of the surface, where it clips; pixels that it cuts are in.
PixelBox CutToLayout(PixelBox clip, const cairo_matrix_t& matrix, const Job& job) {
    if (!job.format.Clips()) return clip;
    const double left = matrix.x0 + static_cast<double>(job.layout.X);
    const double top = matrix.y0 + static_cast<double>(job.layout.Y);
    const auto clamped = [](double value) {
        return static_cast<int>(std::clamp(value, -kFarthest, kFarthest));
    };
    if (job.format.width > 0) {
        clip = clip.Cut({clamped(std::floor(left)), clip.top,
                         clamped(std::ceil(left + static_cast<double>(job.format.width))), clip.bottom});
    }
    if (job.format.height > 0) {
        clip = clip.Cut({clip.left, clamped(std::floor(top)), clip.right,
                         clamped(std::ceil(top + static_cast<double>(job.format.height)))});
    }
    return clip;
}

void SetSource(cairo_t* cairo, const Color& color) {
    cairo_set_source_rgba(cairo, color.GetR() / 255.0, color.GetG() / 255.0, color.GetB() / 255.0,
                          color.GetA() / 255.0);
}

// On whole pixels, through the coverage: what is kept from an earlier drawing and what is rendered now
// cannot differ, wherever the clip cuts.
Status PaintCoverage(platform::DrawingPass& pass, CachedText& text, const Job& job, const PixelBox& clip,
                     int originX, int originY) {
    const PixelBox& ink = text.laid->Ink();
    const PixelBox visible = ink.Moved(originX, originY).Cut(clip);
    if (visible.IsEmpty()) {
        pass.Touched(RECT{0, 0, 0, 0});
        return Ok;
    }
    platform::SurfacePtr once;
    PixelBox part = ink;
    if (!text.coverage) {
        if (std::int64_t{ink.Width()} * ink.Height() <= kMostKeptCoverage) {
            text.coverage = RenderCoverage(*text.laid, ink);
            if (text.coverage) platform::TextShaper::OfThread().Cache().CountCoverage(text);
        } else {
            part = visible.Moved(-originX, -originY);
            once = RenderCoverage(*text.laid, part);
        }
    }
    cairo_surface_t* coverage = once ? once.get() : text.coverage.get();
    if (coverage == nullptr) return OutOfMemory;
    cairo_t* cairo = pass.Cairo();
    cairo_identity_matrix(cairo);
    cairo_rectangle(cairo, visible.left, visible.top, visible.Width(), visible.Height());
    cairo_clip(cairo);
    SetSource(cairo, job.color);
    cairo_mask_surface(cairo, coverage, part.left + originX, part.top + originY);
    pass.Touched(RECT{visible.left, visible.top, visible.right, visible.bottom});
    return Ok;
}

Status PaintTransformed(platform::DrawingPass& pass, const CachedText& text, const Job& job) {
    cairo_t* cairo = pass.Cairo();
    cairo_translate(cairo, static_cast<double>(job.layout.X), static_cast<double>(job.layout.Y));
    const PixelBox& ink = text.laid->Ink();
    if (job.format.Clips() && (job.format.width > 0 || job.format.height > 0)) {
        const bool acrossX = job.format.width > 0;
        const bool acrossY = job.format.height > 0;
        cairo_rectangle(cairo, acrossX ? 0 : ink.left, acrossY ? 0 : ink.top,
                        acrossX ? static_cast<double>(job.format.width) : ink.Width(),
                        acrossY ? static_cast<double>(job.format.height) : ink.Height());
        cairo_clip(cairo);
    }
    SetSource(cairo, job.color);
    text.laid->Show(cairo, ink.top, ink.bottom);
    return cairo_status(cairo) == CAIRO_STATUS_SUCCESS ? Ok : GenericError;
}

}  // namespace

Status Graphics::DrawString(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                            const StringFormat* format, const Brush* brush) {
    const auto* solid = dynamic_cast<const SolidBrush*>(brush);
    const std::optional<std::u16string_view> units = platform::StringArgument(text, length);
    if (!units || font == nullptr || !font->Data() || solid == nullptr ||
        !platform::IsPossibleLayout(layout)) {
        return Keep(InvalidParameter);
    }
    std::optional<platform::DrawingPass> pass = data_->Begin();
    if (!pass) return Keep(data_->status);
    Job job{layout, TextFormat(format, layout.Width, layout.Height), Color()};
    solid->GetColor(&job.color);

    cairo_matrix_t matrix;
    cairo_get_matrix(pass->Cairo(), &matrix);
    auto& cache = platform::TextShaper::OfThread().Cache();
    if (!MovesOnly(matrix)) {
        return Keep(PaintTransformed(*pass, *cache.Get(*units, font->Data(), job.format), job));
    }
    const PixelBox clip = CutToLayout(ClipOf(pass->Cairo()), matrix, job);
    const double x = std::floor(matrix.x0 + static_cast<double>(layout.X) + 0.5);
    const double y = std::floor(matrix.y0 + static_cast<double>(layout.Y) + 0.5);
    if (clip.IsEmpty() || units->empty() || std::abs(x) > kFarthest || std::abs(y) > kFarthest) {
        pass->Touched(RECT{0, 0, 0, 0});
        return Keep(Ok);
    }
    const std::shared_ptr<CachedText> laid = cache.Get(*units, font->Data(), job.format);
    return Keep(PaintCoverage(*pass, *laid, job, clip, static_cast<int>(x), static_cast<int>(y)));
}

Status Graphics::DrawString(LPCWSTR text, INT length, const Font* font, const PointF& origin,
                            const Brush* brush) {
    return DrawString(text, length, font, RectF(origin.X, origin.Y, 0, 0), nullptr, brush);
}

Status Graphics::MeasureString(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                               const StringFormat* format, RectF* box) const {
    if (box == nullptr) return Keep(InvalidParameter);
    *box = RectF();
    const std::optional<std::u16string_view> units = platform::StringArgument(text, length);
    if (!units || font == nullptr || !font->Data() || !platform::IsPossibleLayout(layout)) {
        return Keep(InvalidParameter);
    }
    if (data_->status != Ok) return Keep(data_->status);
    const TextFormat boxFormat(format, layout.Width, layout.Height);
    const std::shared_ptr<CachedText> laid =
        platform::TextShaper::OfThread().Cache().Get(*units, font->Data(), boxFormat);
    *box = laid->laid->Box();
    box->X += layout.X;
    box->Y += layout.Y;
    return Keep(Ok);
}

}  // namespace Gdiplus
