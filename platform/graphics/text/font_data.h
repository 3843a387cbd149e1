// What a font is made of, shared by all fonts that look the same.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

typedef struct _PangoFontDescription PangoFontDescription;

namespace platform {

struct FontData {
    // Null for a size that is not a number above zero, or beyond kMostPixels. Equal arguments give the same
    // object for as long as one holder lives; nobody changes it.
    static std::shared_ptr<FontData> Get(std::u16string_view family, float pixels, int style);

    static constexpr float kMostPixels = 4096;

    ~FontData();
    FontData(const FontData&) = delete;
    FontData& operator=(const FontData&) = delete;

    // The installed one, looked for when somebody first asks; most items get a font of their own before their
    // first one is drawn with.
    const std::string& Family() const;
    // Of that family; stays the font's, and is never changed.
    const PangoFontDescription* Description() const;

    const float pixels;  // em size
    const int style;     // Gdiplus::FontStyle
    const std::uint64_t revision;

  private:
    FontData(std::u16string_view family, float pixels, int style);
    void Resolve() const;

    const std::u16string asked_;
    mutable std::once_flag resolved_;
    mutable std::string family_;
    mutable PangoFontDescription* description_ = nullptr;
};

}  // namespace platform
