#include "platform/graphics/text/text_layout.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <set>

namespace platform {

int LaidText::UnknownGlyphs() const {
    std::set<PangoLayout*> layouts;
    int count = 0;
    for (const TextLine& line : lines_) {
        if (layouts.insert(line.layout.get()).second) {
            count += pango_layout_get_unknown_glyphs_count(line.layout.get());
        }
    }
    return count;
}

void LaidText::Show(cairo_t* target, int top, int bottom) const {
    const auto first = std::partition_point(
        lines_.begin(), lines_.end(), [&](const TextLine& line) { return line.baseline + below_ <= top; });
    for (auto at = first; at != lines_.end() && at->baseline - above_ < bottom; ++at) {
        cairo_move_to(target, at->left + at->indent, at->baseline);
        pango_cairo_show_layout_line(target, at->line);
    }
}

void LaidText::AddOutline(cairo_t* target, double x, double y) const {
    for (const TextLine& line : lines_) {
        cairo_move_to(target, x + line.left + line.indent, y + line.baseline);
        pango_cairo_layout_line_path(target, line.line);
    }
}

}  // namespace platform
