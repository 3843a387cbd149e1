// What it takes to make a compositing mode visible on this display: which shape comes from the pixels, how
// pixels change on their way to the window, and what is left to the compositor.
#pragma once

#include <cstdint>

#include "platform/window/window_system.h"

namespace platform::x11 {

// Which pixels of a surface belong to a shape.
struct SpanRule {
    enum class Kind {
        Everything,
        Nothing,
        AlphaAtLeast,  // alpha >= `threshold`
        NotKey         // colour, without alpha, other than `key`
    };
    Kind kind = Kind::Everything;
    std::uint8_t threshold = 0;
    std::uint32_t key = 0;
    bool ReadsPixels() const { return kind == Kind::AlphaAtLeast || kind == Kind::NotKey; }
    friend bool operator==(const SpanRule&, const SpanRule&) = default;
};

// What happens to pixels between the surface and the window.
enum class Conversion {
    None,
    ForceOpaque,       // the alpha byte becomes 255
    KeyToTransparent,  // pixels of the key colour become 0, the others opaque
    Unpremultiply      // full colours, opaque: for shapes of one bit
};

struct DisplayPlan {
    SpanRule bounding;
    SpanRule input;  // applies within the bounding shape
    Conversion conversion = Conversion::None;
    std::uint32_t key = 0;
    std::uint8_t opacity = 255;  // of all pixels, after the conversion
    bool overBackdrop = false;   // at last they are blended with the wallpaper
    bool KeepsPixels() const { return conversion == Conversion::None && opacity == 255 && !overBackdrop; }
    friend bool operator==(const DisplayPlan&, const DisplayPlan&) = default;
};

// Whether a mode can be shown in full only by a window with an alpha channel.
bool NeedsAlphaChannel(const Compositing& compositing);
// `alphaChannel`: the window has one. `compositor`: one is running.
DisplayPlan PlanDisplay(const Compositing& compositing, bool alphaChannel, bool compositor);
// For a window in another program's, which no compositor blends; over the wallpaper it can be blended by us.
DisplayPlan PlanOverBackdrop(const Compositing& compositing, bool alphaChannel);

}  // namespace platform::x11
