#include "platform/graphics/text/font_data.h"

#include <pango/pango.h>
#include <platform/gdiplus.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <tuple>
#include <utility>

#include "platform/base/weak_map.h"
#include "platform/graphics/surface.h"
#include "platform/graphics/text/font_names.h"

namespace platform {
namespace {

// Below this a glyph covers no pixel, and the font machinery begins to divide by zero.
constexpr float kLeastPixels = 0.25F;

PangoFontDescription* Describe(const FontData& font, const std::string& family) {
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, family.c_str());
    pango_font_description_set_absolute_size(
        description, static_cast<double>(std::max(font.pixels, kLeastPixels)) * PANGO_SCALE);
    if ((font.style & Gdiplus::FontStyleBold) != 0) {
        pango_font_description_set_weight(description, PANGO_WEIGHT_BOLD);
    }
    if ((font.style & Gdiplus::FontStyleItalic) != 0) {
        pango_font_description_set_style(description, PANGO_STYLE_ITALIC);
    }
    return description;
}

using Key = std::tuple<std::u16string, float, int>;

}  // namespace

std::shared_ptr<FontData> FontData::Get(std::u16string_view family, float pixels, int style) {
    if (!std::isfinite(pixels) || pixels <= 0 || pixels > kMostPixels) return nullptr;
    constexpr int kStyles =
        Gdiplus::FontStyleBoldItalic | Gdiplus::FontStyleUnderline | Gdiplus::FontStyleStrikeout;
    style &= kStyles;
    // Never destroyed: a host's static objects make fonts until the process ends.
    struct InUse {
        std::mutex mutex;
        WeakMap<Key, FontData> fonts;
    };
    static InUse* const inUse = new InUse;
    Key key(family, pixels, style);
    const std::lock_guard lock(inUse->mutex);
    std::shared_ptr<FontData> font = inUse->fonts.Find(key);
    if (!font) {
        font.reset(new FontData(family, pixels, style));
        inUse->fonts.Put(std::move(key), font);
    }
    return font;
}

FontData::FontData(std::u16string_view family, float pixels_, int style_)
    : pixels(pixels_), style(style_), revision(NextRevision()), asked_(family) {}

FontData::~FontData() {
    if (description_ != nullptr) pango_font_description_free(description_);
}

void FontData::Resolve() const {
    std::call_once(resolved_, [this] {
        family_ = ResolveFamily(ToUtf8(asked_));
        description_ = Describe(*this, family_);
    });
}

const std::string& FontData::Family() const {
    Resolve();
    return family_;
}

const PangoFontDescription* FontData::Description() const {
    Resolve();
    return description_;
}

}  // namespace platform
