#include "examples/gallery/skin/landscape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/light_map.h"
#include "examples/gallery/skin/noise.h"
#include "examples/gallery/skin/sky.h"

namespace skin {
namespace {

constexpr int kRidges = 5;

// Top of a ridge at a column, in pixels from the picture's top. Ridge 0 is the farthest.
double RidgeTop(const Scene& scene, int ridge, double x) {
    const double height = scene.size.height;
    const double share = ridge / (kRidges - 1.0);
    const std::uint32_t seed = scene.seed + 200 + static_cast<std::uint32_t>(ridge) * 16;
    const double wide = 420 - 150 * share;
    // 1 - |2n - 1| folds the noise into crests; the power sharpens them.
    const double noise = Fractal(x / wide + ridge * 5.3, 0.5, 6, seed);
    const double crest = std::pow(1 - std::abs(2 * noise - 1), 1.7);
    const double roll = Noise(x / 700.0 + ridge, 0.3, seed + 9);
    const double lift = std::lerp(0.27, 0.07, share) * height;
    const double foot = scene.shore * height - std::lerp(0.045, 0.004, share) * height;
    return foot - lift * (0.62 * crest + 0.38 * roll) * (0.55 + 0.45 * roll);
}

// How squarely a flank faces the moon at each column, -1 to 1, a little smoothed.
std::vector<double> Facing(const Scene& scene, int ridge) {
    const double moonX = scene.moonX * scene.size.width;
    std::vector<double> facing;
    for (int x = 0; x < scene.size.width; ++x) {
        const double slope = (RidgeTop(scene, ridge, x + 7) - RidgeTop(scene, ridge, x - 7)) / 14;
        facing.push_back(std::clamp((moonX > x ? slope : -slope) * 1.6, -1.0, 1.0));
    }
    return facing;
}

void PaintRidges(LightMap& map, const Scene& scene) {
    const double shore = scene.shore * scene.size.height;
    for (int ridge = 0; ridge < kRidges; ++ridge) {
        const double share = ridge / (kRidges - 1.0);
        const Colour rock = Mix(scene.farRidge, scene.nearRidge, share);
        const std::vector<double> facing = Facing(scene, ridge);
        const auto facingAt = [&facing](double x) {
            return facing[static_cast<std::size_t>(
                std::clamp(x, 0.0, static_cast<double>(facing.size() - 1)))];
        };
        for (int x = 0; x < map.Width(); ++x) {
            const double top = RidgeTop(scene, ridge, x);
            for (int y = std::max(0, static_cast<int>(top)); y < static_cast<int>(shore); ++y) {
                const double depth = y - top;
                const double grain = Fractal(x / 30.0 + depth / 70.0, depth / 30.0, 4, scene.seed + 300);
                // Gullies lean and wander as they go down, and the crest matters less the farther they are
                // below it.
                const double wander = (grain - 0.5) * depth * 0.9 + (0.55 - 0.3 * share) * depth;
                const double crest = facingAt(x + wander) * std::exp(-depth / 90);
                const double lit = SmoothStep(-0.1, 0.75, crest + (grain - 0.5) * 0.7);
                const double shaded = SmoothStep(0.0, 0.7, -crest - (grain - 0.5) * 0.7);
                Colour colour = Mix(rock, scene.haze, 0.30 * (1 - share) * lit);
                colour = Mix(colour, scene.nearRidge, 0.42 * shaded);
                const double edge = SmoothStep(0, 0.8, facingAt(x)) * std::exp(-depth / 2.5);
                colour = Mix(colour, scene.haze, 0.5 * edge * (1 - 0.6 * share));
                const double mist = SmoothStep(0, 1, depth / std::max(20.0, shore - top));
                colour = Mix(colour, scene.haze, 0.5 * (1 - share) * mist * mist);
                map.Cover(x, y, colour, std::clamp(depth + 0.5, 0.0, 1.0));
            }
        }
    }
}

// A pine, from its tip down to the ground at (x, y).
void AddPine(cairo_t* context, double x, double y, double height, Random& random) {
    constexpr int kTiers = 9;
    const double lean = random.Between(-0.03, 0.03) * height;
    std::array<double, kTiers> left{};
    std::array<double, kTiers> right{};
    for (std::size_t tier = 0; tier < kTiers; ++tier) {
        const double grow = (static_cast<double>(tier) + 1) / kTiers;
        left[tier] = height * 0.21 * std::pow(grow, 0.85) * random.Between(0.75, 1.15);
        right[tier] = height * 0.21 * std::pow(grow, 0.85) * random.Between(0.75, 1.15);
    }
    const auto level = [&](std::size_t tier) {
        return y - height + height * 0.93 * (static_cast<double>(tier) + 1) / kTiers;
    };
    const auto axis = [&](double at) { return x + lean * (y - at) / height; };
    cairo_move_to(context, axis(y - height), y - height);
    for (std::size_t tier = 0; tier < kTiers; ++tier) {
        cairo_line_to(context, axis(level(tier)) + right[tier], level(tier));
        cairo_line_to(context, axis(level(tier)) + right[tier] * 0.42, level(tier) - height * 0.025);
    }
    cairo_line_to(context, x + height * 0.016, y + 4);
    cairo_line_to(context, x - height * 0.016, y + 4);
    for (std::size_t tier = kTiers; tier-- > 0;) {
        cairo_line_to(context, axis(level(tier)) - left[tier] * 0.42, level(tier) - height * 0.025);
        cairo_line_to(context, axis(level(tier)) - left[tier], level(tier));
    }
    cairo_close_path(context);
}

void CoverWith(LightMap& map, const Plane& plane, Colour colour) {
    for (int y = 0; y < map.Height(); ++y) {
        for (int x = 0; x < map.Width(); ++x) {
            if (plane.At(x, y) > 0) map.Cover(x, y, colour, static_cast<double>(plane.At(x, y)));
        }
    }
}

// The far bank: a dark line of small trees on the water line.
void PaintFarBank(LightMap& map, const Scene& scene) {
    const double shore = scene.shore * scene.size.height;
    Canvas trees(scene.size.width, scene.size.height);
    Random random(scene.seed + 400);
    const auto bank = [&](double x) { return shore - 3 - 15 * Noise(x / 170, 0.7, scene.seed + 401); };
    cairo_move_to(trees.Cairo(), 0, shore);
    for (int x = 0; x <= scene.size.width; x += 4)
        cairo_line_to(trees.Cairo(), x, bank(x));
    cairo_line_to(trees.Cairo(), scene.size.width, shore);
    cairo_close_path(trees.Cairo());
    Fill(trees.Cairo(), palette::kWhite);
    for (double x = 0; x < scene.size.width; x += random.Between(3, 11)) {
        const double wood = SmoothStep(0.3, 0.62, Noise(x / 130, 0.2, scene.seed + 402));
        if (wood < 0.08) continue;
        AddPine(trees.Cairo(), x, bank(x) + 2, random.Between(9, 17) + 30 * wood * random.Unit(), random);
        Fill(trees.Cairo(), palette::kWhite);
    }
    CoverWith(map, CoverageOf(trees), Mix(scene.nearRidge, palette::kInk, 0.35));
}

void PaintWater(LightMap& map, const Scene& scene) {
    const int shore = static_cast<int>(scene.shore * scene.size.height);
    const double moonX = scene.moonX * scene.size.width;
    const LightMap land = map;
    for (int y = shore; y < map.Height(); ++y) {
        const double below = y - shore + 0.5;
        const double depth = below / (map.Height() - shore);
        // Waves grow towards the viewer: the same noise, stretched by the distance.
        const double scale = 3 + 26 * depth;
        const double band = std::log(1 + below / 6) * 9;
        for (int x = 0; x < map.Width(); ++x) {
            const double wave = Fractal((x - moonX) / (scale * 6), band, 3, scene.seed + 500) - 0.5;
            const double sampleY = shore - 1 - below * 1.25 - wave * scale * 2.6;
            Colour colour = land.Sample(x + wave * scale * 1.2, std::clamp(sampleY, 0.0, shore - 1.0));
            colour = Mix(colour, scene.nearRidge, 0.22 + 0.42 * depth);
            map.At(x, y) = colour;
            // The moon's road: short flat glints that never merge, dense near its middle.
            const double off = (x - moonX) / (16 + 120 * depth + 60 * wave);
            const double road = std::exp(-off * off);
            const double fine =
                Noise((x - moonX) / (5 + 17 * depth), std::log(1 + below / 9) * 44, scene.seed + 520);
            const double broad = Noise((x - moonX) / (30 + 60 * depth), band * 1.7, scene.seed + 521);
            const double glint = SmoothStep(0.56, 0.86, 0.62 * fine + 0.38 * broad + 0.16 * road);
            map.Light(x, y, Rgb(0xffe6c8), road * (0.13 + 0.95 * glint) * (1 - 0.35 * depth));
        }
    }
    // Mist on the water line hides the seam.
    for (int y = std::max(0, shore - 26); y < std::min(map.Height(), shore + 18); ++y) {
        const double near = (y - shore) / 9.0;
        for (int x = 0; x < map.Width(); ++x) {
            const double drift = Fractal(x / 190.0, y / 24.0, 3, scene.seed + 540);
            map.Cover(x, y, scene.haze, 0.42 * std::exp(-near * near) * SmoothStep(0.25, 0.8, drift));
        }
    }
}

// The bank where the viewer stands: two dark slopes in the lower corners with tall pines.
void PaintNearBank(LightMap& map, const Scene& scene) {
    const double width = scene.size.width;
    const double height = scene.size.height;
    Canvas bank(scene.size.width, scene.size.height);
    cairo_t* context = bank.Cairo();
    Random random(scene.seed + 600);
    const double rise = std::min(width, height) * 0.2;
    const auto ground = [&](double x) {
        const double fromLeft = std::exp(-x / (width * 0.16));
        const double fromRight = 0.62 * std::exp(-(width - x) / (width * 0.13));
        const double rough = 10 * Fractal(x / 60, 0.4, 4, scene.seed + 601);
        return height + 12 - rise * (fromLeft + fromRight) - rough;
    };
    cairo_move_to(context, 0, height);
    for (int x = 0; x <= scene.size.width; x += 2)
        cairo_line_to(context, x, ground(x));
    cairo_line_to(context, width, height);
    cairo_close_path(context);
    Fill(context, palette::kWhite);
    const auto plant = [&](double from, double to, int count, double tall) {
        for (int i = 0; i < count; ++i) {
            const double x = random.Between(from, to);
            const double edge = 1 - std::abs(x - (from < width / 2 ? 0 : width)) / (to - from);
            AddPine(context, x, ground(x) + 5,
                    tall * (0.35 + 0.65 * std::max(0.0, edge)) * random.Between(0.6, 1.1), random);
            Fill(context, palette::kWhite);
        }
    };
    const double tall = std::min(width, height) * 0.40;
    plant(-10, width * 0.15, 9, tall);
    plant(width * 0.89, width + 10, 6, tall * 0.72);
    CoverWith(map, CoverageOf(bank), Rgb(0x07071a));
}

}  // namespace

Canvas DrawScene(const Scene& scene) {
    LightMap map(scene.size.width, scene.size.height);
    PaintSky(map, scene);
    PaintRidges(map, scene);
    PaintFarBank(map, scene);
    PaintWater(map, scene);
    PaintNearBank(map, scene);
    return map.ToCanvas();
}

Canvas DuskOverTheLake(PictureSize size) {
    static constexpr std::array kSky = {Stop{0.00, Rgb(0x07081d)},  Stop{0.30, Rgb(0x14133f)},
                                        Stop{0.55, Rgb(0x35206b)},  Stop{0.74, palette::kPlum},
                                        Stop{0.89, palette::kRose}, Stop{1.00, Rgb(0xffb074)}};
    const bool upright = size.height > size.width;
    return DrawScene({.size = size,
                      .shore = upright ? 0.70 : 0.735,
                      .moonX = upright ? 0.66 : 0.685,
                      .moonY = upright ? 0.20 : 0.245,
                      .moonRadius = upright ? 74.0 : 84.0,
                      .sky = kSky,
                      .haze = Rgb(0xe58a86),
                      .farRidge = Rgb(0x6d3c86),
                      .nearRidge = Rgb(0x11102f),
                      .clouds = 0.9,
                      .aurora = 0,
                      .seed = 20});
}

Canvas NorthernLights(PictureSize size) {
    static constexpr std::array kSky = {Stop{0.00, Rgb(0x050a20)}, Stop{0.45, Rgb(0x0c1a42)},
                                        Stop{0.80, Rgb(0x1b3a66)}, Stop{1.00, Rgb(0x3f7f93)}};
    return DrawScene({.size = size,
                      .shore = 0.72,
                      .moonX = 0.20,
                      .moonY = 0.20,
                      .moonRadius = 44,
                      .sky = kSky,
                      .haze = Rgb(0x7fc9c4),
                      .farRidge = Rgb(0x2c4a78),
                      .nearRidge = Rgb(0x0a1230),
                      .clouds = 0,
                      .aurora = 0.9,
                      .seed = 47});
}

Canvas WeaveTile(PictureSize size) {
    LightMap map(size.width, size.height);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            // Whole periods in both directions, so that the tiles join without a seam.
            const double across = 2 * std::numbers::pi * (x + y) / 32.0;
            const double along = 2 * std::numbers::pi * (x - y) / 32.0;
            const double over = std::cos(across) * std::cos(along);
            const double strand = over > 0 ? std::abs(std::cos(across / 2)) : std::abs(std::cos(along / 2));
            const Colour thread = Mix(Rgb(0x17163f), Rgb(0x27245c), std::pow(strand, 1.5));
            map.At(x, y) = Mix(thread, Rgb(0x3b357f), 0.5 * std::pow(std::abs(over), 3));
        }
    }
    return map.ToCanvas();
}

}  // namespace skin
