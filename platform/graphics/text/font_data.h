// What a font is made of, shared by all fonts that look the same.
#pragma once

#include <cstdint>
#include <memory>
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

    std::string family;  // resolved
    float pixels = 0;    // em size
    int style = 0;       // Gdiplus::FontStyle
    std::uint64_t revision = 0;
    PangoFontDescription* description = nullptr;  // owned; never changed

  private:
    FontData() = default;
};

}  // namespace platform
