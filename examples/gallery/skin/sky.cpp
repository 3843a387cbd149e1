#include "examples/gallery/skin/sky.h"

#include <algorithm>
#include <cmath>

#include "examples/gallery/skin/noise.h"

namespace skin {
namespace {

Colour AlongStops(std::span<const Stop> stops, double at) {
    for (std::size_t i = 1; i < stops.size(); ++i) {
        if (at > stops[i].at) continue;
        const double share = (at - stops[i - 1].at) / (stops[i].at - stops[i - 1].at);
        return Mix(stops[i - 1].colour, stops[i].colour, std::clamp(share, 0.0, 1.0));
    }
    return stops.back().colour;
}

// 0 to 1: how much of the star band crosses this place. The band runs from lower left to upper right.
double StarBand(double x, double y, const Scene& scene) {
    const double across = (x * 0.52 + y * 0.85 - scene.size.height * 0.52) / scene.size.height;
    const double core = std::exp(-across * across / 0.014);
    return core * (0.35 + 0.65 * Fractal(x / 90, y / 90, 4, scene.seed + 11));
}

void PaintGradient(LightMap& map, const Scene& scene) {
    const double shore = scene.shore * scene.size.height;
    for (int y = 0; y < map.Height(); ++y) {
        const Colour base = AlongStops(scene.sky, y / shore);
        const double fade = 1 - SmoothStep(0.35, 0.8, y / shore);  // stars drown in the light below
        for (int x = 0; x < map.Width(); ++x) {
            map.At(x, y) = base;
            if (fade <= 0) continue;
            const double dust = Fractal(x / 55.0, y / 55.0, 4, scene.seed + 31);
            const double band = StarBand(x, y, scene) * fade;
            map.Light(x, y, Rgb(0x9a8cff), band * 0.34 * SmoothStep(0.2, 0.75, dust));
            map.Light(x, y, Rgb(0xff9ec8), band * 0.12 * SmoothStep(0.5, 0.85, dust));
        }
    }
}

void PaintStar(LightMap& map, double x, double y, double radius, Colour colour, double strength) {
    const int reach = static_cast<int>(std::ceil(radius * 4));
    const int centreX = static_cast<int>(x);
    const int centreY = static_cast<int>(y);
    for (int row = std::max(0, centreY - reach); row <= std::min(map.Height() - 1, centreY + reach); ++row) {
        for (int column = std::max(0, centreX - reach); column <= std::min(map.Width() - 1, centreX + reach);
             ++column) {
            const double dx = column + 0.5 - x;
            const double dy = row + 0.5 - y;
            map.Light(column, row, colour, strength * std::exp(-(dx * dx + dy * dy) / (radius * radius)));
        }
    }
}

void PaintStars(LightMap& map, const Scene& scene) {
    Random random(scene.seed);
    const int count = scene.size.width * scene.size.height / 520;
    for (int i = 0; i < count; ++i) {
        const double x = random.Between(0, scene.size.width);
        const double y = random.Between(0, scene.size.height * scene.shore);
        const double size = random.Unit();
        const double warmth = random.Unit();
        const double luck = random.Unit();
        const double fade = 1 - SmoothStep(0.3, 0.86, y / (scene.size.height * scene.shore));
        // Faint stars crowd in the band, bright ones stand anywhere.
        if (size < 0.9 && luck > 0.25 + 0.75 * StarBand(x, y, scene)) continue;
        const double bright = std::pow(size, 9);
        const Colour colour = warmth < 0.3 ? Rgb(0xffe2c4) : warmth < 0.7 ? Rgb(0xeef0ff) : Rgb(0xbcc8ff);
        PaintStar(map, x, y, 0.62 + 0.75 * bright, colour, (0.28 + 0.72 * bright) * fade);
        if (bright > 0.82) PaintStar(map, x, y, 5, colour, 0.22 * fade);
    }
}

void PaintAurora(LightMap& map, const Scene& scene) {
    if (scene.aurora <= 0) return;
    const double height = scene.size.height;
    for (int curtain = 0; curtain < 3; ++curtain) {
        const std::uint32_t seed = scene.seed + 100 + static_cast<std::uint32_t>(curtain) * 10;
        const double foot = height * (0.56 - 0.11 * curtain);
        const double length = height * (0.20 + 0.03 * curtain);
        for (int x = 0; x < map.Width(); ++x) {
            const double fold = Fractal(x / 260.0 + curtain * 3.7, 0.5, 3, seed);
            const double edge = foot + (fold - 0.5) * height * 0.26 + x * 0.03 * (curtain - 1);
            const double rays = 0.35 + 0.65 * Fractal(x / 16.0 + fold * 9, 0.2, 3, seed + 5);
            const double patch = SmoothStep(0.3, 0.7, Noise(x / 330.0, curtain * 2.1, seed + 8));
            for (int y = 0; y < static_cast<int>(height * scene.shore); ++y) {
                const double above = edge - y;
                const double body = above >= 0 ? std::exp(-above / (length * (0.5 + rays)))
                                               : std::exp(-above * above / 1800.0);
                if (body < 0.004) continue;
                const Colour colour = Mix(Rgb(0x36f5b0), Rgb(0x8a4dff),
                                          SmoothStep(0.0, 0.8, std::max(0.0, above) / (length * 1.3)));
                map.Light(x, y, colour, scene.aurora * body * patch * rays * (0.85 - 0.2 * curtain));
            }
        }
    }
}

void PaintClouds(LightMap& map, const Scene& scene) {
    if (scene.clouds <= 0) return;
    const double shore = scene.shore * scene.size.height;
    for (int y = 0; y < static_cast<int>(shore); ++y) {
        const double at = y / shore;
        const double layer = SmoothStep(0.38, 0.62, at) * (1 - SmoothStep(0.86, 1.0, at));
        if (layer <= 0) continue;
        // Towards the horizon clouds lie flatter and farther away.
        const double squeeze = 0.35 + 1.1 * (1 - at);
        for (int x = 0; x < map.Width(); ++x) {
            const double thick = Fractal(x / (420.0 * squeeze), y / (46.0 * squeeze), 5, scene.seed + 51);
            const double cover = SmoothStep(0.5, 0.82, thick) * layer * scene.clouds;
            if (cover <= 0) continue;
            // The lit side faces the glow below: thinner cloud just beneath means light comes through.
            const double below =
                Fractal(x / (420.0 * squeeze), (y + 9) / (46.0 * squeeze), 5, scene.seed + 51);
            const double lit = SmoothStep(-0.02, 0.16, thick - below);
            const Colour shade = Mix(Rgb(0x3a2470), Rgb(0x8a3d80), at);
            const Colour glow = Mix(palette::kRose, Rgb(0xffb98a), SmoothStep(0.6, 0.9, at));
            map.Cover(x, y, Mix(shade, glow, lit), cover * (0.45 + 0.4 * lit));
        }
    }
}

// A sphere's worth of soft maria and a few craters: 0 bright to 1 dark.
double MoonShade(double u, double v, const Scene& scene) {
    const double bulge = std::sqrt(std::max(0.05, 1 - u * u - v * v));
    const double sphereU = u / (0.55 + 0.45 * bulge);
    const double sphereV = v / (0.55 + 0.45 * bulge);
    double shade =
        0.75 * SmoothStep(0.46, 0.66, Fractal(sphereU * 1.5 + 4.2, sphereV * 1.5 + 1.7, 4, scene.seed + 3));
    Random random(scene.seed + 5);
    for (int i = 0; i < 16; ++i) {
        const double x = random.Between(-0.8, 0.8);
        const double y = random.Between(-0.8, 0.8);
        const double radius = random.Between(0.03, 0.12);
        const double distance = std::hypot(sphereU - x, sphereV - y) / radius;
        shade += 0.10 * (1 - SmoothStep(0.5, 1.1, distance));
        shade -= 0.07 * std::exp(-(distance - 1.05) * (distance - 1.05) / 0.05);
    }
    return std::clamp(shade, 0.0, 1.0);
}

void PaintMoon(LightMap& map, const Scene& scene) {
    const double centreX = scene.moonX * scene.size.width;
    const double centreY = scene.moonY * scene.size.height;
    for (int y = 0; y < map.Height(); ++y) {
        for (int x = 0; x < map.Width(); ++x) {
            const double dx = x + 0.5 - centreX;
            const double dy = y + 0.5 - centreY;
            const double distance = std::hypot(dx, dy);
            const double outside = std::max(0.0, distance - scene.moonRadius) / scene.moonRadius;
            map.Light(x, y, Rgb(0xffdcc0), 0.42 * std::exp(-outside * 2.6) + 0.16 * std::exp(-outside * 0.7));
            const double cover = std::clamp(scene.moonRadius - distance + 0.5, 0.0, 1.0);
            if (cover <= 0) continue;
            const double u = dx / scene.moonRadius;
            const double v = dy / scene.moonRadius;
            Colour face = Mix(palette::kMoon, Rgb(0xd8b7b0), MoonShade(u, v, scene));
            const double limb = SmoothStep(0.55, 1.0, std::hypot(u + 0.22, v + 0.22) / 1.3);
            face = Mix(face, Rgb(0xc48a9c), 0.6 * limb);
            map.Cover(x, y, face, cover);
        }
    }
}

}  // namespace

void PaintSky(LightMap& map, const Scene& scene) {
    PaintGradient(map, scene);
    PaintStars(map, scene);
    PaintAurora(map, scene);
    PaintMoon(map, scene);
    PaintClouds(map, scene);
}

}  // namespace skin
