#include "examples/gallery/skin/choices.h"

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/material.h"

namespace skin {
namespace {

constexpr double kMiddle = kChoice.width / 2.0;
constexpr double kHalf = 7;  // of the box

// Hollows rather than bodies: the mark is what stands out.
Material HollowOf(State state) {
    using namespace palette;
    Material hollow{.top = Rgb(0x15133c),
                    .bottom = Rgb(0x2d2970),
                    .rim = WithAlpha(kPeriwinkle, 0.75),
                    .edge = {0, 0, 0, 0},
                    .glow = {0, 0, 0, 0},
                    .shade = WithAlpha(kInk, 0.75),
                    .gloss = 0};
    switch (state) {
        case State::Normal:
            break;
        case State::Over:
            hollow.top = Rgb(0x2c2872);
            hollow.bottom = Rgb(0x5650b4);
            hollow.rim = WithAlpha(kMist, 0.95);
            hollow.glow = WithAlpha(kPeriwinkle, 0.9);
            break;
        case State::Pressed:
            hollow.top = Rgb(0x0d0c28);
            hollow.bottom = Rgb(0x1c1a4a);
            hollow.rim = WithAlpha(kAmber, 0.9);
            break;
        case State::Active:
            hollow.top = Rgb(0x3a1c38);
            hollow.bottom = Rgb(0x7a3a48);
            hollow.rim = WithAlpha(kAmber, 1);
            hollow.glow = WithAlpha(kAmber, 0.6);
            break;
        case State::Disabled:
            hollow.top = Rgb(0x2c2c3e);
            hollow.bottom = kSlate;
            hollow.rim = WithAlpha(kStone, 0.9);
            hollow.shade = WithAlpha(kInk, 0.3);
            break;
    }
    return hollow;
}

FramePainter Hollow(double radius) {
    return [radius](Canvas& frame, State state) {
        const Body body{{kMiddle - kHalf, kMiddle - kHalf, 2 * kHalf, 2 * kHalf}, radius};
        const Material material = HollowOf(state);
        body.Inset(-1)(frame.Cairo());
        Fill(frame.Cairo(), WithAlpha(palette::kInk, 0.35));
        PaintBody(frame, body, material);
        body.Inset(0.5)(frame.Cairo());
        Stroke(frame.Cairo(), WithAlpha(material.rim, material.rim.alpha * 0.8), 1);
    };
}

void AddTick(cairo_t* context) {
    cairo_move_to(context, 5.6, 10.2);
    cairo_line_to(context, 8.9, 13.4);
    cairo_line_to(context, 14.8, 6.4);
}

}  // namespace

FramePainter CheckBox() {
    return Hollow(4);
}

FramePainter RadioDish() {
    return Hollow(kHalf);
}

Canvas CheckMark() {
    Canvas mark(kChoice.width, kChoice.height);
    cairo_t* context = mark.Cairo();
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    AddTick(context);
    Stroke(context, WithAlpha(Rgb(0x43130f), 0.75), 4.2);
    AddTick(context);
    StrokeVertical(context, 5, 15, 2.5, {{0, palette::kMoon}, {0.5, palette::kGold}, {1, palette::kAmber}});
    return mark;
}

Canvas RadioMark() {
    Canvas mark(kChoice.width, kChoice.height);
    const Outline disc = Circle(kMiddle, kMiddle, 3.6);
    DropShadow(mark, disc, WithAlpha(palette::kAmber, 0.8), {.sigma = 1.6});
    disc(mark.Cairo());
    FillVertical(mark.Cairo(), kMiddle - 4, kMiddle + 4,
                 {{0, palette::kMoon}, {0.45, palette::kGold}, {1, palette::kAmber}});
    return mark;
}

}  // namespace skin
