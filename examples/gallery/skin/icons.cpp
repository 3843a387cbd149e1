#include "examples/gallery/skin/icons.h"

#include <cmath>
#include <numbers>

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/emblem.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace skin {
namespace {

// A solid thing with a shadow, lit from above.
void PaintSolid(Canvas& canvas, const Outline& outline, Colour top, Colour bottom) {
    cairo_t* context = canvas.Cairo();
    DropShadow(canvas, outline, WithAlpha(palette::kInk, 0.55), {.sigma = 1.8, .dy = 1.6});
    outline(context);
    FillVertical(context, 6, 58, {{0, top}, {1, bottom}});
    InnerShadow(canvas, outline, WithAlpha(palette::kWhite, 0.55), {.sigma = 0.7, .dy = 1});
    InnerShadow(canvas, outline, WithAlpha(palette::kInk, 0.35), {.sigma = 1.2, .dy = -1.2});
}

void PaintTile(Canvas& canvas, Colour top, Colour bottom) {
    PaintSolid(canvas, RoundedBox({7, 7, 50, 50}, 11), top, bottom);
}

void PaintLine(Canvas& canvas, std::initializer_list<std::pair<double, double>> points, Colour colour,
               double width) {
    cairo_t* context = canvas.Cairo();
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    for (const auto& [x, y] : points)
        cairo_line_to(context, x, y);
    Stroke(context, colour, width);
}

void PaintFolder(Canvas& canvas) {
    const Outline back = [](cairo_t* path) {
        RoundedBox({6, 12, 24, 16}, 5)(path);
        RoundedBox({6, 17, 52, 37}, 5)(path);
    };
    PaintSolid(canvas, back, Rgb(0xe58a4c), Rgb(0xa8482c));
    RoundedBox({11, 20, 42, 20}, 3)(canvas.Cairo());
    Fill(canvas.Cairo(), palette::kMoon);
    PaintSolid(canvas, RoundedBox({5, 25, 54, 31}, 5), palette::kGold, palette::kAmber);
}

void PaintSheet(Canvas& canvas) {
    const Outline sheet = [](cairo_t* path) {
        cairo_move_to(path, 14, 6);
        cairo_line_to(path, 39, 6);
        cairo_line_to(path, 51, 18);
        cairo_line_to(path, 51, 58);
        cairo_line_to(path, 14, 58);
        cairo_close_path(path);
    };
    PaintSolid(canvas, sheet, Rgb(0xffffff), Rgb(0xcfcdf2));
    cairo_t* context = canvas.Cairo();
    cairo_move_to(context, 39, 6);
    cairo_line_to(context, 39, 18);
    cairo_line_to(context, 51, 18);
    cairo_close_path(context);
    Fill(context, Rgb(0x9c98d8));
}

void PaintDocument(Canvas& canvas) {
    PaintSheet(canvas);
    for (int line = 0; line < 4; ++line) {
        const double y = 26.5 + 7 * line;
        PaintLine(canvas, {{20.5, y}, {line == 3 ? 35.0 : 44.5, y}},
                  line == 0 ? palette::kEmber : Rgb(0x6b68a8), 2.4);
    }
}

void PaintPhotograph(Canvas& canvas) {
    PaintSolid(canvas, RoundedBox({5, 11, 54, 43}, 4), Rgb(0xffffff), Rgb(0xd8d6f4));
    cairo_t* context = canvas.Cairo();
    const SavedState saved(context);
    cairo_rectangle(context, 9, 15, 46, 35);
    cairo_clip(context);
    DrawEmblem(canvas, 32, 32, 24, EmblemShape::Tile);
}

void PaintMusic(Canvas& canvas) {
    PaintTile(canvas, palette::kRose, Rgb(0x7a2a5c));
    cairo_t* context = canvas.Cairo();
    for (const double drop : {1.2, 0.0}) {
        const Colour colour = drop > 0 ? WithAlpha(palette::kInk, 0.4) : palette::kMoon;
        for (const double x : {22.0, 40.0}) {
            const SavedState saved(context);
            cairo_translate(context, x, (x < 30 ? 45 : 41) + drop);
            cairo_rotate(context, -0.35);
            cairo_scale(context, 5.6, 4.3);
            Circle(0, 0, 1)(context);
            Fill(context, colour);
        }
        PaintLine(canvas, {{26.6, 44 + drop}, {26.6, 22 + drop}, {44.6, 18 + drop}, {44.6, 40 + drop}},
                  colour, 2.6);
        PaintLine(canvas, {{26.6, 25 + drop}, {44.6, 21 + drop}}, colour, 4);
    }
}

void PaintFilm(Canvas& canvas) {
    PaintTile(canvas, Rgb(0x4b4870), Rgb(0x1c1a3c));
    cairo_t* context = canvas.Cairo();
    for (int hole = 0; hole < 5; ++hole) {
        for (const double x : {11.0, 47.5}) {
            RoundedBox({x, 12.0 + hole * 8.6, 5.5, 4.6}, 1.2)(context);
            Fill(context, palette::kMist);
        }
    }
    RoundedBox({20, 13, 24, 38}, 2)(context);
    FillVertical(context, 13, 51, {{0, palette::kPlum}, {0.6, palette::kRose}, {1, palette::kAmber}});
    cairo_move_to(context, 28, 25);
    cairo_line_to(context, 39, 32);
    cairo_line_to(context, 28, 39);
    cairo_close_path(context);
    Fill(context, palette::kMoon);
}

void PaintArchive(Canvas& canvas) {
    PaintSolid(canvas, RoundedBox({9, 20, 46, 37}, 4), Rgb(0xd8945c), Rgb(0x8a4a2c));
    PaintSolid(canvas, RoundedBox({6, 9, 52, 15}, 4), Rgb(0xf0b47c), Rgb(0xb8703c));
    PaintSolid(canvas, RoundedBox({24, 28, 16, 9}, 3), palette::kMoon, Rgb(0xc8a880));
    RoundedBox({28, 31.5, 8, 2.6}, 1.3)(canvas.Cairo());
    Fill(canvas.Cairo(), Rgb(0x6b3a1c));
}

void PaintCode(Canvas& canvas) {
    PaintTile(canvas, Rgb(0x3f7f93), Rgb(0x1b3a66));
    for (const double drop : {1.2, 0.0}) {
        const Colour colour = drop > 0 ? WithAlpha(palette::kInk, 0.45) : palette::kMoon;
        PaintLine(canvas, {{24, 23 + drop}, {14.5, 32 + drop}, {24, 41 + drop}}, colour, 3.4);
        PaintLine(canvas, {{40, 23 + drop}, {49.5, 32 + drop}, {40, 41 + drop}}, colour, 3.4);
        PaintLine(canvas, {{35, 20 + drop}, {29, 44 + drop}}, drop > 0 ? colour : Rgb(0x7fe8d0), 3.4);
    }
}

void PaintTerminal(Canvas& canvas) {
    PaintSolid(canvas, RoundedBox({5, 9, 54, 46}, 6), Rgb(0x4d469c), Rgb(0x2a2766));
    cairo_t* context = canvas.Cairo();
    RoundedBox({8, 19, 48, 33}, 3)(context);
    Fill(context, palette::kInk);
    constexpr Colour kLights[] = {palette::kRose, palette::kAmber, Rgb(0x36d5a8)};
    double x = 12;
    for (const Colour& light : kLights) {
        Circle(x, 14.2, 2.2)(context);
        Fill(context, light);
        x += 7;
    }
    PaintLine(canvas, {{15, 27}, {22, 33}, {15, 39}}, Rgb(0x36f5b0), 3);
    PaintLine(canvas, {{26, 41}, {38, 41}}, palette::kMist, 3);
}

void PaintGlobe(Canvas& canvas) {
    const Outline ball = Circle(32, 32, 25);
    PaintSolid(canvas, ball, Rgb(0x7fb4f5), Rgb(0x2a3f9c));
    cairo_t* context = canvas.Cairo();
    for (const double width : {10.0, 19.0}) {
        const SavedState saved(context);
        cairo_translate(context, 32, 32);
        cairo_scale(context, width / 25, 1);
        Circle(0, 0, 25)(context);
        cairo_identity_matrix(context);
        Stroke(context, WithAlpha(palette::kWhite, 0.55), 1.6);
    }
    for (const double y : {20.0, 32.0, 44.0}) {
        const double half = std::sqrt(25 * 25 - (y - 32) * (y - 32));
        PaintLine(canvas, {{32 - half, y}, {32 + half, y}}, WithAlpha(palette::kWhite, 0.55), 1.6);
    }
    PaintLine(canvas, {{32, 7}, {32, 57}}, WithAlpha(palette::kWhite, 0.55), 1.6);
}

void PaintSettings(Canvas& canvas) {
    const Outline gear = [](cairo_t* path) {
        constexpr int kTeeth = 9;
        constexpr int kSteps = kTeeth * 4;
        for (int step = 0; step < kSteps; ++step) {
            const double angle = 2 * std::numbers::pi * (step + 0.5) / kSteps;
            const double radius = step % 4 < 2 ? 26 : 20;
            cairo_line_to(path, 32 + radius * std::cos(angle), 32 + radius * std::sin(angle));
        }
        cairo_close_path(path);
    };
    PaintSolid(canvas, gear, Rgb(0xc9c7ee), Rgb(0x6b68a8));
    PaintSolid(canvas, Circle(32, 32, 9), Rgb(0x2a2766), Rgb(0x14143a));
}

}  // namespace

const std::array<ListIcon, 10> kListIcons = {{{"folder", PaintFolder},
                                              {"document", PaintDocument},
                                              {"picture", PaintPhotograph},
                                              {"music", PaintMusic},
                                              {"film", PaintFilm},
                                              {"archive", PaintArchive},
                                              {"code", PaintCode},
                                              {"terminal", PaintTerminal},
                                              {"globe", PaintGlobe},
                                              {"settings", PaintSettings}}};

Canvas DrawListIcon(const ListIcon& icon) {
    Canvas canvas(kListIcon, kListIcon);
    icon.paint(canvas);
    return canvas;
}

}  // namespace skin
