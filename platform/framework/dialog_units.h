// Dialog units: the measures of a template, which grow with its font.
#pragma once

#include <optional>

#include <platform/geometry.h>

#include "platform/resources/dialog_template.h"

namespace platform {

// The average width of a letter and the height of a line, in pixels.
struct DialogBaseUnits {
    int width = 8;
    int height = 16;
    friend bool operator==(const DialogBaseUnits&, const DialogBaseUnits&) = default;
};

// Of a template's font; the default where the template asks for none, or for a size outside 1 to 1000 points.
DialogBaseUnits MeasureBaseUnits(const std::optional<DialogFont>& font);

// A quarter of the base width, an eighth of the base height; halves are rounded away from zero.
int HorizontalPixels(int units, const DialogBaseUnits& base);
int VerticalPixels(int units, const DialogBaseUnits& base);

}  // namespace platform
