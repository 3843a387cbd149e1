// The rubber band as it is drawn.
#pragma once

#include <optional>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

namespace qkui {

class DisplayList;

struct RubberBand {
    CRect rect;
    std::optional<CRect> clip;  // the list that it stays in

    void Draw(Gdiplus::Graphics& graphics) const;
    // Of a band that grows, only the edges and what is new inside them are drawn again.
    void Record(DisplayList& list) const;
};

}  // namespace qkui
