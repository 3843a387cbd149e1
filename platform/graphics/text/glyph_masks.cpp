#include "platform/graphics/text/glyph_masks.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/graphics/counters.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/text/coverage.h"

namespace platform {
namespace {

// Cuts off the rows and columns that nothing touches.
CRect Inked(const Coverage& coverage, const CRect& box) {
    CRect ink;
    for (int y = box.top; y < box.bottom; ++y) {
        const std::uint8_t* const row = coverage.At(box.left, y);
        const std::uint8_t* const end = row + box.Width();
        const auto isSet = [](std::uint8_t value) { return value != 0; };
        const std::uint8_t* const first = std::find_if(row, end, isSet);
        if (first == end) continue;
        const std::uint8_t* last = end;
        while (!last[-1])
            --last;
        ink.UnionRect(CRect(ink), CRect(box.left + static_cast<int>(first - row), y,
                                        box.left + static_cast<int>(last - row), y + 1));
    }
    return ink;
}

std::vector<std::uint8_t> Cut(const Coverage& coverage, const CRect& part) {
    std::vector<std::uint8_t> values;
    for (int y = part.top; y < part.bottom; ++y)
        values.insert(values.end(), coverage.At(part.left, y), coverage.At(part.left, y) + part.Width());
    return values;
}

// The outline is taken unscaled, as a path of a whole text takes it, and scaled then.
bool Render(PangoFont* face, const GlyphKey& place, GlyphMask& mask) {
    cairo_scaled_font_t* const font =
        PANGO_IS_CAIRO_FONT(face) ? pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(face)) : nullptr;
    if (!font) return false;
    const PathData path(Gdiplus::FillModeAlternate);
    const cairo_glyph_t glyph{place.glyph, 0, 0};
    cairo_set_scaled_font(path.outline, font);
    cairo_glyph_path(path.outline, &glyph, 1);
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_path_extents(path.outline, &left, &top, &right, &bottom);
    if (cairo_status(path.outline) != CAIRO_STATUS_SUCCESS) return false;
    if (!(right > left) && !(bottom > top)) return true;
    const double reach = 5 * place.penWidth * place.scale + 2;  // a mitre is ten times half the width at most
    const CRect box(static_cast<int>(std::floor(left * place.scale + place.phaseX - reach)),
                    static_cast<int>(std::floor(top * place.scale + place.phaseY - reach)),
                    static_cast<int>(std::ceil(right * place.scale + place.phaseX + reach)),
                    static_cast<int>(std::ceil(bottom * place.scale + place.phaseY + reach)));
    cairo_path_t* const outline = cairo_copy_path(path.outline);
    const auto draw = [&](auto finish) {
        return Coverage::Render(box, [&](cairo_t* cairo) {
            cairo_set_antialias(cairo, CAIRO_ANTIALIAS_GRAY);
            cairo_translate(cairo, place.phaseX, place.phaseY);
            cairo_scale(cairo, place.scale, place.scale);
            cairo_append_path(cairo, outline);
            finish(cairo);
        });
    };
    const Coverage stroke = draw([&](cairo_t* cairo) {
        cairo_set_line_width(cairo, place.penWidth);
        cairo_stroke(cairo);
    });
    const Coverage fill = draw([](cairo_t* cairo) {
        cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
        cairo_fill(cairo);
    });
    cairo_path_destroy(outline);
    if (stroke.IsEmpty() || fill.IsEmpty()) return false;
    mask.box.UnionRect(Inked(stroke, box), Inked(fill, box));
    mask.stroke = Cut(stroke, mask.box);
    mask.fill = Cut(fill, mask.box);
    return true;
}

}  // namespace

const GlyphMask* GlyphMaskCache::Get(PangoFont* face, const GlyphKey& place) {
    constexpr std::size_t kOverhead = 160;  // of a kept glyph, besides its coverage
    const auto known = faces_.find(face);
    if (known != faces_.end())
        if (const auto found = known->second.masks.find(place); found != known->second.masks.end())
            return &found->second;
    GlyphMask mask;
    if (!Render(face, place, mask)) return nullptr;
    const std::size_t bytes = mask.stroke.size() + mask.fill.size() + kOverhead;
    if (bytes_ + bytes > DrawingCacheLimit().load(std::memory_order_relaxed) / 8) {
        faces_.clear();
        bytes_ = 0;
    }
    Face& kept = faces_[face];
    if (!kept.font) {
        kept.font.reset(static_cast<PangoFont*>(g_object_ref(face)));
        bytes_ += TextCache::kFaceBytes;
    }
    bytes_ += bytes;
    return &kept.masks.emplace(place, std::move(mask)).first->second;
}

}  // namespace platform
