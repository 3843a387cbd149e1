#include "platform/graphics/text/text_layout.h"

#include <pango/pangocairo.h>

#include <algorithm>

namespace platform {

int TextLayout::UnknownGlyphs() const {
    int count = 0;
    for (const TextLine& line : lines_) {
        for (const GSList* at = line.line->runs; at != nullptr; at = at->next) {
            const PangoGlyphString* glyphs = static_cast<const PangoLayoutRun*>(at->data)->glyphs;
            count += static_cast<int>(std::count_if(
                glyphs->glyphs, glyphs->glyphs + glyphs->num_glyphs,
                [](const auto& glyph) { return (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0; }));
        }
    }
    return count;
}

// add(x, y, width, height), in the text's coordinates.
template <class Add>
void TextLayout::ForEachRule(const TextLine& line, const Add& add) const {
    for (const TextRule& rule : {rules_.under, rules_.through}) {
        if (rule.thickness > 0 && line.ruled > 0) {
            add(line.left + line.indent, line.baseline + rule.top, line.ruled, rule.thickness);
        }
    }
}

void TextLayout::Show(cairo_t* target, int top, int bottom) const {
    const auto first = std::partition_point(
        lines_.begin(), lines_.end(), [&](const TextLine& line) { return line.baseline + below_ <= top; });
    for (auto at = first; at != lines_.end() && at->baseline - above_ < bottom; ++at) {
        cairo_move_to(target, at->left + at->indent, at->baseline);
        pango_cairo_show_layout_line(target, at->line);
        ForEachRule(*at, [target](int x, int y, int width, int height) {
            cairo_rectangle(target, x, y, width, height);
            cairo_fill(target);
        });
    }
}

void TextLayout::AddOutline(cairo_t* target, double x, double y) const {
    // A glyph's outline costs a hundred times its place in a line.
    constexpr int kMostGlyphs = 20'000;
    int glyphs = 0;
    for (const TextLine& line : lines_) {
        for (const GSList* at = line.line->runs; at != nullptr; at = at->next)
            glyphs += static_cast<const PangoLayoutRun*>(at->data)->glyphs->num_glyphs;
        if (glyphs > kMostGlyphs && &line != &lines_.front()) break;
        cairo_move_to(target, x + line.left + line.indent, y + line.baseline);
        pango_cairo_layout_line_path(target, line.line);
        ForEachRule(line, [=](int left, int top, int width, int height) {
            cairo_rectangle(target, x + left, y + top, width, height);
        });
    }
}

}  // namespace platform
