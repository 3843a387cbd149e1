#include "examples/gallery/skin/moving.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "examples/gallery/skin/emblem.h"
#include "examples/gallery/skin/noise.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace skin {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

constexpr int kLamps = 12;

struct Lamp {
    double x;
    double y;
};

Lamp PlaceOf(int lamp) {
    const double angle = kTurn * lamp / kLamps - kTurn / 4;
    return {kSpinner.width / 2.0 + 24 * std::cos(angle), kSpinner.height / 2.0 + 24 * std::sin(angle)};
}

// Brightness by how many steps ago the light was here.
double Afterglow(int stepsAgo) {
    return stepsAgo == 0 ? 1 : std::max(0.0, 0.78 - 0.13 * (stepsAgo - 1));
}

void PaintLamp(cairo_t* context, int lamp, double light) {
    const auto [x, y] = PlaceOf(lamp);
    Circle(x, y, 5.4)(context);
    Fill(context, Mix(Rgb(0x1d1b4c), Rgb(0x6b2d2a), light));
    Circle(x, y, 4.2)(context);
    const Colour core = light > 0.9 ? palette::kMoon : Mix(Rgb(0x38347e), palette::kAmber, light);
    FillVertical(context, y - 4.2, y + 4.2, {{0, core}, {1, Mix(core, palette::kEmber, 0.35 * light)}});
}

constexpr int kCometFrames = 24;
constexpr double kOrbitX = 66;
constexpr double kOrbitY = 24;
constexpr double kTilt = -0.32;
constexpr double kCometX = kComet.width / 2.0;
constexpr double kCometY = kComet.height / 2.0;
constexpr double kMoonRadius = 24;

struct OrbitPoint {
    double x;
    double y;
    double depth;  // -1 behind the moon, 1 before it
};

OrbitPoint OnOrbit(double angle) {
    const double flatX = kOrbitX * std::cos(angle);
    const double flatY = kOrbitY * std::sin(angle);
    return {kCometX + flatX * std::cos(kTilt) - flatY * std::sin(kTilt),
            kCometY + flatX * std::sin(kTilt) + flatY * std::cos(kTilt), std::sin(angle)};
}

void PaintComet(Canvas& canvas, double angle) {
    cairo_t* context = canvas.Cairo();
    constexpr int kTail = 26;
    for (int i = kTail; i >= 0; --i) {
        const double age = static_cast<double>(i) / kTail;
        const OrbitPoint at = OnOrbit(angle - age * 1.35);
        // Behind the moon it is as good as gone: the first frame has none.
        const double size = 6 * SmoothStep(-1.05, 0.6, at.depth) * (1 - 0.82 * age);
        Circle(at.x, at.y, size)(context);
        Fill(context, Mix(palette::kGold, Rgb(0x5a2f6e), std::sqrt(age)));
    }
    const OrbitPoint head = OnOrbit(angle);
    Circle(head.x, head.y, 4.2 * SmoothStep(-1.05, 0.6, head.depth))(context);
    Fill(context, palette::kWhite);
    // What is behind the moon is hidden by it.
    if (head.depth >= 0) return;
    cairo_set_operator(context, CAIRO_OPERATOR_DEST_OUT);
    Circle(kCometX, kCometY, kMoonRadius)(context);
    Fill(context, palette::kWhite);
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
}

}  // namespace

std::vector<MovingFrame> Spinner() {
    std::vector<MovingFrame> frames;
    for (int step = 0; step < kLamps; ++step) {
        Canvas drawn(kSpinner.width, kSpinner.height);
        for (int lamp = 0; lamp < kLamps; ++lamp) {
            const int ago = (step - lamp + kLamps) % kLamps;
            const double light = Afterglow(ago);
            // After the first frame, only lamps that look otherwise than before.
            const double before = Afterglow((ago + kLamps - 1) % kLamps);
            if (step == 0 || std::abs(light - before) > 0.001) PaintLamp(drawn.Cairo(), lamp, light);
        }
        // Slow over the top, quick below.
        const int delay = static_cast<int>(std::lround(10 + 5 * std::cos(kTurn * step / kLamps)));
        frames.push_back({std::move(drawn), delay, After::Stays});
    }
    return frames;
}

std::vector<MovingFrame> Comet() {
    std::vector<MovingFrame> frames;
    Canvas moon(kComet.width, kComet.height);
    DrawEmblem(moon, kCometX, kCometY, kMoonRadius, EmblemShape::Disc);
    frames.push_back({std::move(moon), 6, After::Stays});
    for (int i = 1; i < kCometFrames; ++i) {
        Canvas drawn(kComet.width, kComet.height);
        // It starts behind the moon and ends there.
        const double angle = kTurn * (0.75 + static_cast<double>(i) / kCometFrames);
        PaintComet(drawn, angle);
        // Quick where it is near.
        const int delay = static_cast<int>(std::lround(8 - 3 * std::sin(angle)));
        frames.push_back({std::move(drawn), delay, After::Restored});
    }
    return frames;
}

}  // namespace skin
