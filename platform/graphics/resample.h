// Scaling of pictures. Every pixel of the result depends only on what is named here, never on which part of
// the result is asked for.
#pragma once

#include <compare>
#include <cstdint>
#include <limits>
#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "platform/graphics/surface.h"

namespace platform {

enum class Filter : std::uint8_t {
    // Two neighbours on each axis; an axis that shrinks to half or less averages all pixels that fall on one.
    Bilinear,
    // The same, but an axis averages as soon as it shrinks.
    Smooth,
    Nearest
};

// What lies beyond the picture along one axis: nothing, or the picture again and again, every other time
// mirrored or not.
enum class Tiling : std::uint8_t { None, Repeat, Mirror };

// A source rectangle scaled to a size. Pixel centres map onto pixel centres: column x of the result lies at
// sourceX + (x + 0.5) * sourceWidth / width. The source rectangle may reach over any number of tiles. Beyond
// it its outermost pixels continue, which is also what mirroring gives; where tiles repeat, the opposite edge
// of the rectangle follows instead.
struct Scaling {
    double sourceX = 0, sourceY = 0, sourceWidth = 0, sourceHeight = 0;
    int width = 0, height = 0;                     // of the whole result
    int left = 0, top = 0, right = 0, bottom = 0;  // the part of the result that is meant
    Filter filter = Filter::Bilinear;
    Tiling tilingX = Tiling::None, tilingY = Tiling::None;
    friend auto operator<=>(const Scaling&, const Scaling&) = default;

    // Orders before every real one.
    static Scaling Lowest() {
        Scaling scaling;
        scaling.sourceX = -std::numeric_limits<double>::infinity();
        return scaling;
    }
};

// The columns (or rows) of a result of `size` pixels whose centres fall onto the picture: from first up to,
// not including, second.
struct Span {
    int first, second;
};
Span CoveredBy(double sourceStart, double sourceSize, int pictureSize, int size);

// The part of the result that `scaling` names; along an axis that does not tile it must lie inside what
// CoveredBy gives. Null without memory. Counts as one scaled image. Where so many tiles shrink that their
// pixels cannot all be looked at, the picture is shrunk first.
std::shared_ptr<Surface> Resample(const Surface& picture, const Scaling& scaling);
// The same, into a surface that has room for it from (left, top) on and is not the picture. False without
// memory.
bool ResampleInto(Surface& target, int left, int top, const Surface& picture, const Scaling& scaling);

}  // namespace platform
