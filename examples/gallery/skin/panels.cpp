#include "examples/gallery/skin/panels.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/emblem.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace skin {
namespace {

constexpr Box kBody{kPanelAlphaBodyLeft, kPanelAlphaBodyTop, kPanelAlphaBodyWidth, kPanelAlphaBodyHeight};
constexpr double kBodyRadius = 26;
constexpr double kMedallionX = kPanelAlphaMedallionX;
constexpr double kMedallionY = kPanelAlphaMedallionY;
constexpr double kCollar = kPanelAlphaMedallionRadius + 12;

// Distance to the panel's silhouette, negative inside: body and medallion, melted together where they meet.
double PanelDistance(double x, double y) {
    const double dx = std::abs(x - (kBody.x + kBody.width / 2)) - kBody.width / 2 + kBodyRadius;
    const double dy = std::abs(y - (kBody.y + kBody.height / 2)) - kBody.height / 2 + kBodyRadius;
    const double body =
        std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) - kBodyRadius;
    const double disc = std::hypot(x - kMedallionX, y - kMedallionY) - kCollar;
    constexpr double kMelt = 46;
    const double blend = std::max(kMelt - std::abs(body - disc), 0.0) / kMelt;
    return std::min(body, disc) - blend * blend * kMelt / 4;
}

// Coverage of the silhouette, grown by `grow` pixels.
Plane PanelPlane(double grow) {
    Plane plane(kPanelAlpha.width, kPanelAlpha.height);
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            const double distance = PanelDistance(x + 0.5, y + 0.5) - grow;
            plane.At(x, y) = static_cast<float>(std::clamp(0.5 - distance, 0.0, 1.0));
        }
    }
    return plane;
}

// A thin line that follows the silhouette `inside` pixels within it, bright above, dim below.
Plane RimLight(double inside, double thickness) {
    Plane rim(kPanelAlpha.width, kPanelAlpha.height);
    for (int y = 0; y < rim.height; ++y) {
        const double fall = 1 - 0.75 * std::clamp((y - kBody.y) / kBody.height, 0.0, 1.0);
        for (int x = 0; x < rim.width; ++x) {
            const double off = std::abs(PanelDistance(x + 0.5, y + 0.5) + inside);
            rim.At(x, y) = static_cast<float>(std::clamp(thickness / 2 + 0.5 - off, 0.0, 1.0) * fall);
        }
    }
    return rim;
}

void ClearInside(Canvas& canvas, const Plane& plane) {
    const SavedState saved(canvas.Cairo());
    cairo_set_operator(canvas.Cairo(), CAIRO_OPERATOR_DEST_OUT);
    canvas.Draw(Tinted(plane, palette::kWhite), 0, 0);
}

// The panel's filling, not yet cut to its silhouette.
Canvas PanelFilling() {
    Canvas filling(kPanelAlpha.width, kPanelAlpha.height);
    cairo_t* context = filling.Cairo();
    const double width = filling.Width();
    cairo_rectangle(context, 0, 0, width, filling.Height());
    FillVertical(context, kBody.y, kBody.Bottom(),
                 {{0, Rgb(0x3a3488, 0.86)}, {0.45, Rgb(0x221f5c, 0.80)}, {1, Rgb(0x191746, 0.84)}});
    // Warm light from the medallion, cool light from the far corner.
    cairo_rectangle(context, 0, 0, width, filling.Height());
    FillRadial(context, kMedallionX, kMedallionY, 230,
               {{0, WithAlpha(palette::kAmber, 0.42)}, {1, WithAlpha(palette::kPlum, 0)}});
    cairo_rectangle(context, 0, 0, width, filling.Height());
    FillRadial(context, kBody.Right(), kBody.Bottom(), 300,
               {{0, WithAlpha(palette::kPeriwinkle, 0.26)}, {1, WithAlpha(palette::kPeriwinkle, 0)}});
    // The long reflection of a pane of glass.
    cairo_move_to(context, kBody.x + 210, kBody.y);
    cairo_line_to(context, kBody.x + 330, kBody.y);
    cairo_curve_to(context, kBody.x + 270, kBody.y + 120, kBody.x + 180, kBody.y + 200, kBody.x + 60,
                   kBody.Bottom());
    cairo_line_to(context, kBody.x - 60, kBody.Bottom());
    cairo_curve_to(context, kBody.x + 60, kBody.y + 200, kBody.x + 150, kBody.y + 120, kBody.x + 210,
                   kBody.y);
    FillVertical(context, kBody.y, kBody.Bottom(),
                 {{0, WithAlpha(palette::kWhite, 0.12)}, {1, WithAlpha(palette::kWhite, 0.02)}});

    // Opaque strips: the title above, the footer below, each with a hairline of light on its border.
    const double titleEnd = kBody.y + kPanelAlphaTitleHeight;
    cairo_rectangle(context, 0, 0, width, titleEnd);
    FillVertical(context, kBody.y, titleEnd, {{0, Rgb(0x5a52b4)}, {0.5, Rgb(0x423b92)}, {1, Rgb(0x332d78)}});
    cairo_rectangle(context, 0, titleEnd - 1, width, 1);
    Fill(context, Rgb(0x120f35));
    cairo_rectangle(context, 0, titleEnd, width, 1);
    Fill(context, WithAlpha(palette::kMist, 0.28));
    const double footerStart = kBody.Bottom() - kPanelAlphaFooterHeight;
    cairo_rectangle(context, 0, footerStart, width, filling.Height() - footerStart);
    FillVertical(context, footerStart, kBody.Bottom(), {{0, Rgb(0x1d1a4c)}, {1, Rgb(0x12103a)}});
    cairo_rectangle(context, 0, footerStart, width, 1);
    Fill(context, Rgb(0x4a449c));
    return filling;
}

void CutTo(Canvas& canvas, const Plane& plane) {
    const SavedState saved(canvas.Cairo());
    cairo_set_operator(canvas.Cairo(), CAIRO_OPERATOR_DEST_IN);
    canvas.Draw(Tinted(plane, palette::kWhite), 0, 0);
}

constexpr double kMedalX = kPanelKeyCentreX;
constexpr double kMedalY = kPanelKeyCentreY;
constexpr int kLobes = 20;

double MedalRadius(double angle) {
    // Rounded lobes with sharp valleys, as on a notary's seal.
    return 142 + 14 * std::sqrt(std::abs(std::cos(angle * kLobes / 2)));
}

struct Ribbon {
    double side;  // -1 left, 1 right
};

void AddRibbon(cairo_t* context, Ribbon ribbon) {
    const auto x = [ribbon](double offset) { return kMedalX + ribbon.side * offset; };
    cairo_move_to(context, x(4), kMedalY + 90);
    cairo_line_to(context, x(98), kMedalY + 66);
    cairo_line_to(context, x(126), kMedalY + 196);
    cairo_line_to(context, x(88), kMedalY + 186);
    cairo_line_to(context, x(64), kMedalY + 222);
    cairo_close_path(context);
}

void AddLobes(cairo_t* context) {
    constexpr int kSteps = kLobes * 24;
    for (int step = 0; step < kSteps; ++step) {
        const double angle = 2 * std::numbers::pi * step / kSteps;
        cairo_line_to(context, kMedalX + MedalRadius(angle) * std::cos(angle),
                      kMedalY + MedalRadius(angle) * std::sin(angle));
    }
    cairo_close_path(context);
}

// Colours a margin around an outline. A silhouette cut without anti-aliasing keeps some pixels that the
// smooth painting covers only in part; they must not show what lay beneath.
void BleedEdge(cairo_t* context, const Outline& outline, Colour colour) {
    outline(context);
    Stroke(context, colour, 4);
}

void PaintRibbon(Canvas& canvas, Ribbon ribbon) {
    cairo_t* context = canvas.Cairo();
    BleedEdge(
        context, [ribbon](cairo_t* path) { AddRibbon(path, ribbon); }, Rgb(0x4c2160));
    AddRibbon(context, ribbon);
    FillVertical(context, kMedalY + 100, kMedalY + 222,
                 {{0, Rgb(0x4c2160)}, {0.45, palette::kPlum}, {1, palette::kRose}});
    const SavedState saved(context);
    AddRibbon(context, ribbon);
    cairo_clip(context);
    for (const double offset : {22.0, 84.0}) {
        cairo_move_to(context, kMedalX + ribbon.side * (offset - 8), kMedalY + 60);
        cairo_line_to(context, kMedalX + ribbon.side * (offset + 26), kMedalY + 232);
        Stroke(context, WithAlpha(palette::kAmber, 0.75), 5);
    }
    DropShadow(canvas, Circle(kMedalX, kMedalY + 4, 148), WithAlpha(palette::kInk, 0.75),
               {.sigma = 8, .dy = 6});
}

// The medal's face, painted beyond its silhouette where it is easier; the silhouette is cut afterwards.
void PaintMedal(Canvas& canvas) {
    cairo_t* context = canvas.Cairo();
    for (const double side : {-1.0, 1.0})
        PaintRibbon(canvas, {side});
    BleedEdge(context, AddLobes, palette::kEmber);
    AddLobes(context);
    FillVertical(context, kMedalY - 156, kMedalY + 156,
                 {{0, palette::kGold}, {0.45, palette::kAmber}, {1, Rgb(0xa83c26)}});
    // Each lobe is a pleat: a valley runs inwards from every notch.
    for (int lobe = 0; lobe < kLobes; ++lobe) {
        const double angle = 2 * std::numbers::pi * (lobe + 0.5) / kLobes;
        cairo_move_to(context, kMedalX + 128 * std::cos(angle), kMedalY + 128 * std::sin(angle));
        cairo_line_to(context, kMedalX + 146 * std::cos(angle), kMedalY + 146 * std::sin(angle));
        Stroke(context, Rgb(0x7a2818, 0.45), 2.4);
    }
    InnerShadow(canvas, AddLobes, Rgb(0x5a1a10, 0.55), {.sigma = 5, .dy = -3});
    InnerShadow(canvas, AddLobes, WithAlpha(palette::kWhite, 0.55), {.sigma = 2, .dy = 2});

    const auto ring = Circle(kMedalX, kMedalY, kPanelKeyFieldRadius + 14);
    DropShadow(canvas, ring, Rgb(0x4a140c, 0.7), {.sigma = 4, .dy = 2});
    ring(context);
    FillVertical(context, kMedalY - 130, kMedalY + 130,
                 {{0, Rgb(0xfff0cc)}, {0.5, Rgb(0xf0a864)}, {1, Rgb(0x9c4a2a)}});
    const auto groove = Circle(kMedalX, kMedalY, kPanelKeyFieldRadius + 8);
    groove(context);
    FillVertical(context, kMedalY - 124, kMedalY + 124, {{0, Rgb(0x8c3c22)}, {1, Rgb(0xffd9a0)}});
    const auto field = Circle(kMedalX, kMedalY, kPanelKeyFieldRadius + 3);
    field(context);
    FillVertical(context, kMedalY - 119, kMedalY + 119, {{0, Rgb(0x2a266b)}, {1, Rgb(0x1a184a)}});
    InnerShadow(canvas, field, WithAlpha(palette::kInk, 0.85), {.sigma = 8, .dy = 5});
    // Beads in the ring.
    constexpr int kBeads = 60;
    for (int bead = 0; bead < kBeads; ++bead) {
        const double angle = 2 * std::numbers::pi * bead / kBeads;
        Circle(kMedalX + (kPanelKeyFieldRadius + 11) * std::cos(angle),
               kMedalY + (kPanelKeyFieldRadius + 11) * std::sin(angle), 1.3)(context);
        Fill(context, Rgb(0x6b2614, 0.6));
    }
}

}  // namespace

Canvas GlassPanel() {
    Canvas panel(kPanelAlpha.width, kPanelAlpha.height);
    const Plane silhouette = PanelPlane(0);
    // Two shadows: a wide soft one for height, a tight one for contact. None beneath the glass itself.
    const auto shadow = [&panel](double grow, double sigma, int drop, double strength) {
        Plane shade = PanelPlane(grow);
        Blur(shade, sigma);
        panel.Draw(Tinted(shade, WithAlpha(palette::kInk, strength)), 0, drop);
    };
    shadow(-2, 10, 9, 0.66);
    shadow(0, 4, 3, 0.45);
    ClearInside(panel, silhouette);

    Canvas filling = PanelFilling();
    CutTo(filling, silhouette);
    panel.Draw(filling, 0, 0);
    panel.Draw(Tinted(RimLight(0.6, 1.2), Rgb(0x0c0a2c, 0.9)), 0, 0);
    panel.Draw(Tinted(RimLight(1.9, 1.2), WithAlpha(palette::kWhite, 0.55)), 0, 0);
    Plane bloom = RimLight(3, 3);
    Blur(bloom, 2.5);
    Canvas light = Tinted(bloom, WithAlpha(palette::kPeriwinkle, 0.55));
    CutTo(light, silhouette);
    panel.Draw(light, 0, 0);

    const double radius = kPanelAlphaMedallionRadius;
    DropShadow(panel, Circle(kMedallionX, kMedallionY, radius + 3), WithAlpha(palette::kInk, 0.7),
               {.sigma = 4, .dy = 2});
    Circle(kMedallionX, kMedallionY, radius + 3)(panel.Cairo());
    FillVertical(panel.Cairo(), kMedallionY - radius, kMedallionY + radius,
                 {{0, palette::kGold}, {0.5, palette::kAmber}, {1, palette::kEmber}});
    DrawEmblem(panel, kMedallionX, kMedallionY, radius, EmblemShape::Disc);
    return panel;
}

Canvas KeyedMedal() {
    Canvas medal(kPanelKey.width, kPanelKey.height);
    SetColour(medal.Cairo(), palette::kNight);
    cairo_paint(medal.Cairo());
    PaintMedal(medal);

    // A colour key knows only yes and no: the silhouette is cut without anti-aliasing.
    Canvas stencil(kPanelKey.width, kPanelKey.height);
    cairo_set_antialias(stencil.Cairo(), CAIRO_ANTIALIAS_NONE);
    AddLobes(stencil.Cairo());
    Fill(stencil.Cairo(), palette::kWhite);
    for (const double side : {-1.0, 1.0}) {
        AddRibbon(stencil.Cairo(), {side});
        Fill(stencil.Cairo(), palette::kWhite);
    }
    constexpr std::uint32_t kKeyPixel = 0xffff00ffU;
    for (int y = 0; y < medal.Height(); ++y) {
        const std::span<std::uint32_t> row = medal.Row(y);
        const std::span<const std::uint32_t> kept = std::as_const(stencil).Row(y);
        for (std::size_t x = 0; x < row.size(); ++x) {
            if (kept[x] == 0) row[x] = kKeyPixel;
        }
    }
    medal.PixelsChanged();
    return medal;
}

}  // namespace skin
