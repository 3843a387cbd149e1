#include "examples/gallery/skin/bars.h"

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/material.h"

namespace skin {
namespace {

void FillAcross(cairo_t* context, double left, double right, std::span<const Stop> stops) {
    const std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)> gradient(
        cairo_pattern_create_linear(left, 0, right, 0), cairo_pattern_destroy);
    for (const Stop& stop : stops) {
        cairo_pattern_add_color_stop_rgba(gradient.get(), stop.at, stop.colour.red, stop.colour.green,
                                          stop.colour.blue, stop.colour.alpha);
    }
    cairo_set_source(context, gradient.get());
    cairo_fill(context);
}

// A channel cut into the surface.
Canvas Channel(PictureSize size, double radius) {
    Canvas picture(size.width, size.height);
    cairo_t* context = picture.Cairo();
    const Box box{0, 0, static_cast<double>(size.width), static_cast<double>(size.height)};
    const Outline outline = RoundedBox(box, radius);
    outline(context);
    FillVertical(context, 0, box.height, {{0, WithAlpha(palette::kInk, 0.92)}, {1, Rgb(0x1c1a4a, 0.86)}});
    InnerShadow(picture, outline, WithAlpha(palette::kInk, 0.8), {.sigma = 1.6, .dy = 1.4});
    RoundedBox(box.Inset(0.5), radius - 0.5)(context);
    StrokeVertical(context, 0, box.height, 1,
                   {{0, WithAlpha(palette::kInk, 0.9)}, {1, WithAlpha(palette::kPeriwinkle, 0.45)}});
    return picture;
}

// What runs along the bar, from its start to its end. It is squeezed with the bar, so the end is always lit.
constexpr Stop kDusk[] = {
    {0, Rgb(0x7a3583)}, {0.4, palette::kEmber}, {0.8, palette::kAmber}, {1, palette::kGold}};
constexpr Stop kCool[] = {
    {0, Rgb(0x4d469c)}, {0.45, Rgb(0x3f7f93)}, {0.85, Rgb(0x36d5a8)}, {1, Rgb(0xc8fff0)}};

Box WholeThumb(ThumbPart part) {
    constexpr double kLong = 60;  // beyond the part's own frame, so that the cut is straight
    const double width = kScrollPart.width - 2;
    switch (part) {
        case ThumbPart::Top:
            return {1, 1, width, kLong};
        case ThumbPart::Middle:
            return {1, -kLong, width, 2 * kLong};
        case ThumbPart::Bottom:
            break;
    }
    return {1, kScrollPart.height - 1 - kLong, width, kLong};
}

}  // namespace

Canvas ProgressBack(PictureSize size) {
    return Channel(size, 3);
}

Canvas ProgressBar(PictureSize size, ProgressLook look) {
    Canvas picture(size.width, size.height);
    cairo_t* context = picture.Cairo();
    const Box box{0, 0, static_cast<double>(size.width), static_cast<double>(size.height)};
    RoundedBox(box, 2)(context);
    if (look == ProgressLook::Dusk)
        FillAcross(context, 0, box.width, kDusk);
    else
        FillAcross(context, 0, box.width, kCool);
    // A rounded rod: light from above, shade below.
    RoundedBox(box, 2)(context);
    FillVertical(context, 0, box.height,
                 {{0, WithAlpha(palette::kWhite, 0.42)},
                  {0.42, WithAlpha(palette::kWhite, 0.08)},
                  {0.5, WithAlpha(palette::kInk, 0.02)},
                  {1, WithAlpha(palette::kInk, 0.45)}});
    return picture;
}

FramePainter Thumb(ThumbPart part) {
    return [part](Canvas& frame, State state) {
        cairo_t* context = frame.Cairo();
        const Box box = WholeThumb(part);
        const double radius = box.width / 2;
        const bool held = state == State::Pressed;
        const Material material = MaterialOf(held ? State::Active : state);
        RoundedBox(box.Inset(-0.6), radius + 0.6)(context);
        Fill(context, material.rim);
        // Round across, the same everywhere along: the middle is stretched.
        const Stop across[] = {{0, material.top},
                               {0.35, Mix(material.top, palette::kWhite, held ? 0.22 : 0.14)},
                               {1, material.bottom}};
        RoundedBox(box, radius)(context);
        FillAcross(context, box.x, box.Right(), across);
        RoundedBox(box.Inset(0.7), radius - 0.7)(context);
        Stroke(context, WithAlpha(material.edge, material.edge.alpha * 0.55), 1);
    };
}

Canvas ScrollTrack() {
    return Channel(kScrollTrack, kScrollTrack.width / 2.0);
}

}  // namespace skin
