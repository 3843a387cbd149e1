#include "examples/gallery/skin/material.h"

#include "examples/gallery/skin/effects.h"

namespace skin {
namespace {

constexpr Colour kNothing{0, 0, 0, 0};

Colour GlyphColour(State state) {
    switch (state) {
        case State::Normal:
            return palette::kMist;
        case State::Over:
            return palette::kWhite;
        case State::Pressed:
            return Rgb(0xb9b7ef);
        case State::Active:
            return palette::kWhite;
        case State::Disabled:
            return Rgb(0x8b8ca0);
    }
    return palette::kMist;
}

}  // namespace

Material MaterialOf(State state) {
    using namespace palette;
    switch (state) {
        case State::Normal:
            break;
        case State::Over:
            return {.top = Rgb(0x7a73e0),
                    .bottom = Rgb(0x403b9a),
                    .rim = WithAlpha(kInk, 0.85),
                    .edge = WithAlpha(kWhite, 0.62),
                    .glow = WithAlpha(kPeriwinkle, 0.85),
                    .shade = kNothing,
                    .gloss = 0.20};
        case State::Pressed:
            return {.top = Rgb(0x1c1a4a),
                    .bottom = Rgb(0x2b2868),
                    .rim = WithAlpha(kInk, 0.95),
                    .edge = kNothing,
                    .glow = kNothing,
                    .shade = WithAlpha(kInk, 0.95),
                    .gloss = 0};
        case State::Active:
            return {.top = kAmber,
                    .bottom = kEmber,
                    .rim = WithAlpha(Rgb(0x43130f), 0.9),
                    .edge = WithAlpha(kGold, 0.9),
                    .glow = WithAlpha(kAmber, 0.75),
                    .shade = kNothing,
                    .gloss = 0.16};
        case State::Disabled:
            return {.top = kStone,
                    .bottom = kSlate,
                    .rim = WithAlpha(kInk, 0.45),
                    .edge = WithAlpha(kWhite, 0.12),
                    .glow = kNothing,
                    .shade = kNothing,
                    .gloss = 0};
    }
    return {.top = kViolet,
            .bottom = kIndigo,
            .rim = WithAlpha(kInk, 0.85),
            .edge = WithAlpha(kWhite, 0.38),
            .glow = kNothing,
            .shade = kNothing,
            .gloss = 0.12};
}

void PaintBody(Canvas& canvas, const Body& body, const Material& material) {
    cairo_t* context = canvas.Cairo();
    const Box& box = body.box;
    const bool sunk = material.shade.alpha > 0;
    if (material.glow.alpha > 0) DropShadow(canvas, body.Inset(0), material.glow, {.sigma = 2.2});
    if (!sunk) DropShadow(canvas, body.Inset(0), WithAlpha(palette::kInk, 0.6), {.sigma = 1.4, .dy = 1.2});

    body.Inset(-0.6)(context);
    Fill(context, material.rim);
    body.Inset(0)(context);
    FillVertical(context, box.y, box.Bottom(), {{0, material.top}, {1, material.bottom}});

    const SavedState saved(context);
    body.Inset(0)(context);
    cairo_clip(context);
    if (material.gloss > 0) {
        // A reflection with a curved lower edge, as on a dome.
        cairo_save(context);
        cairo_translate(context, box.x + box.width / 2, box.y);
        cairo_scale(context, box.width * 0.62, box.height * 0.52);
        Circle(0, 0, 1)(context);
        cairo_restore(context);
        FillVertical(context, box.y, box.y + box.height * 0.52,
                     {{0, WithAlpha(palette::kWhite, material.gloss * 1.5)},
                      {1, WithAlpha(palette::kWhite, material.gloss * 0.4)}});
        // Light that comes back from below.
        body.Inset(0)(context);
        FillVertical(context, box.y + box.height * 0.7, box.Bottom(),
                     {{0, WithAlpha(material.top, 0)}, {1, WithAlpha(material.top, 0.45)}});
    }
    if (sunk) {
        InnerShadow(canvas, body.Inset(0), material.shade, {.sigma = 2.4, .dy = 2.2});
        // The lower lip of the hollow catches light.
        body.Inset(0.5)(context);
        StrokeVertical(context, box.y + box.height * 0.6, box.Bottom(), 1,
                       {{0, WithAlpha(palette::kPeriwinkle, 0)}, {1, WithAlpha(palette::kPeriwinkle, 0.4)}});
    }
    if (material.edge.alpha > 0) {
        body.Inset(0.7)(context);
        StrokeVertical(context, box.y, box.y + box.height * 0.75, 1.1,
                       {{0, material.edge}, {1, WithAlpha(material.edge, 0)}});
    }
}

void PaintLamp(Canvas& canvas, double x, double y, double radius, State state) {
    cairo_t* context = canvas.Cairo();
    const bool lit = state == State::Active;
    if (lit) DropShadow(canvas, Circle(x, y, radius + 1), WithAlpha(palette::kGold, 1), {.sigma = 2.4});
    Circle(x, y, radius + 1)(context);
    Fill(context, WithAlpha(lit ? Rgb(0x8a2f14) : palette::kInk, 0.55));
    Circle(x, y, radius)(context);
    if (lit) {
        FillRadial(context, x, y, radius, {{0, palette::kWhite}, {0.55, Rgb(0xfff6d0)}, {1, Rgb(0xffd873)}});
        return;
    }
    const Colour glass = state == State::Disabled ? Rgb(0x6a6b7c) : Rgb(0x3b3478);
    FillVertical(context, y - radius, y + radius, {{0, Mix(glass, palette::kInk, 0.6)}, {1, glass}});
    Circle(x - radius * 0.25, y - radius * 0.35, radius * 0.35)(context);
    Fill(context, WithAlpha(palette::kWhite, state == State::Disabled ? 0.15 : 0.35));
}

void PaintGlyph(Canvas& canvas, Glyph glyph, double x, double y, double size, State state) {
    const double press = state == State::Pressed ? 1 : 0;  // a pressed glyph goes down with its button
    const Colour shadow = WithAlpha(state == State::Active ? Rgb(0x5a1d0c) : palette::kInk,
                                    state == State::Disabled ? 0.25 : 0.55);
    DrawGlyph(canvas.Cairo(), glyph, x, y + press + 1, size, shadow);
    DrawGlyph(canvas.Cairo(), glyph, x, y + press, size, GlyphColour(state));
}

}  // namespace skin
