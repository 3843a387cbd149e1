// The colours of the gallery's skin. Every drawing of the skin mixes from these, so that a change of mood is
// a change of this file.
#pragma once

#include <cstdint>

namespace skin {

// Straight (not premultiplied) colour, channels 0 to 1.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
};

constexpr Colour Rgb(std::uint32_t hex, double alpha = 1) {
    return {(hex >> 16 & 255) / 255.0, (hex >> 8 & 255) / 255.0, (hex & 255) / 255.0, alpha};
}
constexpr Colour WithAlpha(Colour colour, double alpha) {
    return {colour.red, colour.green, colour.blue, alpha};
}
constexpr Colour Mix(Colour from, Colour to, double share) {
    return {from.red + (to.red - from.red) * share, from.green + (to.green - from.green) * share,
            from.blue + (to.blue - from.blue) * share, from.alpha + (to.alpha - from.alpha) * share};
}

namespace palette {

inline constexpr Colour kInk = Rgb(0x090a1d);         // deepest night, outlines and shadows
inline constexpr Colour kNight = Rgb(0x14143a);       // dark surfaces
inline constexpr Colour kIndigo = Rgb(0x2a2766);      // resting controls, lower edge
inline constexpr Colour kViolet = Rgb(0x4d469c);      // resting controls, upper edge
inline constexpr Colour kPeriwinkle = Rgb(0x8f8cf5);  // hover light
inline constexpr Colour kPlum = Rgb(0x7a3583);        // dusk
inline constexpr Colour kRose = Rgb(0xd0607a);        // dusk near the horizon, close button
inline constexpr Colour kAmber = Rgb(0xff9d5c);       // the warm accent
inline constexpr Colour kEmber = Rgb(0xd9582f);       // the accent's shaded side
inline constexpr Colour kGold = Rgb(0xffe0a8);        // lit things
inline constexpr Colour kMoon = Rgb(0xfff3dc);        // the moon
inline constexpr Colour kMist = Rgb(0xdcdcff);        // glyphs
inline constexpr Colour kWhite = Rgb(0xffffff);
inline constexpr Colour kStone = Rgb(0x55566a);      // disabled, upper edge
inline constexpr Colour kSlate = Rgb(0x3d3e50);      // disabled, lower edge
inline constexpr Colour kColourKey = Rgb(0xff00ff);  // cut out of colour-key windows; used for nothing else

}  // namespace palette
}  // namespace skin
