// Text widened by a pen, from masks that are kept for each glyph.
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>
#include <vector>

#include <platform/gdiplus.h>

#include "platform/graphics/draw_target.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/text/glyph_masks.h"
#include "platform/graphics/text/string_argument.h"
#include "platform/graphics/text/text_layout.h"
#include "platform/graphics/text/text_shaper.h"

namespace platform {
namespace {

// Coverage of a part of a surface. Where masks of two glyphs meet, they add up: beside each other they do not
// lie on top of each other.
class CoverageSheet {
  public:
    explicit CoverageSheet(const CRect& part)
        : part_(part),
          values_(static_cast<std::size_t>(part.Width()) * static_cast<std::size_t>(part.Height())) {}

    void Add(const CRect& box, const std::vector<std::uint8_t>& mask, POINT origin) {
        CRect placed = box;
        placed.OffsetRect(origin.x, origin.y);
        CRect inside;
        if (!inside.IntersectRect(placed, part_)) return;
        for (int y = inside.top; y < inside.bottom; ++y) {
            const std::uint8_t* const from =
                mask.data() + std::ptrdiff_t{y - placed.top} * placed.Width() + (inside.left - placed.left);
            std::uint8_t* const to = values_.data() + Offset(inside.left, y);
            for (int x = 0; x < inside.Width(); ++x)
                to[x] = static_cast<std::uint8_t>(std::min(to[x] + from[x], 255));
        }
    }
    void Blend(DrawTarget& target, std::uint32_t pixel) const {
        target.Paint(part_, [&](const CRect& part) {
            for (int y = part.top; y < part.bottom; ++y)
                BlendCoverageRow(target.Pixels().Row(y) + part.left, pixel,
                                 values_.data() + Offset(part.left, y),
                                 static_cast<std::size_t>(part.Width()));
        });
    }

  private:
    std::ptrdiff_t Offset(int x, int y) const {
        return std::ptrdiff_t{y - part_.top} * part_.Width() + (x - part_.left);
    }
    const CRect part_;
    std::vector<std::uint8_t> values_;
};

// Calls add(face, glyph, x, y) for the origin of each glyph with ink, from the text's corner; false when
// there is more to the text than such glyphs.
template <class Add>
bool ForEachGlyph(const TextLayout& text, const Add& add) {
    if (text.HasRules() || text.UnknownGlyphs() > 0) return false;
    for (const TextLine& line : text.Lines()) {
        double x = line.left + line.indent;
        for (const GSList* at = line.line->runs; at != nullptr; at = at->next) {
            const auto& run = *static_cast<const PangoLayoutRun*>(at->data);
            if (run.start_x_offset != 0 || run.end_x_offset != 0) return false;
            const double baseline = line.baseline - pango_units_to_double(run.y_offset);
            for (int i = 0; i < run.glyphs->num_glyphs; ++i) {
                const PangoGlyphInfo& info = run.glyphs->glyphs[i];
                if (info.glyph != PANGO_GLYPH_EMPTY &&
                    !add(run.item->analysis.font, info.glyph,
                         x + pango_units_to_double(info.geometry.x_offset),
                         baseline + pango_units_to_double(info.geometry.y_offset)))
                    return false;
                x += pango_units_to_double(info.geometry.width);
            }
        }
    }
    return true;
}

// False where the masks of single glyphs cannot make up the text.
bool DrawFromMasks(GraphicsData& graphics, DrawTarget& target, const TextLayout& text,
                   const Gdiplus::RectF& layout, const Gdiplus::Pen& pen) {
    constexpr int kMostPixels = 1 << 18;
    const World world(graphics, target);
    const CRect& box = target.Box();
    if (!world.IsUpright() || world.m11 != world.m22 || !(world.m11 > 0) || !graphics.IsSmooth() ||
        std::int64_t{box.Width()} * box.Height() > kMostPixels)
        return false;
    CoverageSheet strokes(box);
    CoverageSheet fills(box);
    GlyphMaskCache& cache = TextShaper::OfThread().Masks();
    const bool whole = ForEachGlyph(text, [&](PangoFont* face, PangoGlyph glyph, double x, double y) {
        const double atX = world.X(x + static_cast<double>(layout.X), 0);
        const double atY = world.Y(0, y + static_cast<double>(layout.Y));
        if (!(std::abs(atX) < kFarthest) || !(std::abs(atY) < kFarthest)) return false;
        const POINT pixel{static_cast<int>(std::floor(atX)), static_cast<int>(std::floor(atY))};
        const double width = std::max({0.0, static_cast<double>(pen.GetWidth()), 1.0 / world.m11});
        const GlyphMask* const mask =
            cache.Get(face, {glyph, world.m11, atX - pixel.x, atY - pixel.y, width});
        if (!mask) return false;
        strokes.Add(mask->box, mask->stroke, pixel);
        fills.Add(mask->box, mask->fill, pixel);
        return true;
    });
    if (!whole) return false;
    const std::uint32_t pixel = Premultiply(pen.GetColor().GetValue());
    strokes.Blend(target, pixel);
    fills.Blend(target, pixel);
    return true;
}

}  // namespace
}  // namespace platform

namespace Gdiplus {

Status Graphics::DrawWidenedString(LPCWSTR text, INT length, const FontFamily* family, INT style, REAL emSize,
                                   const RectF& layout, const StringFormat* format, const Pen* pen) try {
    const std::optional<std::u16string_view> units = platform::StringArgument(text, length);
    if (!units || !pen || !family || !family->IsAvailable() || !platform::IsPossibleLayout(layout))
        return Keep(InvalidParameter);
    const std::shared_ptr<platform::FontData> font =
        platform::FontData::Get(family->GetFamilyName().View(), emSize, style);
    if (!font) return Keep(InvalidParameter);
    platform::DrawTarget target;
    if (const Status status = target.Take(*data_); status != Ok) return Keep(status);
    if (target.Box().IsRectEmpty()) return Keep(Ok);
    const platform::TextFormat box(format, layout.Width, layout.Height);
    const auto cached = platform::TextShaper::OfThread().Cache().Get(*units, font, box);
    if (platform::DrawFromMasks(*data_, target, *cached->layout, layout, *pen)) return Keep(Ok);
    GraphicsPath outline(FillModeAlternate);
    const SolidBrush brush(pen->GetColor());
    Status status = outline.AddString(text, length, family, style, emSize, layout, format);
    if (status == Ok) status = DrawPath(pen, &outline);
    return status == Ok ? FillPath(&brush, &outline) : Keep(status);
} catch (const std::bad_alloc&) {
    return Keep(OutOfMemory);
}

}  // namespace Gdiplus
