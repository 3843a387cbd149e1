#include "examples/gallery/skin/buttons.h"

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/material.h"

namespace skin {
namespace {

// Room around a body for its glow and shadow, the shadow below.
constexpr double kSide = 4;
constexpr double kAbove = 4;
constexpr double kBelow = 5;

Box BodyBox(const Canvas& frame) {
    return {kSide, kAbove, frame.Width() - 2 * kSide, frame.Height() - kAbove - kBelow};
}

Body DiscOf(double x, double y, double radius) {
    return {{x - radius, y - radius, 2 * radius, 2 * radius}, radius};
}

}  // namespace

FramePainter PillButton(Lamp lamp) {
    return [lamp](Canvas& frame, State state) {
        const Box box = BodyBox(frame);
        PaintBody(frame, {box, box.height / 2}, MaterialOf(state));
        if (lamp == Lamp::Left) PaintLamp(frame, box.x + 14, box.y + box.height / 2, 3.6, state);
    };
}

FramePainter WindowButton(Glyph glyph) {
    return [glyph](Canvas& frame, State state) {
        // At rest only the glyph shows; the plate appears under the pointer.
        const Body plate{{3, 3, frame.Width() - 6.0, frame.Height() - 7.0}, 6};
        if (state == State::Normal) {
            // Faint, but not nothing: on a per-pixel window an empty pixel would let the pointer through.
            plate.Inset(0)(frame.Cairo());
            Fill(frame.Cairo(), WithAlpha(palette::kMist, 0.08));
        } else {
            Material material = MaterialOf(state);
            if (glyph == Glyph::Close) {
                const bool over = state == State::Over;
                material.top = over ? Rgb(0xf07a86) : Rgb(0x6b1f3a);
                material.bottom = over ? Rgb(0xb93655) : Rgb(0x8c2c4c);
                if (over) material.glow = WithAlpha(palette::kRose, 0.85);
            }
            PaintBody(frame, plate, material);
        }
        PaintGlyph(frame, glyph, frame.Width() / 2.0, frame.Height() / 2.0 - 0.5, 15, state);
    };
}

FramePainter RoundButton(Glyph glyph) {
    return [glyph](Canvas& frame, State state) {
        const double middle = frame.Width() / 2.0;
        PaintBody(frame, DiscOf(middle, middle - 0.5, middle - 5), MaterialOf(state));
        PaintGlyph(frame, glyph, middle, middle - 0.5, 21, state);
    };
}

FramePainter PlayButton() {
    return [](Canvas& frame, State state) {
        cairo_t* context = frame.Cairo();
        const double middle = frame.Width() / 2.0;
        const double centreY = middle - 1;
        // A dark collar holds a thin ring of accent light around the disc.
        PaintBody(frame, DiscOf(middle, centreY, middle - 6),
                  {.top = Rgb(0x161538),
                   .bottom = Rgb(0x2f2b6e),
                   .rim = WithAlpha(palette::kInk, 0.8),
                   .edge = WithAlpha(palette::kInk, 0.5),
                   .glow = state == State::Normal || state == State::Pressed ? Colour{0, 0, 0, 0}
                                                                             : MaterialOf(state).glow,
                   .shade = {0, 0, 0, 0},
                   .gloss = 0});
        const double ring = middle - 8.8;
        const bool lit = state == State::Active;
        const double strength = lit                       ? 1.0
                                : state == State::Over    ? 0.95
                                : state == State::Pressed ? 0.45
                                                          : 0.7;
        Circle(middle, centreY, ring)(context);
        Stroke(context, WithAlpha(lit ? palette::kGold : palette::kAmber, strength), 1.8);
        PaintBody(frame, DiscOf(middle, centreY, middle - 12), [state] {
            Material disc = MaterialOf(state);
            disc.glow.alpha = 0;  // the ring does the glowing
            return disc;
        }());
        PaintGlyph(frame, lit ? Glyph::Pause : Glyph::Play, middle, centreY, 30, state);
    };
}

FramePainter Tab(Glyph glyph) {
    return [glyph](Canvas& frame, State state) {
        cairo_t* context = frame.Cairo();
        const Body plate{{3, 3, frame.Width() - 6.0, frame.Height() - 8.0}, 9};
        const double glyphY = plate.box.y + plate.box.height / 2;
        Material material = MaterialOf(state);
        if (state == State::Normal) {
            material.top = WithAlpha(palette::kViolet, 0.42);
            material.bottom = WithAlpha(palette::kIndigo, 0.42);
            material.rim = WithAlpha(palette::kMist, 0.10);
            material.edge = WithAlpha(palette::kWhite, 0.16);
            material.gloss = 0;
            // No shadow beneath: it would show through the glass.
            plate.Inset(0)(context);
            FillVertical(context, plate.box.y, plate.box.Bottom(), {{0, material.top}, {1, material.bottom}});
            plate.Inset(0.5)(context);
            StrokeVertical(context, plate.box.y, plate.box.Bottom(), 1,
                           {{0, material.edge}, {1, material.rim}});
        } else if (state == State::Active) {
            // Chosen: a dark, warm plate with a lit bar at its foot, so that captions keep their contrast.
            material.top = Rgb(0x5b3a6b);
            material.bottom = Rgb(0x8a4152);
            material.edge = WithAlpha(palette::kGold, 0.45);
            material.glow = WithAlpha(palette::kAmber, 0.55);
            material.gloss = 0.06;
            PaintBody(frame, plate, material);
            const Box bar{plate.box.x + 12, plate.box.Bottom() - 4, plate.box.width - 24, 2.4};
            DropShadow(frame, RoundedBox(bar, 1.2), palette::kAmber, {.sigma = 2.4});
            RoundedBox(bar, 1.2)(context);
            Fill(context, palette::kGold);
        } else {
            PaintBody(frame, plate, material);
        }
        PaintGlyph(frame, glyph, 23, glyphY, 19, state);
        if (state == State::Active) DrawGlyph(context, glyph, 23, glyphY, 19, Rgb(0xffc58f));
    };
}

}  // namespace skin
