// The shaping machinery of one thread: a font map of its own at 96 DPI, so that neither the desktop's
// settings nor the window system change a pixel, and the texts laid out lately.
#pragma once

#include <pango/pango.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_set>

#include "platform/graphics/text/font_data.h"
#include "platform/graphics/text/mark_fallback.h"
#include "platform/graphics/text/text_cache.h"

namespace platform {

struct UnrefObject {
    void operator()(void* object) const;
};
template <class T>
using ObjectPtr = std::unique_ptr<T, UnrefObject>;

// How far a line reaches above and below its baseline, in pixels.
struct LineReach {
    int ascent = 0;
    int descent = 0;
    int Height() const { return ascent + descent; }
    void Include(const LineReach& other);
};

// A line drawn under or through a text, in whole pixels from the baseline downward; thickness 0 for none.
struct TextRule {
    int top = 0;
    int thickness = 0;
};
struct TextRules {
    TextRule under;
    TextRule through;
};

class GlyphMaskCache;

class TextShaper {
  public:
    // Lives as a ThreadService does.
    static TextShaper& OfThread();

    TextShaper();
    ~TextShaper();
    TextShaper(const TextShaper&) = delete;
    TextShaper& operator=(const TextShaper&) = delete;

    // To be called before a font is asked for anything new: of fonts beyond a number, those go whose texts
    // have gone. The shaping library itself would keep every size of every face.
    void Use(const FontData& font);
    // An empty layout with the font.
    ObjectPtr<PangoLayout> MakeLayout(const FontData& font, bool rightToLeft) const;
    // `text` is UTF-8; the layout was made for the font. Throws std::bad_alloc where the shaping library
    // would end the process for want of memory, as far as that can be known before.
    void SetText(PangoLayout* layout, std::string_view text, const FontData& font);
    // To be called with each line that is measured.
    void CountWork(const PangoLayoutLine* line);
    // Counts what breaking a piece within words takes: the shaping library tries many a place.
    void CountBreaks(std::size_t bytes);
    // What was shaped and measured so far, in quarters of a microsecond of a usual processor: by what it is
    // made of, so that the same text is the same work everywhere.
    std::uint64_t Work() const { return work_; }

    // What a line of this face reserves. Faces for ideographs ask for half their size above the letters, for
    // stacked accents that their text does not have; they are held to what their glyphs fill, or every
    // caption made for a line of little more than the em would be pushed out of its box.
    static LineReach ReachOfFace(PangoFont* face, const FontData& font);
    LineReach ReachOf(const FontData& font) const;
    // What the font's style asks for. The same for all faces of a line, or the rule would jump between them.
    TextRules RulesOf(const FontData& font) const;
    float LineHeight(const FontData& font) {
        Use(font);
        return static_cast<float>(ReachOf(font).Height());
    }

    TextCache& Cache() { return cache_; }
    GlyphMaskCache& Masks() { return *glyphMasks_; }

  private:
    ObjectPtr<PangoFontMap> fonts_;
    ObjectPtr<PangoContext> leftToRight_;
    ObjectPtr<PangoContext> rightToLeft_;
    MarkFallback marks_;
    std::unordered_set<unsigned> fontsInUse_;  // hashes of what they look like
    TextCache cache_;
    std::unique_ptr<GlyphMaskCache> glyphMasks_;
    std::uint64_t work_ = 0;
};

}  // namespace platform
