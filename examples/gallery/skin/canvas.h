// A picture to draw on with cairo, and the few path and paint steps that every part of the skin shares.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>

#include "examples/gallery/skin/palette.h"

namespace skin {

// Premultiplied 32-bit ARGB, top-down, transparent at first. Movable, not copyable. Sizes and places are
// units.
class Canvas {
  public:
    Canvas(int width, int height);
    // Pixels to a unit, of canvases made from now on.
    static void SetDensity(int density);
    static int Density();

    int Width() const { return width_; }
    int Height() const { return height_; }
    cairo_t* Cairo() const { return context_.get(); }

    int PixelWidth() const { return width_ * density_; }
    int PixelHeight() const { return height_ * density_; }
    // Pixels of one row of pixels. After writing through it call PixelsChanged() before drawing again.
    std::span<std::uint32_t> Row(int y);
    std::span<const std::uint32_t> Row(int y) const;
    void PixelsChanged();

    // Puts another canvas on this one, at whole pixels.
    void Draw(const Canvas& source, int x, int y, double opacity = 1);

  private:
    struct Free {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };
    int width_;
    int height_;
    int density_;
    std::unique_ptr<cairo_surface_t, Free> surface_;
    std::unique_ptr<cairo_t, Free> context_;
};

// Saves the context's state for one block.
class SavedState {
  public:
    explicit SavedState(cairo_t* context) : context_(context) { cairo_save(context_); }
    ~SavedState() { cairo_restore(context_); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

  private:
    cairo_t* context_;
};

// Adds an outline to the current path.
using Outline = std::function<void(cairo_t*)>;

struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    constexpr double Right() const { return x + width; }
    constexpr double Bottom() const { return y + height; }
    constexpr Box Inset(double by) const { return {x + by, y + by, width - 2 * by, height - 2 * by}; }
};

Outline RoundedBox(Box box, double radius);
Outline Circle(double x, double y, double radius);

struct Stop {
    double at;  // 0 to 1
    Colour colour;
};

void SetColour(cairo_t* context, Colour colour);
// Each fills the current path and forgets it.
void Fill(cairo_t* context, Colour colour);
void FillVertical(cairo_t* context, double top, double bottom, std::initializer_list<Stop> stops);
void FillRadial(cairo_t* context, double x, double y, double radius, std::initializer_list<Stop> stops);
// Strokes the current path and forgets it.
void Stroke(cairo_t* context, Colour colour, double width);
void StrokeVertical(cairo_t* context, double top, double bottom, double width,
                    std::initializer_list<Stop> stops);

}  // namespace skin
