// Pictures, at their own size or scaled.
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include <platform/gdiplus.h>

#include "platform/graphics/draw_target.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/offscreen_layer.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/resample.h"
#include "platform/graphics/scaled_cache.h"

namespace platform {
namespace {

using Gdiplus::Ok;
using Gdiplus::Status;

// What DrawImage is asked for: a part of a picture, in its pixels, and where it goes, in world units.
struct Placement {
    Box to;
    Box from;
    Gdiplus::WrapMode wrap = Gdiplus::WrapModeClamp;
    Gdiplus::Color outside = Gdiplus::Color(0, 0, 0, 0);
    bool copies = false;  // what is there goes, instead of being drawn over

    Tiling TilingX() const {
        if (wrap == Gdiplus::WrapModeClamp) return Tiling::None;
        const bool repeats = wrap == Gdiplus::WrapModeTile || wrap == Gdiplus::WrapModeTileFlipY;
        return repeats ? Tiling::Repeat : Tiling::Mirror;
    }
    Tiling TilingY() const {
        if (wrap == Gdiplus::WrapModeClamp) return Tiling::None;
        const bool repeats = wrap == Gdiplus::WrapModeTile || wrap == Gdiplus::WrapModeTileFlipX;
        return repeats ? Tiling::Repeat : Tiling::Mirror;
    }
    // Whether tiles beyond a picture of this size are to be seen.
    bool ShowsTiles(int width, int height) const {
        return wrap != Gdiplus::WrapModeClamp &&
               (from.left < 0 || from.top < 0 || from.right > width || from.bottom > height);
    }
};

// Below this many pixels it is cheaper to blend than to know that copying would do.
constexpr std::int64_t kWorthKnowing = 512;
// A scaled copy is made whole, for later paints, unless it is larger than this and mostly out of sight.
constexpr std::int64_t kAlwaysWhole = std::int64_t{1} << 18;

// A copy of so many pixels is kept only when it is asked for again; until then they are scaled where they
// show.
constexpr std::int64_t kWorthWaiting = std::int64_t{1} << 18;

std::int64_t AreaOf(const CRect& rect) {
    return rect.IsRectEmpty() ? 0 : std::int64_t{rect.Width()} * rect.Height();
}

// Pixels to be drawn with their (0, 0) at (left, top) of the surface.
struct Placed {
    const Surface& pixels;
    int left, top;
    bool copied;  // not blended
};

void Paint(DrawTarget& target, const CRect& rect, const Placed& placed) {
    if (placed.copied)
        target.Paint(rect, [&](const CRect& part) {
            CopyPixels(target.Pixels(), part, placed.pixels, placed.left, placed.top);
        });
    else
        target.Paint(rect, [&](const CRect& part) {
            BlendPixels(target.Pixels(), part, placed.pixels, placed.left, placed.top);
        });
}

// One DrawImage on a target. `to` is the destination on whole pixels of the surface.
class ImagePainter {
  public:
    ImagePainter(DrawTarget& target, ImageData& image, const Placement& placement, const CRect& to,
                 Filter filter)
        : target_(target), image_(image), placement_(placement), to_(to), filter_(filter) {}

    Status Draw() {
        source_ = image_.Pixels();
        revision_ = image_.CurrentRevision();
        if (source_ == target_.Share()) {
            // An image drawn onto itself shows what it showed before.
            source_ = Surface::CreateUnset(source_->Width(), source_->Height());
            if (!source_) return Gdiplus::OutOfMemory;
            CopyPixels(*source_, Whole(), *image_.Pixels(), 0, 0);
        }
        showsTiles_ = placement_.ShowsTiles(source_->Width(), source_->Height());
        return IsUnscaled() && !showsTiles_ ? DrawUnscaled() : DrawScaled();
    }

  private:
    CRect Whole() const { return CRect(0, 0, source_->Width(), source_->Height()); }

    bool IsUnscaled() const {
        const Box& from = placement_.from;
        return from.Width() == to_.Width() && from.Height() == to_.Height() &&
               from.left == std::floor(from.left) && from.top == std::floor(from.top);
    }

    Status DrawUnscaled() {
        const int sourceLeft = static_cast<int>(placement_.from.left);
        const int sourceTop = static_cast<int>(placement_.from.top);
        CRect part(sourceLeft, sourceTop, sourceLeft + to_.Width(), sourceTop + to_.Height());
        if (!part.IntersectRect(part, Whole())) return FillOutside(CRect());
        CRect covered = part;
        covered.OffsetRect(to_.left - sourceLeft, to_.top - sourceTop);
        const bool copied =
            placement_.copies || (AreaOf(part) >= kWorthKnowing && revision_->IsOpaque(*source_, part));
        Paint(target_, covered, {*source_, to_.left - sourceLeft, to_.top - sourceTop, copied});
        return FillOutside(covered);
    }

    // The part of the destination that shows the picture or its tiles.
    CRect Covered() const {
        if (showsTiles_) return to_;
        const Box& from = placement_.from;
        const Span across = CoveredBy(from.left, from.Width(), source_->Width(), to_.Width());
        const Span down = CoveredBy(from.top, from.Height(), source_->Height(), to_.Height());
        return CRect(to_.left + across.first, to_.top + down.first, to_.left + across.second,
                     to_.top + down.second);
    }

    Status DrawScaled() {
        const CRect covered = Covered();
        if (covered.IsRectEmpty()) return FillOutside(CRect());
        CRect visible;
        if (!visible.IntersectRect(covered, target_.Box())) return FillOutside(covered);

        const CRect made = PartToMake(covered);
        std::optional<ScaledPicture> scaled = Cached(made, AreaOf(visible));
        if (!scaled && placement_.copies)
            return ScaleInPlace(visible) ? FillOutside(covered) : Gdiplus::OutOfMemory;
        CRect at = made;
        if (!scaled) {
            at = visible;
            scaled = Make(ScalingOf(at));
        }
        if (!scaled->pixels) return Gdiplus::OutOfMemory;
        Paint(target_, visible, {*scaled->pixels, at.left, at.top, placement_.copies || scaled->opaque});
        return FillOutside(covered);
    }

    bool ScaleInPlace(const CRect& visible) {
        bool done = true;
        target_.Paint(visible, [&](const CRect& part) {
            done = done && ResampleInto(target_.Pixels(), part.left, part.top, *source_, ScalingOf(part));
        });
        return done;
    }

    // What to scale, in surface coordinates: all of it, or what the surface can show.
    CRect PartToMake(const CRect& covered) const {
        const CRect surface(0, 0, target_.Pixels().Width(), target_.Pixels().Height());
        CRect shown;
        shown.IntersectRect(covered, surface);
        return AreaOf(covered) <= std::max(4 * AreaOf(shown), kAlwaysWhole) ? covered : shown;
    }

    Scaling ScalingOf(const CRect& part) const {
        Scaling scaling;
        scaling.sourceX = placement_.from.left;
        scaling.sourceY = placement_.from.top;
        scaling.sourceWidth = placement_.from.Width();
        scaling.sourceHeight = placement_.from.Height();
        scaling.width = to_.Width();
        scaling.height = to_.Height();
        scaling.left = part.left - to_.left;
        scaling.top = part.top - to_.top;
        scaling.right = part.right - to_.left;
        scaling.bottom = part.bottom - to_.top;
        scaling.filter = filter_;
        // Mirroring a picture that is not left shows what continuing its edges does.
        const auto needed = [&](Tiling tiling) {
            return tiling == Tiling::Mirror && !showsTiles_ ? Tiling::None : tiling;
        };
        scaling.tilingX = needed(placement_.TilingX());
        scaling.tilingY = needed(placement_.TilingY());
        return scaling;
    }

    ScaledPicture Make(const Scaling& scaling) const {
        ScaledPicture made;
        const std::shared_ptr<Surface> pixels = Resample(*source_, scaling);
        made.opaque = pixels && IsOpaqueSurface(*pixels);
        made.pixels = pixels;
        return made;
    }

    static bool IsOpaqueSurface(const Surface& pixels) {
        for (int y = 0; y < pixels.Height(); ++y)
            if (!IsOpaqueRow(pixels.Row(y), static_cast<std::size_t>(pixels.Width()))) return false;
        return true;
    }

    // Empty when the scaled copy cannot be kept, or has not been asked for often enough; `shown` pixels of
    // it, which are being painted, will do then.
    std::optional<ScaledPicture> Cached(const CRect& part, std::int64_t shown) const {
        if (!Surface::IsPossible(part.Width(), part.Height()) || !ScaledCache::Get().Admits(AreaOf(part)))
            return {};
        const ScaledKey key{revision_->Id(), ScalingOf(part)};
        ScaledPicture scaled = ScaledCache::Get().Find(key);
        if (scaled.pixels) return scaled;
        if (placement_.copies && AreaOf(part) >= kWorthWaiting &&
            !ScaledCache::Get().IsWorthKeeping(key, shown))
            return {};
        scaled = Make(key.scaling);
        if (scaled.pixels) {
            revision_->NoteScaled();
            ScaledCache::Get().Insert(key, scaled);
        }
        return scaled;
    }

    // The rest of the destination, which lies outside the picture.
    Status FillOutside(const CRect& covered) {
        if (placement_.wrap != Gdiplus::WrapModeClamp || placement_.outside.GetA() == 0) return Ok;
        const std::uint32_t pixel = Premultiply(placement_.outside.GetValue());
        const auto fill = [&](int left, int top, int right, int bottom) {
            target_.Paint(CRect(left, top, right, bottom), [&](const CRect& part) {
                if (placement_.copies)
                    FillPixels(target_.Pixels(), part, pixel);
                else
                    BlendColor(target_.Pixels(), part, pixel);
            });
        };
        if (covered.IsRectEmpty()) {
            fill(to_.left, to_.top, to_.right, to_.bottom);
            return Ok;
        }
        fill(to_.left, to_.top, to_.right, covered.top);
        fill(to_.left, covered.top, covered.left, covered.bottom);
        fill(covered.right, covered.top, to_.right, covered.bottom);
        fill(to_.left, covered.bottom, to_.right, to_.bottom);
        return Ok;
    }

    DrawTarget& target_;
    ImageData& image_;
    const Placement& placement_;
    const CRect to_;
    const Filter filter_;
    bool showsTiles_ = false;
    std::shared_ptr<Surface> source_;
    std::shared_ptr<ImageRevision> revision_;
};

Filter FilterOf(const GraphicsData& graphics) {
    switch (graphics.interpolation) {
        case Gdiplus::InterpolationModeNearestNeighbor:
            return Filter::Nearest;
        case Gdiplus::InterpolationModeHighQuality:
        case Gdiplus::InterpolationModeHighQualityBilinear:
        case Gdiplus::InterpolationModeHighQualityBicubic:
            return Filter::Smooth;
        default:
            return Filter::Bilinear;
    }
}

// The tiles that a source rectangle reaches over as a picture of their own, not larger than they will show,
// and not larger than a screen. The placement is that of the new picture.
std::shared_ptr<Surface> TilesOf(const Surface& picture, const World& world, Filter filter,
                                 Placement& placement) {
    constexpr double kMostSide = 4096;
    const auto side = [&](double source, double shown) {
        return static_cast<int>(std::ceil(std::clamp(std::min(source, shown), 1.0, kMostSide)));
    };
    const Box from = placement.from;
    Scaling scaling;
    scaling.sourceX = from.left;
    scaling.sourceY = from.top;
    scaling.sourceWidth = from.Width();
    scaling.sourceHeight = from.Height();
    scaling.width = scaling.right =
        side(from.Width(), placement.to.Width() * std::hypot(world.m11, world.m12));
    scaling.height = scaling.bottom =
        side(from.Height(), placement.to.Height() * std::hypot(world.m21, world.m22));
    scaling.filter = filter;
    scaling.tilingX = placement.TilingX();
    scaling.tilingY = placement.TilingY();
    placement.from = {0, 0, 1.0 * scaling.width, 1.0 * scaling.height};
    return Resample(picture, scaling);
}

std::shared_ptr<Surface> PartOf(const Surface& picture, const CRect& part) {
    std::shared_ptr<Surface> piece = Surface::CreateUnset(part.Width(), part.Height());
    if (piece) CopyPixels(*piece, CRect(0, 0, part.Width(), part.Height()), picture, -part.left, -part.top);
    return piece;
}

// Turned or mirrored by the world transform: left to cairo, which gets the source rectangle as a picture of
// its own and so cannot look beyond it.
Status DrawTurned(GraphicsData& graphics, DrawTarget& target, ImageData& image, Placement placement) {
    CRect whole(0, 0, image.Pixels()->Width(), image.Pixels()->Height());
    std::shared_ptr<Surface> piece;
    if (placement.ShowsTiles(whole.right, whole.bottom)) {
        piece =
            TilesOf(*image.Pixels(), World(graphics, {0, 0}, target.Scale()), FilterOf(graphics), placement);
        if (!piece) return Gdiplus::OutOfMemory;
        whole = CRect(0, 0, piece->Width(), piece->Height());
    }
    const Box& from = placement.from;
    CRect part(static_cast<int>(std::floor(from.left)), static_cast<int>(std::floor(from.top)),
               static_cast<int>(std::ceil(from.right)), static_cast<int>(std::ceil(from.bottom)));
    if (!part.IntersectRect(part, whole)) return Ok;
    if (!piece) piece = PartOf(*image.Pixels(), part);
    if (!piece) return Gdiplus::OutOfMemory;

    OffscreenLayer layer;
    const Status status = layer.Prepare(graphics, target, placement.to, 0, OffscreenLayer::Kind::Pixels);
    if (status != Ok || !layer.Cairo()) return status;
    cairo_t* const cairo = layer.Cairo();
    cairo_translate(cairo, placement.to.left, placement.to.top);
    cairo_scale(cairo, placement.to.Width() / from.Width(), placement.to.Height() / from.Height());
    cairo_translate(cairo, -from.left, -from.top);
    const double left = std::max(from.left, 0.0);
    const double top = std::max(from.top, 0.0);
    cairo_rectangle(cairo, left, top, std::min(from.right, 1.0 * whole.right) - left,
                    std::min(from.bottom, 1.0 * whole.bottom) - top);
    cairo_set_source_surface(cairo, piece->Cairo(), part.left, part.top);
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(cairo_get_source(cairo), FilterOf(graphics) == Filter::Nearest
                                                          ? CAIRO_FILTER_NEAREST
                                                          : CAIRO_FILTER_GOOD);
    cairo_fill(cairo);
    if (cairo_status(cairo) != CAIRO_STATUS_SUCCESS) return Gdiplus::GenericError;
    layer.BlendPixels(target);
    return Ok;
}

Status DrawPicture(GraphicsData& graphics, const Gdiplus::Image* image, Placement placement) {
    if (!image || !image->Data()->IsGood() || !IsDrawable(placement.to) || !IsDrawable(placement.from))
        return Gdiplus::InvalidParameter;
    const int scale = image->Data()->Scale();
    placement.from = {placement.from.left * scale, placement.from.top * scale, placement.from.right * scale,
                      placement.from.bottom * scale};
    DrawTarget target;
    if (const Status status = target.Take(graphics); status != Ok) return status;
    if (!(placement.to.Width() > 0) || !(placement.to.Height() > 0) || !(placement.from.Width() > 0) ||
        !(placement.from.Height() > 0) || target.Box().IsRectEmpty())
        return Ok;
    const World world(graphics, target);
    const Box device = Transformed(world, placement.to);
    if (!IsDrawable(device)) return Gdiplus::InvalidParameter;
    if (!world.IsUpright() || world.m11 < 0 || world.m22 < 0)
        return DrawTurned(graphics, target, *image->Data(), placement);
    const CRect to = Rounded(device);
    CRect visible;
    if (!visible.IntersectRect(to, target.Box())) return Ok;
    if (graphics.compositing == Gdiplus::CompositingModeSourceCopy) {
        // A format without alpha shows every picture as if it lay on black.
        placement.copies = !target.IsOpaqueFormat();
        if (!placement.copies)
            target.Paint(visible, [&](const CRect& part) { FillPixels(target.Pixels(), part, 0xFF000000); });
    }
    return ImagePainter(target, *image->Data(), placement, to, FilterOf(graphics)).Draw();
}

Box BoxOf(double x, double y, double width, double height) {
    return {x, y, x + width, y + height};
}

Box WholeOf(const Gdiplus::Image* image) {
    return image ? BoxOf(0, 0, image->GetWidth(), image->GetHeight()) : Box{};
}

void Apply(const Gdiplus::ImageAttributes* attributes, Placement& placement) {
    if (!attributes) return;
    placement.wrap = attributes->GetWrapMode();
    placement.outside = attributes->GetWrapColor();
}

}  // namespace
}  // namespace platform

namespace Gdiplus {

using platform::BoxOf;
using platform::Placement;

Status Graphics::DrawImage(Image* image, INT x, INT y) {
    const platform::Box whole = platform::WholeOf(image);
    return Keep(platform::DrawPicture(*data_, image, {BoxOf(x, y, whole.Width(), whole.Height()), whole}));
}

Status Graphics::DrawImage(Image* image, INT x, INT y, INT width, INT height) {
    return Keep(platform::DrawPicture(*data_, image, {BoxOf(x, y, width, height), platform::WholeOf(image)}));
}

Status Graphics::DrawImage(Image* image, const Rect& destination) {
    return DrawImage(image, destination.X, destination.Y, destination.Width, destination.Height);
}

Status Graphics::DrawImage(Image* image, const RectF& destination) {
    return Keep(
        platform::DrawPicture(*data_, image,
                              {BoxOf(destination.X, destination.Y, destination.Width, destination.Height),
                               platform::WholeOf(image)}));
}

Status Graphics::DrawImage(Image* image, const Rect& destination, INT srcX, INT srcY, INT srcWidth,
                           INT srcHeight, Unit unit, const ImageAttributes* attributes) {
    if (unit != UnitPixel) return Keep(InvalidParameter);
    Placement placement{BoxOf(destination.X, destination.Y, destination.Width, destination.Height),
                        BoxOf(srcX, srcY, srcWidth, srcHeight)};
    platform::Apply(attributes, placement);
    return Keep(platform::DrawPicture(*data_, image, placement));
}

Status Graphics::DrawImage(Image* image, const RectF& destination, REAL srcX, REAL srcY, REAL srcWidth,
                           REAL srcHeight, Unit unit, const ImageAttributes* attributes) {
    if (unit != UnitPixel) return Keep(InvalidParameter);
    Placement placement{BoxOf(destination.X, destination.Y, destination.Width, destination.Height),
                        BoxOf(srcX, srcY, srcWidth, srcHeight)};
    platform::Apply(attributes, placement);
    return Keep(platform::DrawPicture(*data_, image, placement));
}

}  // namespace Gdiplus
