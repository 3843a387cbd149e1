#include "platform/graphics/text/font_data.h"

#include <pango/pango.h>
#include <platform/gdiplus.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <mutex>
#include <tuple>

#include "platform/graphics/surface.h"
#include "platform/graphics/text/font_names.h"

namespace platform {
namespace {

// Below this a glyph covers no pixel, and the font machinery begins to divide by zero.
constexpr float kLeastPixels = 0.25F;

PangoFontDescription* Describe(const FontData& font) {
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, font.family.c_str());
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

// Remembers the fonts in use without keeping them.
class Interned {
  public:
    template <class Make>
    std::shared_ptr<FontData> Get(Key key, const Make& make) {
        const std::lock_guard lock(mutex_);
        if (const auto found = fonts_.find(key); found != fonts_.end()) {
            if (auto font = found->second.lock()) return font;
        }
        if (fonts_.size() >= sweepAt_) {
            std::erase_if(fonts_, [](const auto& entry) { return entry.second.expired(); });
            sweepAt_ = std::max<std::size_t>(64, fonts_.size() * 2);
        }
        std::shared_ptr<FontData> font = make();
        fonts_[std::move(key)] = font;
        return font;
    }

  private:
    std::mutex mutex_;
    std::map<Key, std::weak_ptr<FontData>> fonts_;
    std::size_t sweepAt_ = 64;
};

}  // namespace

std::shared_ptr<FontData> FontData::Get(std::u16string_view family, float pixels, int style) {
    if (!std::isfinite(pixels) || pixels <= 0 || pixels > kMostPixels) return nullptr;
    constexpr int kStyles =
        Gdiplus::FontStyleBoldItalic | Gdiplus::FontStyleUnderline | Gdiplus::FontStyleStrikeout;
    style &= kStyles;
    // Never destroyed: a host's static objects make fonts until the process ends.
    static Interned* const interned = new Interned;
    return interned->Get(Key(family, pixels, style), [&] {
        std::shared_ptr<FontData> font(new FontData);
        font->family = ResolveFamily(ToUtf8(family));
        font->pixels = pixels;
        font->style = style;
        font->revision = NextRevision();
        font->description = Describe(*font);
        return font;
    });
}

FontData::~FontData() {
    if (description != nullptr) pango_font_description_free(description);
}

}  // namespace platform
