#include "examples/gallery/skin/effects.h"

#include <algorithm>
#include <cmath>

namespace skin {
namespace {

std::vector<float> GaussianKernel(double sigma) {
    const int radius = static_cast<int>(std::ceil(sigma * 3));
    std::vector<float> kernel;
    double sum = 0;
    for (int i = -radius; i <= radius; ++i) {
        const double weight = std::exp(-i * i / (2 * sigma * sigma));
        kernel.push_back(static_cast<float>(weight));
        sum += weight;
    }
    for (float& weight : kernel)
        weight = static_cast<float>(weight / sum);
    return kernel;
}

// Blurs along x and turns the result, so that two calls blur both ways.
Plane BlurredAndTurned(const Plane& plane, const std::vector<float>& kernel) {
    const int radius = static_cast<int>(kernel.size() / 2);
    Plane turned(plane.height, plane.width);
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            float sum = 0;
            const int first = std::max(0, x - radius);
            const int last = std::min(plane.width - 1, x + radius);
            for (int i = first; i <= last; ++i) {
                sum += plane.At(i, y) * kernel[static_cast<std::size_t>(i - x + radius)];
            }
            turned.At(y, x) = sum;
        }
    }
    return turned;
}

// The outline's coverage on a plane that is larger than the canvas by `margin` on every side, so that a blur
// sees the truth beyond the canvas' edge.
Plane CoverageOf(const Canvas& canvas, const Outline& outline, Softness softness, int margin, bool outside) {
    Canvas shape(canvas.Width() + 2 * margin, canvas.Height() + 2 * margin);
    if (outside) {
        SetColour(shape.Cairo(), palette::kWhite);
        cairo_paint(shape.Cairo());
        cairo_set_operator(shape.Cairo(), CAIRO_OPERATOR_DEST_OUT);
    }
    cairo_translate(shape.Cairo(), margin + softness.dx, margin + softness.dy);
    outline(shape.Cairo());
    Fill(shape.Cairo(), palette::kWhite);
    return CoverageOf(shape);
}

int MarginFor(Softness softness) {
    return static_cast<int>(
        std::ceil(softness.sigma * 3 + std::max(std::abs(softness.dx), std::abs(softness.dy))));
}

}  // namespace

Plane::Plane(int planeWidth, int planeHeight)
    : width(planeWidth),
      height(planeHeight),
      values(static_cast<std::size_t>(planeWidth) * static_cast<std::size_t>(planeHeight)) {}

Plane CoverageOf(const Canvas& picture) {
    Plane plane(picture.PixelWidth(), picture.PixelHeight());
    for (int y = 0; y < plane.height; ++y) {
        const std::span<const std::uint32_t> row = picture.Row(y);
        for (int x = 0; x < plane.width; ++x) {
            plane.At(x, y) = static_cast<float>(row[static_cast<std::size_t>(x)] >> 24) / 255.0F;
        }
    }
    return plane;
}

void Blur(Plane& plane, double sigma) {
    if (sigma <= 0) return;
    const std::vector<float> kernel = GaussianKernel(sigma);
    plane = BlurredAndTurned(BlurredAndTurned(plane, kernel), kernel);
}

Canvas Tinted(const Plane& plane, Colour colour) {
    Canvas canvas(plane.width / Canvas::Density(), plane.height / Canvas::Density());
    for (int y = 0; y < plane.height; ++y) {
        const std::span<std::uint32_t> row = canvas.Row(y);
        for (int x = 0; x < plane.width; ++x) {
            const double alpha = static_cast<double>(plane.At(x, y)) * colour.alpha;
            const auto channel = [alpha](double value) {
                return static_cast<std::uint32_t>(std::lround(std::clamp(value * alpha, 0.0, 1.0) * 255));
            };
            row[static_cast<std::size_t>(x)] = channel(1) << 24 | channel(colour.red) << 16 |
                                               channel(colour.green) << 8 | channel(colour.blue);
        }
    }
    canvas.PixelsChanged();
    return canvas;
}

void DropShadow(Canvas& canvas, const Outline& outline, Colour colour, Softness softness) {
    const int margin = MarginFor(softness);
    Plane shade = CoverageOf(canvas, outline, softness, margin, false);
    Blur(shade, softness.sigma * Canvas::Density());
    canvas.Draw(Tinted(shade, colour), -margin, -margin);
}

void InnerShadow(Canvas& canvas, const Outline& outline, Colour colour, Softness softness) {
    // Twice the margin: the plane's own edge must stay out of reach of the blur.
    const int margin = 2 * MarginFor(softness);
    Plane shade = CoverageOf(canvas, outline, softness, margin, true);
    Blur(shade, softness.sigma * Canvas::Density());
    const SavedState saved(canvas.Cairo());
    cairo_identity_matrix(canvas.Cairo());
    outline(canvas.Cairo());
    cairo_clip(canvas.Cairo());
    canvas.Draw(Tinted(shade, colour), -margin, -margin);
}

}  // namespace skin
