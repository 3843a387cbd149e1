// A text laid into its box: broken into lines, trimmed and placed.
#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <memory>
#include <string_view>
#include <vector>

#include <platform/geometry.h>

#include "platform/graphics/text/font_data.h"
#include "platform/graphics/text/text_format.h"
#include "platform/graphics/text/text_shaper.h"

namespace platform {

struct TextLine {
    std::shared_ptr<PangoLayout> layout;  // owns the line
    PangoLayoutLine* line = nullptr;
    LineReach reach;
    int width = 0;   // that the line takes up
    int ruled = 0;   // of it, from the pen's start, what a rule runs along
    int indent = 0;  // from its left edge to the pen's start, where a glyph reaches out to the left
    int left = 0;    // placed
    int baseline = 0;
    CRect ink;  // placed; a pixel wider all round than what the glyphs say
};

// A face that glyphs of a text come from, with what a line of it reserves.
struct TextFace {
    ObjectPtr<PangoFont> font;
    LineReach reach;
};

// All coordinates are whole pixels from the top left of the box.
class TextLayout {
  public:
    static std::shared_ptr<const TextLayout> LayOut(std::u16string_view text, const FontData& font,
                                                    const TextFormat& format);

    // The box of the lines, cut to the layout's box where the format clips.
    const Gdiplus::RectF& Box() const { return box_; }
    const CRect& Ink() const { return ink_; }
    const std::vector<TextLine>& Lines() const { return lines_; }
    // Whether lines run under or through it.
    bool HasRules() const { return rules_.under.thickness > 0 || rules_.through.thickness > 0; }
    // Characters that no installed face has.
    int UnknownGlyphs() const;
    // A cover of the memory taken, without that of the faces.
    std::size_t Bytes() const { return bytes_; }
    // Each once.
    const std::vector<TextFace>& Faces() const { return faces_; }

    // Draws every line that can touch the rows from `top` up to `bottom`, with the target's source.
    void Show(cairo_t* target, int top, int bottom) const;
    // Adds the outlines of the lines to the target's path; of an absurd text, those of the first ones.
    void AddOutline(cairo_t* target, double x, double y) const;

  private:
    friend class LineBreaker;
    TextLayout() = default;
    template <class Add>
    void ForEachRule(const TextLine& line, const Add& add) const;

    TextRules rules_;
    std::vector<TextLine> lines_;
    std::vector<TextFace> faces_;
    Gdiplus::RectF box_;
    CRect ink_;
    int above_ = 0;  // how far the ink of any line reaches from its baseline
    int below_ = 0;
    std::size_t bytes_ = 0;
};

}  // namespace platform
