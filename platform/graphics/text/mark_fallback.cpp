#include "platform/graphics/text/mark_fallback.h"

#include <platform/gdiplus.h>

#include <memory>

#include "platform/graphics/text/text_shaper.h"

namespace platform {
namespace {

constexpr const char* kFamilies[] = {"sans-serif", "DejaVu Sans", "Noto Sans", "serif"};

bool IsMark(gunichar c) {
    return (c >= 0x0300 && c <= 0x036F) || (c >= 0x1AB0 && c <= 0x1AFF) || (c >= 0x1DC0 && c <= 0x1DFF) ||
           (c >= 0x20D0 && c <= 0x20FF) || (c >= 0xFE20 && c <= 0xFE2F);
}

// A cheap test that most texts end with: every mark starts with one of these bytes.
bool MayHaveMarks(std::string_view text) {
    return text.find_first_of("\xCC\xCD\xE1\xE2\xEF") != std::string_view::npos;
}

// The one character that a letter and its marks are together, 0 for none.
gunichar Composed(const char* start, const char* end) {
    const std::unique_ptr<char, decltype(&g_free)> whole(
        g_utf8_normalize(start, end - start, G_NORMALIZE_DEFAULT_COMPOSE), &g_free);
    if (!whole || *whole == '\0' || *g_utf8_next_char(whole.get()) != '\0') return 0;
    return g_utf8_get_char(whole.get());
}

// Whether the face has the letter with its marks as one character. It has to have the marks as well, or they
// go to another face before they are put together.
bool HoldsTogether(PangoFont* face, const char* start, const char* end) {
    const gunichar composed = Composed(start, end);
    if (composed == 0 || !pango_font_has_char(face, composed)) return false;
    for (const char* at = g_utf8_next_char(start); at < end; at = g_utf8_next_char(at)) {
        if (!pango_font_has_char(face, g_utf8_get_char(at))) return false;
    }
    return true;
}

}  // namespace

void MarkFallback::Apply(PangoAttrList* attributes, std::string_view text, const FontData& font) {
    if (!MayHaveMarks(text)) return;
    const char* const end = text.data() + text.size();
    ObjectPtr<PangoFont> face;
    const char* substitute = nullptr;
    for (const char *at = text.data(), *letter = nullptr; at < end;) {
        if (!IsMark(g_utf8_get_char(at)) || letter == nullptr) {
            letter = at;
            at = g_utf8_next_char(at);
            continue;
        }
        while (at < end && IsMark(g_utf8_get_char(at)))
            at = g_utf8_next_char(at);
        if (!face) {
            if (Places(font.Family(), font.style)) return;
            substitute = Substitute(font.style);
            face.reset(pango_context_load_font(context_, font.Description()));
            if (substitute == nullptr || !face) return;
        }
        if (HoldsTogether(face.get(), letter, at)) continue;
        PangoAttribute* family = pango_attr_family_new(substitute);
        family->start_index = static_cast<guint>(letter - text.data());
        family->end_index = static_cast<guint>(at - text.data());
        pango_attr_list_insert(attributes, family);
    }
}

const char* MarkFallback::Substitute(int style) {
    for (const char* family : kFamilies) {
        if (Places(family, style)) return family;
    }
    return nullptr;
}

bool MarkFallback::Places(const std::string& family, int style) {
    style &= Gdiplus::FontStyleBoldItalic;
    const auto [known, isNew] = placed_.try_emplace({family, style});
    if (isNew) known->second = PlacesAnew(family, style);
    return known->second;
}

// A mark that stands in its place does not reach out to the right.
bool MarkFallback::PlacesAnew(const std::string& family, int style) const {
    constexpr int kPixels = 64;
    const std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)> description(
        pango_font_description_new(), &pango_font_description_free);
    pango_font_description_set_family(description.get(), family.c_str());
    pango_font_description_set_absolute_size(description.get(), kPixels * PANGO_SCALE);
    if ((style & Gdiplus::FontStyleBold) != 0)
        pango_font_description_set_weight(description.get(), PANGO_WEIGHT_BOLD);
    if ((style & Gdiplus::FontStyleItalic) != 0)
        pango_font_description_set_style(description.get(), PANGO_STYLE_ITALIC);
    const ObjectPtr<PangoLayout> layout(pango_layout_new(context_));
    pango_layout_set_font_description(layout.get(), description.get());
    const auto right = [&layout](const char* text) {
        pango_layout_set_text(layout.get(), text, -1);
        PangoRectangle ink;
        pango_layout_get_pixel_extents(layout.get(), &ink, nullptr);
        return ink.x + ink.width;
    };
    return right("x\xCC\x81") <= right("x") + kPixels / 16;
}

}  // namespace platform
