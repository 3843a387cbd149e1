#include "examples/gallery/skin/canvas.h"

#include <algorithm>
#include <numbers>
#include <stdexcept>

namespace skin {
namespace {

int densityOfAll = 1;

using Pattern = std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)>;

Pattern WithStops(cairo_pattern_t* gradient, std::initializer_list<Stop> stops) {
    for (const Stop& stop : stops) {
        cairo_pattern_add_color_stop_rgba(gradient, stop.at, stop.colour.red, stop.colour.green,
                                          stop.colour.blue, stop.colour.alpha);
    }
    return {gradient, cairo_pattern_destroy};
}

}  // namespace

void Canvas::SetDensity(int density) {
    densityOfAll = density;
}

int Canvas::Density() {
    return densityOfAll;
}

Canvas::Canvas(int width, int height)
    : width_(width),
      height_(height),
      density_(densityOfAll),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, PixelWidth(), PixelHeight())) {
    cairo_surface_set_device_scale(surface_.get(), density_, density_);
    context_.reset(cairo_create(surface_.get()));
    if (cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("cannot make a canvas");
}

std::span<std::uint32_t> Canvas::Row(int y) {
    cairo_surface_flush(surface_.get());
    unsigned char* bytes = cairo_image_surface_get_data(surface_.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface_.get());
    return {reinterpret_cast<std::uint32_t*>(bytes + y * stride), static_cast<std::size_t>(PixelWidth())};
}

std::span<const std::uint32_t> Canvas::Row(int y) const {
    return const_cast<Canvas*>(this)->Row(y);
}

void Canvas::PixelsChanged() {
    cairo_surface_mark_dirty(surface_.get());
}

void Canvas::Draw(const Canvas& source, int x, int y, double opacity) {
    const SavedState saved(Cairo());
    cairo_identity_matrix(Cairo());
    cairo_set_source_surface(Cairo(), source.surface_.get(), x, y);
    cairo_paint_with_alpha(Cairo(), opacity);
}

Outline RoundedBox(Box box, double radius) {
    return [box, radius](cairo_t* context) {
        constexpr double kQuarter = std::numbers::pi / 2;
        const double r = std::min({radius, box.width / 2, box.height / 2});
        cairo_new_sub_path(context);
        cairo_arc(context, box.Right() - r, box.y + r, r, -kQuarter, 0);
        cairo_arc(context, box.Right() - r, box.Bottom() - r, r, 0, kQuarter);
        cairo_arc(context, box.x + r, box.Bottom() - r, r, kQuarter, 2 * kQuarter);
        cairo_arc(context, box.x + r, box.y + r, r, 2 * kQuarter, 3 * kQuarter);
        cairo_close_path(context);
    };
}

Outline Circle(double x, double y, double radius) {
    return [=](cairo_t* context) {
        cairo_new_sub_path(context);
        cairo_arc(context, x, y, radius, 0, 2 * std::numbers::pi);
        cairo_close_path(context);
    };
}

void SetColour(cairo_t* context, Colour colour) {
    cairo_set_source_rgba(context, colour.red, colour.green, colour.blue, colour.alpha);
}

void Fill(cairo_t* context, Colour colour) {
    SetColour(context, colour);
    cairo_fill(context);
}

void FillVertical(cairo_t* context, double top, double bottom, std::initializer_list<Stop> stops) {
    const Pattern gradient = WithStops(cairo_pattern_create_linear(0, top, 0, bottom), stops);
    cairo_set_source(context, gradient.get());
    cairo_fill(context);
}

void FillRadial(cairo_t* context, double x, double y, double radius, std::initializer_list<Stop> stops) {
    const Pattern gradient = WithStops(cairo_pattern_create_radial(x, y, 0, x, y, radius), stops);
    cairo_set_source(context, gradient.get());
    cairo_fill(context);
}

void Stroke(cairo_t* context, Colour colour, double width) {
    SetColour(context, colour);
    cairo_set_line_width(context, width);
    cairo_stroke(context);
}

void StrokeVertical(cairo_t* context, double top, double bottom, double width,
                    std::initializer_list<Stop> stops) {
    const Pattern gradient = WithStops(cairo_pattern_create_linear(0, top, 0, bottom), stops);
    cairo_set_source(context, gradient.get());
    cairo_set_line_width(context, width);
    cairo_stroke(context);
}

}  // namespace skin
