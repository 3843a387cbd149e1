#include "examples/gallery/skin/emblem.h"

#include <algorithm>
#include <utility>

#include "examples/gallery/skin/effects.h"

namespace skin {
namespace {

// The emblem is drawn in a square from -1 to 1.
void AddRange(cairo_t* context, std::initializer_list<std::pair<double, double>> crest) {
    cairo_move_to(context, -1.1, 1.1);
    for (const auto& [x, y] : crest)
        cairo_line_to(context, x, y);
    cairo_line_to(context, 1.1, 1.1);
    cairo_close_path(context);
}

void PaintView(cairo_t* context, bool fine) {
    cairo_rectangle(context, -1.1, -1.1, 2.2, 2.2);
    FillVertical(context, -1, 0.7,
                 {{0, Rgb(0x1a1850)}, {0.45, Rgb(0x47297f)}, {0.75, Rgb(0xa8487f)}, {1, palette::kAmber}});
    if (fine) {
        constexpr std::pair<double, double> kStars[] = {{-0.62, -0.38}, {-0.34, -0.68}, {-0.46, -0.08},
                                                        {-0.72, 0.02},  {0.02, -0.80},  {0.74, 0.05}};
        for (const auto& [x, y] : kStars) {
            Circle(x, y, 0.028)(context);
            Fill(context, WithAlpha(palette::kWhite, 0.85));
        }
    }
    cairo_rectangle(context, -1.1, -1.1, 2.2, 2.2);
    FillRadial(context, 0.28, -0.26, 0.95, {{0, Rgb(0xffe0c0, 0.65)}, {1, Rgb(0xffb0a0, 0)}});
    Circle(0.28, -0.26, fine ? 0.36 : 0.40)(context);
    FillVertical(context, -0.62, 0.1, {{0, Rgb(0xfffaf0)}, {1, Rgb(0xffd9b0)}});
    AddRange(
        context,
        {{-1.1, 0.18}, {-0.78, 0.02}, {-0.42, 0.38}, {-0.18, 0.20}, {0.2, 0.52}, {0.62, 0.12}, {1.1, 0.5}});
    FillVertical(context, 0, 1, {{0, Rgb(0x6a3584)}, {1, Rgb(0x44266e)}});
    AddRange(
        context,
        {{-1.1, 0.62}, {-0.74, 0.44}, {-0.3, 0.74}, {0.14, 0.48}, {0.5, 0.72}, {0.82, 0.58}, {1.1, 0.7}});
    FillVertical(context, 0.4, 1, {{0, Rgb(0x241d58)}, {1, palette::kNight}});
}

}  // namespace

void DrawEmblem(Canvas& canvas, double x, double y, double radius, EmblemShape shape) {
    cairo_t* context = canvas.Cairo();
    const Outline outline = shape == EmblemShape::Disc
                                ? Circle(x, y, radius)
                                : RoundedBox({x - radius, y - radius, 2 * radius, 2 * radius}, radius * 0.46);
    const SavedState saved(context);
    outline(context);
    cairo_clip(context);
    cairo_save(context);
    cairo_translate(context, x, y);
    cairo_scale(context, radius, radius);
    PaintView(context, radius >= 20);
    cairo_restore(context);
    // Glass over it: a bright upper edge, a shaded lower one.
    if (radius < 12) return;
    const double unit = std::max(1.0, radius / 40);
    InnerShadow(canvas, outline, WithAlpha(palette::kInk, 0.5), {.sigma = 2.5 * unit, .dy = -1.5 * unit});
    InnerShadow(canvas, outline, WithAlpha(palette::kWhite, 0.55), {.sigma = 0.8 * unit, .dy = 1.1 * unit});
}

Canvas AppIcon(int side) {
    Canvas icon(side, side);
    // Small icons have no pixels to spare for a shadow.
    const double margin = side < 32 ? 0.5 : side * 0.055;
    const double radius = side / 2.0 - margin;
    const double middle = side / 2.0;
    if (side >= 32) {
        const Outline tile = RoundedBox({margin, margin, 2 * radius, 2 * radius}, radius * 0.46);
        DropShadow(icon, tile, WithAlpha(palette::kInk, 0.55), {.sigma = side * 0.022, .dy = side * 0.018});
    }
    DrawEmblem(icon, middle, middle - (side < 32 ? 0 : side * 0.01), radius, EmblemShape::Tile);
    return icon;
}

}  // namespace skin
