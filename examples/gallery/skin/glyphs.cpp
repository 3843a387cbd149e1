#include "examples/gallery/skin/glyphs.h"

#include <numbers>

namespace skin {
namespace {

// All glyphs are drawn in a square from -12 to 12, y down, with a pen about 2 wide.
constexpr double kHalf = 12;
constexpr double kPen = 2;

struct Point {
    double x;
    double y;
};

void AddPolygon(cairo_t* context, std::initializer_list<Point> corners) {
    for (const Point& corner : corners)
        cairo_line_to(context, corner.x, corner.y);
    cairo_close_path(context);
}

// A filled polygon whose corners are rounded by a pen of its own colour.
void FillSoftPolygon(cairo_t* context, std::initializer_list<Point> corners, Colour colour, double pen) {
    AddPolygon(context, corners);
    SetColour(context, colour);
    cairo_set_line_width(context, pen);
    cairo_fill_preserve(context);
    cairo_stroke(context);
}

void DrawClose(cairo_t* context, Colour colour) {
    cairo_move_to(context, -7, -7);
    cairo_line_to(context, 7, 7);
    cairo_move_to(context, 7, -7);
    cairo_line_to(context, -7, 7);
    Stroke(context, colour, 2.6);
}

void DrawMinimise(cairo_t* context, Colour colour) {
    cairo_move_to(context, -8, 6);
    cairo_line_to(context, 8, 6);
    Stroke(context, colour, 2.8);
}

void DrawPlay(cairo_t* context, Colour colour) {
    // Set off to the right: a triangle looks centred at its centroid, not at its box.
    FillSoftPolygon(context, {{-5.2, -8.4}, {9.2, 0}, {-5.2, 8.4}}, colour, 3);
}

void DrawPause(cairo_t* context, Colour colour) {
    RoundedBox({-7.5, -9, 5.4, 18}, 1.8)(context);
    RoundedBox({2.1, -9, 5.4, 18}, 1.8)(context);
    Fill(context, colour);
}

void DrawNext(cairo_t* context, Colour colour) {
    FillSoftPolygon(context, {{-8.4, -6.6}, {3.4, 0}, {-8.4, 6.6}}, colour, 2.6);
    RoundedBox({5.6, -7.9, 3.4, 15.8}, 1.5)(context);
    Fill(context, colour);
}

void DrawPrevious(cairo_t* context, Colour colour) {
    const SavedState saved(context);
    cairo_scale(context, -1, 1);
    DrawNext(context, colour);
}

void DrawLayers(cairo_t* context, Colour colour) {
    FillSoftPolygon(context, {{0, -9.4}, {9.4, -4.2}, {0, 1}, {-9.4, -4.2}}, colour, 1.2);
    for (const double drop : {4.6, 9.2}) {
        cairo_move_to(context, -10, -4.3 + drop);
        cairo_line_to(context, 0, 1.2 + drop);
        cairo_line_to(context, 10, -4.3 + drop);
        Stroke(context, WithAlpha(colour, colour.alpha * (drop < 5 ? 0.85 : 0.6)), kPen);
    }
}

void DrawBackground(cairo_t* context, Colour colour) {
    RoundedBox({-11, -9, 22, 18}, 3.5)(context);
    Stroke(context, colour, kPen);
    Circle(-5, -3.6, 2.3)(context);
    Fill(context, colour);
    FillSoftPolygon(context, {{-7.6, 5.6}, {-2.8, 0.6}, {0, 3.2}, {4, -2}, {8, 5.6}}, colour, 1);
}

void DrawShape(cairo_t* context, Colour colour) {
    // A square whose corner a circle bites off, with the circle beside it.
    cairo_push_group(context);
    RoundedBox({-10.5, -10.5, 15, 15}, 3)(context);
    Fill(context, colour);
    cairo_set_operator(context, CAIRO_OPERATOR_DEST_OUT);
    Circle(4, 4, 9)(context);
    Fill(context, palette::kWhite);
    cairo_pop_group_to_source(context);
    cairo_paint(context);
    Circle(4, 4, 6.2)(context);
    Stroke(context, colour, kPen);
}

void DrawButtons(cairo_t* context, Colour colour) {
    RoundedBox({-11, -9.5, 22, 12}, 6)(context);
    Stroke(context, colour, kPen);
    // The pointer stands on it, with a rim of nothing around.
    const auto arrow = [](cairo_t* path) {
        AddPolygon(path, {{1, -2.5}, {1, 9.5}, {3.9, 6.9}, {6, 11.2}, {8.2, 10.1}, {6.2, 6}, {10, 5.6}});
    };
    cairo_set_operator(context, CAIRO_OPERATOR_DEST_OUT);
    arrow(context);
    Stroke(context, palette::kWhite, 3.4);
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
    arrow(context);
    Fill(context, colour);
}

void DrawStates(cairo_t* context, Colour colour) {
    // Three switches, each a step further on.
    for (int row = 0; row < 3; ++row) {
        const double y = -7.5 + 7.5 * row;
        const double knob = -6 + 6.0 * row;
        cairo_move_to(context, -10, y);
        cairo_line_to(context, knob - 4.2, y);
        cairo_move_to(context, knob + 4.2, y);
        cairo_line_to(context, 10, y);
        Stroke(context, WithAlpha(colour, colour.alpha * 0.6), kPen);
        Circle(knob, y, 2.9)(context);
        Fill(context, colour);
    }
}

void DrawAreas(cairo_t* context, Colour colour) {
    for (int corner = 0; corner < 4; ++corner) {
        const SavedState saved(context);
        cairo_rotate(context, corner * std::numbers::pi / 2);
        cairo_move_to(context, -10, -4);
        cairo_line_to(context, -10, -8);
        cairo_curve_to(context, -10, -9.2, -9.2, -10, -8, -10);
        cairo_line_to(context, -4, -10);
        Stroke(context, colour, kPen);
    }
    RoundedBox({-5.5, -5.5, 11, 11}, 2)(context);
    Fill(context, colour);
}

void DrawTexts(cairo_t* context, Colour colour) {
    // A capital with feet.
    cairo_move_to(context, -8.4, 9);
    cairo_line_to(context, 0, -9.4);
    cairo_line_to(context, 8.4, 9);
    cairo_move_to(context, -5, 2.6);
    cairo_line_to(context, 5, 2.6);
    Stroke(context, colour, 2.6);
    cairo_move_to(context, -11, 9.4);
    cairo_line_to(context, -6, 9.4);
    cairo_move_to(context, 6, 9.4);
    cairo_line_to(context, 11, 9.4);
    Stroke(context, WithAlpha(colour, colour.alpha * 0.8), kPen);
}

void DrawChoices(cairo_t* context, Colour colour) {
    RoundedBox({-9.5, -9.5, 19, 19}, 4)(context);
    Stroke(context, WithAlpha(colour, colour.alpha * 0.7), kPen);
    cairo_move_to(context, -4.6, -0.4);
    cairo_line_to(context, -0.9, 3.6);
    cairo_line_to(context, 9, -8.4);
    Stroke(context, colour, 3);
}

void DrawImages(cairo_t* context, Colour colour) {
    // A film's frame, with a hole on each corner.
    RoundedBox({-10.5, -9, 21, 18}, 3)(context);
    Stroke(context, colour, kPen);
    for (const double x : {-7.0, 7.0}) {
        for (const double y : {-5.4, 0.0, 5.4}) {
            RoundedBox({x - 1.3, y - 1.3, 2.6, 2.6}, 0.8)(context);
            Fill(context, WithAlpha(colour, colour.alpha * 0.8));
        }
    }
    FillSoftPolygon(context, {{-2.2, -4}, {4, 0}, {-2.2, 4}}, colour, 1.4);
}

void DrawProgress(cairo_t* context, Colour colour) {
    RoundedBox({-11, -4.6, 22, 9.2}, 4.6)(context);
    Stroke(context, colour, kPen);
    RoundedBox({-8.2, -1.8, 11, 3.6}, 1.8)(context);
    Fill(context, colour);
}

void DrawScrolling(cairo_t* context, Colour colour) {
    for (const double y : {-7.5, -2.5, 2.5, 7.5}) {
        cairo_move_to(context, -10, y);
        cairo_line_to(context, 2, y);
    }
    Stroke(context, WithAlpha(colour, colour.alpha * 0.65), kPen);
    RoundedBox({5.6, -10, 5.4, 20}, 2.7)(context);
    Stroke(context, WithAlpha(colour, colour.alpha * 0.65), 1.4);
    RoundedBox({6.6, -6.5, 3.4, 8}, 1.7)(context);
    Fill(context, colour);
}

// One arrow there and one back.
void DrawRequests(cairo_t* context, Colour colour) {
    for (const double side : {-1.0, 1.0}) {
        cairo_move_to(context, -10, side * 4.5);
        cairo_line_to(context, 10, side * 4.5);
        cairo_move_to(context, side * -5, side * 4.5 - 4.5);
        cairo_line_to(context, side * -10, side * 4.5);
        cairo_line_to(context, side * -5, side * 4.5 + 4.5);
    }
    Stroke(context, colour, kPen);
}

void DrawFrames(cairo_t* context, Colour colour) {
    RoundedBox({-10, -10, 20, 20}, 4)(context);
    Stroke(context, colour, kPen);
    for (const double at : {-3.6, 3.6}) {
        cairo_move_to(context, at, -10);
        cairo_line_to(context, at, 10);
        cairo_move_to(context, -10, at);
        cairo_line_to(context, 10, at);
    }
    Stroke(context, WithAlpha(colour, colour.alpha * 0.6), 1.3);
}

// Icons with their captions.
void DrawList(cairo_t* context, Colour colour) {
    for (const double x : {-10.5, 1.5})
        for (const double y : {-10.5, 1.5}) {
            RoundedBox({x, y, 9, 6}, 1.8)(context);
            Fill(context, colour);
            cairo_move_to(context, x + 1.2, y + 8.4);
            cairo_line_to(context, x + 7.8, y + 8.4);
            Stroke(context, WithAlpha(colour, colour.alpha * 0.65), 1.4);
        }
}

// A sheet, and an arrow that leaves it.
void DrawFiles(cairo_t* context, Colour colour) {
    cairo_move_to(context, 3, -4);
    cairo_line_to(context, 3, -6);
    cairo_line_to(context, -1, -10);
    cairo_line_to(context, -10, -10);
    cairo_line_to(context, -10, 10);
    cairo_line_to(context, 3, 10);
    cairo_line_to(context, 3, 6);
    Stroke(context, WithAlpha(colour, colour.alpha * 0.8), kPen);
    cairo_move_to(context, -4, 1);
    cairo_line_to(context, 10.5, 1);
    cairo_move_to(context, 6, -3.5);
    cairo_line_to(context, 10.5, 1);
    cairo_line_to(context, 6, 5.5);
    Stroke(context, colour, kPen);
}

// A globe with its meridian and two parallels.
void DrawWeb(cairo_t* context, Colour colour) {
    Circle(0, 0, 10)(context);
    Stroke(context, colour, kPen);
    {
        const SavedState saved(context);
        cairo_scale(context, 0.45, 1);
        cairo_new_sub_path(context);
        cairo_arc(context, 0, 0, 10, 0, 2 * std::numbers::pi);
    }
    for (const double y : {-4.0, 4.0}) {
        cairo_move_to(context, -8.8, y);
        cairo_line_to(context, 8.8, y);
    }
    Stroke(context, WithAlpha(colour, colour.alpha * 0.7), 1.4);
}

}  // namespace

void DrawGlyph(cairo_t* context, Glyph glyph, double x, double y, double size, Colour colour) {
    const SavedState saved(context);
    cairo_translate(context, x, y);
    cairo_scale(context, size / (2 * kHalf), size / (2 * kHalf));
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    // In a group: parts that erase others must not reach what lies beneath the glyph.
    cairo_push_group(context);
    switch (glyph) {
        case Glyph::Close:
            DrawClose(context, colour);
            break;
        case Glyph::Minimise:
            DrawMinimise(context, colour);
            break;
        case Glyph::Play:
            DrawPlay(context, colour);
            break;
        case Glyph::Pause:
            DrawPause(context, colour);
            break;
        case Glyph::Previous:
            DrawPrevious(context, colour);
            break;
        case Glyph::Next:
            DrawNext(context, colour);
            break;
        case Glyph::Layers:
            DrawLayers(context, colour);
            break;
        case Glyph::Background:
            DrawBackground(context, colour);
            break;
        case Glyph::Shape:
            DrawShape(context, colour);
            break;
        case Glyph::Buttons:
            DrawButtons(context, colour);
            break;
        case Glyph::States:
            DrawStates(context, colour);
            break;
        case Glyph::Areas:
            DrawAreas(context, colour);
            break;
        case Glyph::Texts:
            DrawTexts(context, colour);
            break;
        case Glyph::Choices:
            DrawChoices(context, colour);
            break;
        case Glyph::Images:
            DrawImages(context, colour);
            break;
        case Glyph::Progress:
            DrawProgress(context, colour);
            break;
        case Glyph::Scrolling:
            DrawScrolling(context, colour);
            break;
        case Glyph::Requests:
            DrawRequests(context, colour);
            break;
        case Glyph::Frames:
            DrawFrames(context, colour);
            break;
        case Glyph::List:
            DrawList(context, colour);
            break;
        case Glyph::Files:
            DrawFiles(context, colour);
            break;
        case Glyph::Web:
            DrawWeb(context, colour);
            break;
    }
    cairo_pop_group_to_source(context);
    cairo_paint(context);
}

}  // namespace skin
