#include "examples/gallery/skin/shell.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/emblem.h"
#include "examples/gallery/skin/landscape.h"
#include "examples/gallery/skin/noise.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace skin {
namespace {

constexpr Box kBody{kShellBodyLeft, kShellBodyTop, kShellBodyWidth, kShellBodyHeight};
constexpr double kBodyRadius = 18;
constexpr Box kTitle{kBody.x, kBody.y, kBody.width, kShellTitleHeight};
constexpr Box kSidebar{kBody.x, kTitle.Bottom(), kShellSidebarWidth, kBody.height - kTitle.height};
constexpr Box kPane{kShellPaneLeft, kShellPaneTop, kShellPaneWidth, kShellPaneHeight};
constexpr double kPaneRadius = 12;

constexpr std::array<int, 3> kShifts{16, 8, 0};

// An opaque picture out of focus. Pixels near the edge are averaged over those that exist, so that it does
// not darken there, and the result is dithered, so that it shows no bands.
Canvas Frosted(const Canvas& sharp, double sigma) {
    Canvas frosted(sharp.Width(), sharp.Height());
    Plane weight(sharp.Width(), sharp.Height());
    std::fill(weight.values.begin(), weight.values.end(), 1.0F);
    Blur(weight, sigma);
    for (const int shift : kShifts) {
        Plane channel(sharp.Width(), sharp.Height());
        for (int y = 0; y < sharp.Height(); ++y) {
            const auto row = sharp.Row(y);
            for (int x = 0; x < sharp.Width(); ++x)
                channel.At(x, y) = static_cast<float>(row[static_cast<std::size_t>(x)] >> shift & 255U);
        }
        Blur(channel, sigma);
        for (int y = 0; y < sharp.Height(); ++y) {
            const auto row = frosted.Row(y);
            for (int x = 0; x < sharp.Width(); ++x) {
                const double value = static_cast<double>(channel.At(x, y) / weight.At(x, y)) +
                                     0.6 * (Lattice(x, y, static_cast<std::uint32_t>(shift)) - 0.5);
                const auto rounded = static_cast<std::uint32_t>(std::clamp(std::lround(value), 0L, 255L));
                row[static_cast<std::size_t>(x)] |= 0xFF000000U | rounded << shift;
            }
        }
    }
    frosted.PixelsChanged();
    return frosted;
}

Outline Rectangle(Box box) {
    return [box](cairo_t* context) { cairo_rectangle(context, box.x, box.y, box.width, box.height); };
}

void PaintTitle(Canvas& canvas) {
    cairo_t* context = canvas.Cairo();
    Rectangle(kTitle)(context);
    FillVertical(context, kTitle.y, kTitle.Bottom(), {{0, Rgb(0x3c367f, 0.62)}, {1, Rgb(0x14123c, 0.72)}});
    // The bar's shadow on the view.
    Rectangle({kTitle.x, kTitle.Bottom(), kTitle.width, 60})(context);
    FillVertical(context, kTitle.Bottom(), kTitle.Bottom() + 60,
                 {{0, WithAlpha(palette::kInk, 0.62)}, {1, WithAlpha(palette::kInk, 0)}});
    Rectangle({kTitle.x, kTitle.Bottom() - 1, kTitle.width, 1})(context);
    Fill(context, WithAlpha(palette::kInk, 0.55));
    Rectangle({kTitle.x, kTitle.Bottom(), kTitle.width, 1})(context);
    Fill(context, WithAlpha(palette::kMist, 0.10));
    DrawEmblem(canvas, kTitle.x + 32, kTitle.y + kTitle.height / 2, 15, EmblemShape::Disc);
}

void PaintSidebar(Canvas& canvas) {
    cairo_t* context = canvas.Cairo();
    Rectangle(kSidebar)(context);
    FillVertical(context, kSidebar.y, kSidebar.Bottom(),
                 {{0, Rgb(0x100e30, 0.30)}, {0.7, Rgb(0x100e30, 0.16)}, {1, Rgb(0x0a0920, 0.30)}});
}

void PaintPane(Canvas& canvas) {
    cairo_t* context = canvas.Cairo();
    const Outline outline = RoundedBox(kPane, kPaneRadius);
    DropShadow(canvas, outline, WithAlpha(palette::kInk, 0.55), {.sigma = 7, .dy = 3});
    outline(context);
    FillVertical(context, kPane.y, kPane.Bottom(), {{0, Rgb(0x141238, 0.62)}, {1, Rgb(0x0b0a22, 0.58)}});
    // Cool light from above, warm light from where the horizon is.
    const SavedState saved(context);
    outline(context);
    cairo_clip(context);
    Rectangle(kPane)(context);
    FillRadial(context, kPane.x + kPane.width * 0.3, kPane.y - 60, 420,
               {{0, WithAlpha(palette::kPeriwinkle, 0.20)}, {1, WithAlpha(palette::kPeriwinkle, 0)}});
    RoundedBox(kPane.Inset(0.5), kPaneRadius - 0.5)(context);
    StrokeVertical(context, kPane.y, kPane.Bottom(), 1,
                   {{0, WithAlpha(palette::kMist, 0.42)},
                    {0.2, WithAlpha(palette::kMist, 0.16)},
                    {1, WithAlpha(palette::kMist, 0.10)}});
}

void PaintRim(Canvas& canvas) {
    cairo_t* context = canvas.Cairo();
    RoundedBox(kBody.Inset(0.5), kBodyRadius - 0.5)(context);
    Stroke(context, WithAlpha(palette::kInk, 0.9), 1);
    RoundedBox(kBody.Inset(1.5), kBodyRadius - 1.5)(context);
    StrokeVertical(context, kBody.y, kBody.Bottom(), 1,
                   {{0, WithAlpha(palette::kWhite, 0.38)},
                    {0.1, WithAlpha(palette::kMist, 0.16)},
                    {1, WithAlpha(palette::kPeriwinkle, 0.20)}});
}

}  // namespace

Canvas ShellWindow() {
    Canvas shell(kShell.width, kShell.height);
    const Outline body = RoundedBox(kBody, kBodyRadius);
    DropShadow(shell, body, WithAlpha(palette::kInk, 0.60), {.sigma = 11, .dy = 9});
    DropShadow(shell, body, WithAlpha(palette::kInk, 0.45), {.sigma = 3, .dy = 2});

    Canvas view(kShell.width, kShell.height);
    view.Draw(Frosted(DuskOverTheLake({kShellBodyWidth, kShellBodyHeight}), 34), kShellBodyLeft,
              kShellBodyTop);
    PaintSidebar(view);
    PaintTitle(view);
    PaintPane(view);
    {
        const SavedState saved(shell.Cairo());
        body(shell.Cairo());
        // The corners replace the shadow beneath them and keep their smooth edge.
        cairo_set_source_surface(shell.Cairo(), cairo_get_target(view.Cairo()), 0, 0);
        cairo_fill(shell.Cairo());
    }
    PaintRim(shell);
    return shell;
}

}  // namespace skin
