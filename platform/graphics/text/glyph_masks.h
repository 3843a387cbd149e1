// What the outline of one glyph leaves on whole pixels when it is stroked, and when it is filled.
#pragma once

#include <pango/pango.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include <platform/geometry.h>

#include "platform/graphics/text/text_shaper.h"

namespace platform {

struct GlyphMask {
    CRect box;  // around the pixels that are touched, seen from the one that the glyph's origin lies in
    std::vector<std::uint8_t> stroke, fill;  // coverage, row by row; empty for a glyph without ink
};

// Everything that the pixels depend on.
struct GlyphKey {
    PangoGlyph glyph = 0;
    double scale = 1;               // of the outline
    double phaseX = 0, phaseY = 0;  // from the pixel's corner to the origin, below 1
    double penWidth = 1;            // before scaling
    friend auto operator<=>(const GlyphKey&, const GlyphKey&) = default;
};

// The masks of one thread's glyphs. All go when they exceed an eighth of the common limit.
class GlyphMaskCache {
  public:
    // Valid until the next call. Null when the face has no outlines, or without memory.
    const GlyphMask* Get(PangoFont* face, const GlyphKey& place);

  private:
    struct Face {
        ObjectPtr<PangoFont> font;  // so that no other comes to lie in its place
        std::map<GlyphKey, GlyphMask> masks;
    };
    std::map<PangoFont*, Face> faces_;
    std::size_t bytes_ = 0;
};

}  // namespace platform
