#include "platform/graphics/text/text_shaper.h"

#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <platform/gdiplus.h>

#include <algorithm>
#include <cmath>
#include <new>

#include "platform/base/thread_service.h"
#include "platform/graphics/counters.h"
#include "platform/graphics/text/font_configuration.h"
#include "platform/graphics/text/glyph_masks.h"

namespace platform {
namespace {

PangoFontMap* MakeFontMap() {
    FcConfig* const configuration = FontConfiguration();  // first, or a thread of the font map's reads it
    PangoFontMap* fonts = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fonts), 96);
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(fonts), configuration);
    pango_fc_font_map_set_default_substitute(
        PANGO_FC_FONT_MAP(fonts), [](FcPattern* wanted, void*) { RenderAlike(wanted); }, nullptr, nullptr);
    return fonts;
}

// Ideographs look different from language to language, and most texts do not tell theirs. The user's language
// decides where it has ideographs, else Chinese.
PangoLanguage* LanguageForIdeographs() {
    PangoLanguage* language = pango_language_get_default();
    const bool decides = language != nullptr && pango_language_matches(language, "zh;ja;ko");
    return decides ? language : pango_language_from_string("zh-cn");
}

PangoContext* MakeContext(PangoFontMap* fonts, PangoDirection direction) {
    PangoContext* context = pango_font_map_create_context(fonts);
    pango_context_set_base_dir(context, direction);
    pango_context_set_language(context, LanguageForIdeographs());
    // Whole-pixel advances: glyphs are painted on whole pixels, and so a measured width is the painted one.
    const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(
        cairo_font_options_create(), &cairo_font_options_destroy);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_ON);
    pango_cairo_context_set_font_options(context, options.get());
    pango_context_set_round_glyph_positions(context, TRUE);
    return context;
}

struct UnrefAttributes {
    void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
};
using AttributesPtr = std::unique_ptr<PangoAttrList, UnrefAttributes>;

AttributesPtr MakeAttributes() {
    AttributesPtr attributes(pango_attr_list_new());
    // A word that is broken for want of room stays the text that was given.
    pango_attr_list_insert(attributes.get(), pango_attr_insert_hyphens_new(FALSE));
    return attributes;
}

int ToPixels(int units) {
    return static_cast<int>(std::lround(pango_units_to_double(units)));
}

}  // namespace

void UnrefObject::operator()(void* object) const {
    g_object_unref(object);
}

void LineReach::Include(const LineReach& other) {
    ascent = std::max(ascent, other.ascent);
    descent = std::max(descent, other.descent);
}

TextShaper& TextShaper::OfThread() {
    return ThreadService<TextShaper>::Get();
}

TextShaper::TextShaper()
    : fonts_(MakeFontMap()),
      leftToRight_(MakeContext(fonts_.get(), PANGO_DIRECTION_LTR)),
      rightToLeft_(MakeContext(fonts_.get(), PANGO_DIRECTION_RTL)),
      marks_(leftToRight_.get()),
      glyphMasks_(std::make_unique<GlyphMaskCache>()) {}

TextShaper::~TextShaper() = default;

void TextShaper::Use(const FontData& font) {
    constexpr std::size_t kMostFonts = 128;
    constexpr std::size_t kLeastFonts = 16;
    const std::size_t limit = DrawingCacheLimit().load(std::memory_order_relaxed);
    const std::size_t most = std::clamp(limit / TextCache::kFaceBytes, kLeastFonts, kMostFonts);
    const unsigned look = pango_font_description_hash(font.Description());
    if (!fontsInUse_.insert(look).second || fontsInUse_.size() <= most) return;
    pango_fc_font_map_cache_clear(PANGO_FC_FONT_MAP(fonts_.get()));
    marks_.Forget();
    fontsInUse_ = {look};
}

ObjectPtr<PangoLayout> TextShaper::MakeLayout(const FontData& font, bool rightToLeft) const {
    ObjectPtr<PangoLayout> layout(pango_layout_new((rightToLeft ? rightToLeft_ : leftToRight_).get()));
    pango_layout_set_auto_dir(layout.get(), FALSE);
    pango_layout_set_font_description(layout.get(), font.Description());
    return layout;
}

void TextShaper::SetText(PangoLayout* layout, std::string_view text, const FontData& font) {
    constexpr std::size_t kShort = 1024;
    constexpr std::size_t kShapedBytes = 128;  // taken for a byte of text
    constexpr std::uint64_t kLayoutWork = 16;
    work_ += kLayoutWork + text.size();
    // GLib takes no lack of memory for an answer; whether it would get some is asked before.
    if (text.size() > kShort) ::operator delete(::operator new(text.size() * kShapedBytes));
    const AttributesPtr attributes = MakeAttributes();
    marks_.Apply(attributes.get(), text, font);
    pango_layout_set_attributes(layout, attributes.get());
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
}

void TextShaper::CountBreaks(std::size_t bytes) {
    constexpr std::uint64_t kTries = 24;
    work_ += kTries * bytes;
}

void TextShaper::CountWork(const PangoLayoutLine* line) {
    constexpr std::uint64_t kRunWork = 32;
    const std::uint64_t runs = g_slist_length(line->runs);
    // Runs are looked for from the line's start again and again.
    work_ += kRunWork * (runs + 1) + runs * runs / 64;
}

LineReach TextShaper::ReachOfFace(PangoFont* face, const FontData& font) {
    constexpr gunichar kIdeograph = 0x4E2D;
    constexpr double kAbove = 0.93;  // of the em: the highest letters and ideographs
    constexpr double kBelow = 0.24;
    PangoRectangle logical;
    pango_font_get_glyph_extents(face, PANGO_GLYPH_EMPTY, nullptr, &logical);
    LineReach reach{PANGO_PIXELS_CEIL(-logical.y), PANGO_PIXELS_CEIL(logical.y + logical.height)};
    if (pango_font_has_char(face, kIdeograph)) {
        const auto em = static_cast<double>(font.pixels);
        reach.ascent = std::min(reach.ascent, static_cast<int>(std::ceil(kAbove * em)));
        reach.descent = std::min(reach.descent, static_cast<int>(std::ceil(kBelow * em)));
    }
    return reach;
}

LineReach TextShaper::ReachOf(const FontData& font) const {
    const ObjectPtr<PangoFont> face(pango_context_load_font(leftToRight_.get(), font.Description()));
    return face ? ReachOfFace(face.get(), font) : LineReach();
}

TextRules TextShaper::RulesOf(const FontData& font) const {
    constexpr int kStyles = Gdiplus::FontStyleUnderline | Gdiplus::FontStyleStrikeout;
    TextRules rules;
    if ((font.style & kStyles) == 0) return rules;
    const ObjectPtr<PangoFont> face(pango_context_load_font(leftToRight_.get(), font.Description()));
    if (!face) return rules;
    const std::unique_ptr<PangoFontMetrics, decltype(&pango_font_metrics_unref)> metrics(
        pango_font_get_metrics(face.get(), nullptr), &pango_font_metrics_unref);
    if ((font.style & Gdiplus::FontStyleUnderline) != 0) {
        const int thickness =
            std::max(1, ToPixels(pango_font_metrics_get_underline_thickness(metrics.get())));
        // Within the line, but not on the letters.
        const int lowest = ReachOfFace(face.get(), font).descent - thickness;
        const int top = -ToPixels(pango_font_metrics_get_underline_position(metrics.get()));
        rules.under = {std::max(1, std::min(top, lowest)), thickness};
    }
    if ((font.style & Gdiplus::FontStyleStrikeout) != 0) {
        rules.through = {
            -ToPixels(pango_font_metrics_get_strikethrough_position(metrics.get())),
            std::max(1, ToPixels(pango_font_metrics_get_strikethrough_thickness(metrics.get())))};
    }
    return rules;
}

}  // namespace platform
