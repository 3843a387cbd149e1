#include "platform/framework/dialog_units.h"

#include <cmath>
#include <cstdint>

#include <platform/gdiplus.h>

namespace platform {
namespace {

constexpr WCHAR Letters[] =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr int LetterCount = 52;

// The width of one alphabet. Taken as what a second one adds, so that the room a measured box leaves
// around the text does not count.
double AlphabetWidth(const Gdiplus::Font& font) {
    Gdiplus::Bitmap canvas(1, 1);
    const Gdiplus::Graphics graphics(&canvas);
    const Gdiplus::RectF unlimited(0, 0, 0, 0);
    Gdiplus::RectF once;
    Gdiplus::RectF twice;
    if (graphics.MeasureString(Letters, LetterCount, &font, unlimited, nullptr, &once) != Gdiplus::Ok)
        return 0;
    if (graphics.MeasureString(Letters, 2 * LetterCount, &font, unlimited, nullptr, &twice) != Gdiplus::Ok)
        return 0;
    return double{twice.Width} - double{once.Width};
}

int Rounded(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t half = divisor / 2;
    return static_cast<int>((dividend >= 0 ? dividend + half : dividend - half) / divisor);
}

}  // namespace

DialogBaseUnits MeasureBaseUnits(const std::optional<DialogFont>& font) {
    DialogBaseUnits base;
    if (!font || font->pointSize < 1 || font->pointSize > 1000) return base;
    const int style = (font->weight >= 600 ? Gdiplus::FontStyleBold : Gdiplus::FontStyleRegular) |
                      (font->italic ? Gdiplus::FontStyleItalic : Gdiplus::FontStyleRegular);
    const Gdiplus::Font face(font->face.c_str(), static_cast<Gdiplus::REAL>(font->pointSize), style);
    const double width = std::round(AlphabetWidth(face) / LetterCount);
    const double height = std::round(double{face.GetHeight()});
    // A font that cannot be measured keeps the default.
    if (!(width >= 1 && width < 10000 && height >= 1 && height < 10000)) return base;
    base.width = static_cast<int>(width);
    base.height = static_cast<int>(height);
    return base;
}

int HorizontalPixels(int units, const DialogBaseUnits& base) {
    return Rounded(std::int64_t{units} * base.width, 4);
}

int VerticalPixels(int units, const DialogBaseUnits& base) {
    return Rounded(std::int64_t{units} * base.height, 8);
}

}  // namespace platform
