// Drawing and measuring text.
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include <platform/gdiplus.h>

#include "platform/graphics/draw_target.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/text/coverage.h"
#include "platform/graphics/text/string_argument.h"
#include "platform/graphics/text/text_cache.h"
#include "platform/graphics/text/text_layout.h"
#include "platform/graphics/text/text_shaper.h"

namespace platform {
namespace {

using Gdiplus::Ok;
using Gdiplus::Status;

// Coverage of more pixels is rendered anew each time, where it is visible.
constexpr std::int64_t kMostKeptCoverage = std::int64_t{1} << 20;
// No surface is so far away, and whole numbers hold.
constexpr double kFarthestText = 1e6;

struct TextJob {
    std::u16string_view text;
    const std::shared_ptr<FontData>& font;
    Gdiplus::RectF layout;
    TextFormat format;
    Gdiplus::Color color;

    std::shared_ptr<CachedText> Layout() const {
        return TextShaper::OfThread().Cache().Get(text, font, format);
    }
};

bool MovesOnly(const World& world) {
    return world.IsUpright() && world.m11 == 1 && world.m22 == 1;
}

int Whole(double edge) {
    return static_cast<int>(std::clamp(edge, -kFarthestText, kFarthestText));
}

// What a pixel becomes, negative where it is turned over.
double Area(const World& world) {
    return world.m11 * world.m22 - world.m12 * world.m21;
}

// From where to where, downward before the transform, what comes to lie in a rectangle can be.
std::pair<double, double> RowsUnder(const World& world, const CRect& rect) {
    const auto back = [&world](double x, double y) {
        return ((y - world.dy) * world.m11 - (x - world.dx) * world.m12) / Area(world);
    };
    return std::minmax({back(rect.left, rect.top), back(rect.right, rect.top), back(rect.left, rect.bottom),
                        back(rect.right, rect.bottom)});
}

// What is left of `box` where the layout's rectangle clips; pixels that its edges cut are left. The
// rectangle stands at (x, y) of the surface.
CRect CutToLayout(CRect box, double x, double y, const TextFormat& format) {
    if (!format.Clips()) return box;
    if (format.width > 0) {
        box.left = std::max(box.left, Whole(std::floor(x)));
        box.right = std::min(box.right, Whole(std::ceil(x + static_cast<double>(format.width))));
    }
    if (format.height > 0) {
        box.top = std::max(box.top, Whole(std::floor(y)));
        box.bottom = std::min(box.bottom, Whole(std::ceil(y + static_cast<double>(format.height))));
    }
    return box;
}

void Blend(DrawTarget& target, const CRect& visible, const Coverage& coverage, POINT origin,
           std::uint32_t pixel) {
    target.Paint(visible, [&](const CRect& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            BlendCoverageRow(target.Pixels().Row(y) + part.left, pixel,
                             coverage.At(part.left - origin.x, y - origin.y),
                             static_cast<std::size_t>(part.Width()));
        }
    });
}

// Where the top left corner of the layout's rectangle comes to stand.
POINT Origin(double x, double y) {
    return {static_cast<int>(std::floor(x + 0.5)), static_cast<int>(std::floor(y + 0.5))};
}

// Unscaled text stands on whole pixels and is painted through its coverage: what is kept from an earlier
// drawing and what is rendered now cannot differ, wherever the clip cuts.
Status DrawOnPixels(DrawTarget& target, const World& world, const TextJob& job) {
    const double x = world.dx + static_cast<double>(job.layout.X);
    const double y = world.dy + static_cast<double>(job.layout.Y);
    if (std::abs(x) > kFarthestText || std::abs(y) > kFarthestText) return Ok;
    const CRect clip = CutToLayout(target.Box(), x, y, job.format);
    if (clip.IsRectEmpty() || job.text.empty() || job.color.GetA() == 0) return Ok;

    const std::shared_ptr<CachedText> text = job.Layout();
    const POINT origin = Origin(x, y);
    const CRect ink = text->layout->Ink();
    CRect visible = ink;
    visible.OffsetRect(origin.x, origin.y);
    if (!visible.IntersectRect(visible, clip)) return Ok;

    const std::uint32_t pixel = Premultiply(job.color.GetValue());
    if (text->coverage.IsEmpty() && std::int64_t{ink.Width()} * ink.Height() <= kMostKeptCoverage) {
        text->coverage = Coverage::Render(*text->layout, ink);
        TextShaper::OfThread().Cache().CountCoverage(*text);
    }
    if (!text->coverage.IsEmpty()) {
        Blend(target, visible, text->coverage, origin, pixel);
        return Ok;
    }
    CRect part = visible;
    part.OffsetRect(-origin.x, -origin.y);
    const Coverage once = Coverage::Render(*text->layout, part);
    if (once.IsEmpty()) return Gdiplus::OutOfMemory;
    Blend(target, visible, once, origin, pixel);
    return Ok;
}

void ClipToLayout(cairo_t* cairo, const CRect& ink, const TextFormat& format) {
    const bool cutsX = format.width > 0;
    const bool cutsY = format.height > 0;
    if (!format.Clips() || !(cutsX || cutsY)) return;
    cairo_rectangle(cairo, cutsX ? 0 : ink.left, cutsY ? 0 : ink.top,
                    cutsX ? static_cast<double>(format.width) : ink.Width(),
                    cutsY ? static_cast<double>(format.height) : ink.Height());
    cairo_clip(cairo);
}

// Rendered for the whole surface, wherever the clip cuts: what lies under edges that do not follow the pixels
// comes out differently in parts.
Status DrawTransformed(DrawTarget& target, const World& world, const TextJob& job) {
    constexpr double kLeastArea = 1e-9;  // that a pixel may become
    if (std::abs(Area(world)) < kLeastArea) return Ok;
    const std::shared_ptr<CachedText> text = job.Layout();
    const auto x = static_cast<double>(job.layout.X);
    const auto y = static_cast<double>(job.layout.Y);
    const CRect ink = text->layout->Ink();
    const Box box = Transformed(world, {x + ink.left, y + ink.top, x + ink.right, y + ink.bottom});
    if (ink.IsRectEmpty() || !IsDrawable(box)) return Ok;
    CRect around = Rounded(box);
    around.InflateRect(2, 2);
    around.IntersectRect(around, CRect(0, 0, target.Pixels().Width(), target.Pixels().Height()));
    CRect visible;
    if (!visible.IntersectRect(around, target.Box())) return Ok;
    const Coverage coverage = Coverage::Render(around, [&](cairo_t* cairo) {
        const cairo_matrix_t matrix{world.m11, world.m12, world.m21, world.m22, world.dx, world.dy};
        cairo_transform(cairo, &matrix);
        cairo_translate(cairo, x, y);
        ClipToLayout(cairo, ink, job.format);
        const auto [top, bottom] = RowsUnder(world, around);
        text->layout->Show(cairo, Whole(std::floor(top - y)), Whole(std::ceil(bottom - y)));
    });
    if (coverage.IsEmpty()) return Gdiplus::OutOfMemory;
    Blend(target, visible, coverage, {0, 0}, Premultiply(job.color.GetValue()));
    return Ok;
}

Status Draw(GraphicsData& graphics, const TextJob& job) try {
    DrawTarget target;
    if (const Status status = target.Take(graphics); status != Ok) return status;
    const World world(graphics, target);
    return MovesOnly(world) ? DrawOnPixels(target, world, job) : DrawTransformed(target, world, job);
} catch (const std::bad_alloc&) {
    return Gdiplus::OutOfMemory;
}

// Throws std::bad_alloc.
Gdiplus::TextExtent Measure(std::u16string_view text, const std::shared_ptr<FontData>& font,
                            const Gdiplus::RectF& layout, const TextFormat& format) {
    const std::shared_ptr<CachedText> cached = TextShaper::OfThread().Cache().Get(text, font, format);
    const TextLayout& laid = *cached->layout;
    Gdiplus::TextExtent extent;
    extent.box = laid.Box();
    extent.box.X += layout.X;
    extent.box.Y += layout.Y;
    const auto x = static_cast<double>(layout.X);
    const auto y = static_cast<double>(layout.Y);
    if (std::abs(x) > kFarthestText || std::abs(y) > kFarthestText) return extent;
    const POINT origin = Origin(x, y);
    CRect ink = laid.Ink();
    ink.OffsetRect(origin.x, origin.y);
    ink = CutToLayout(ink, x, y, format);
    if (!ink.IsRectEmpty()) extent.ink = Gdiplus::Rect(ink.left, ink.top, ink.Width(), ink.Height());
    return extent;
}

}  // namespace
}  // namespace platform

namespace Gdiplus {

Status Graphics::DrawString(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                            const StringFormat* format, const Brush* brush) {
    const auto* solid = dynamic_cast<const SolidBrush*>(brush);
    const std::optional<std::u16string_view> units = platform::StringArgument(text, length);
    Color color;
    if (!units || font == nullptr || !font->Data() || solid == nullptr || solid->GetColor(&color) != Ok ||
        !platform::IsPossibleLayout(layout)) {
        return Keep(InvalidParameter);
    }
    const platform::TextFormat box(format, layout.Width, layout.Height);
    return Keep(platform::Draw(*data_, {*units, font->Data(), layout, box, color}));
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
    // A context without a bitmap can be measured for, one that is gone cannot.
    data_->Check();
    if (data_->status != Ok) return Keep(data_->status);
    try {
        const platform::TextFormat limits(format, layout.Width, layout.Height);
        *box = platform::Measure(*units, font->Data(), layout, limits).box;
    } catch (const std::bad_alloc&) {
        return Keep(OutOfMemory);
    }
    return Keep(Ok);
}

TextExtent GetTextExtent(LPCWSTR text, INT length, const Font* font, const RectF& layout,
                         const StringFormat* format) try {
    const std::optional<std::u16string_view> units = platform::StringArgument(text, length);
    if (!units || font == nullptr || !font->Data() || !platform::IsPossibleLayout(layout)) return {};
    return platform::Measure(*units, font->Data(), layout, {format, layout.Width, layout.Height});
} catch (const std::bad_alloc&) {
    return {};
}

}  // namespace Gdiplus
