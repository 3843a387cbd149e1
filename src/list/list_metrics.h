// The geometry of an entry: where its parts lie in its cell, how far its caption reaches, what drawing it
// touches.
#pragma once

#include <string_view>

#include <platform/geometry.h>

#include "list/caption_extents.h"

namespace qkui {

// Measured rectangles are sums of floats: whole numbers for coordinates up to here.
inline constexpr int kExactPixels = 1 << 22;

// The settings of a list that place the parts of an entry, in pixels.
struct ListMetrics {
    int type;  // a QKListType, or any other number: laid out as an icon grid
    int itemWidth, itemHeight;
    int imageWidth, imageHeight;
    int innerTop, textGap;

    bool Rows() const { return type == 2; }
    friend bool operator==(const ListMetrics&, const ListMetrics&) = default;
};

// All that the state rectangles of a placed entry follow from, but for the entry.
struct ListMeasure {
    ListMetrics metrics{};
    CaptionStyle style;

    friend bool operator==(const ListMeasure&, const ListMeasure&) = default;
};

CRect GridCaptionCell(const ListMetrics& metrics, const CRect& cell);
CRect CaptionCell(const ListMetrics& metrics, const CRect& cell);  // by the type
CRect IconBox(const ListMetrics& metrics, const CRect& cell);
int IconOverhang(const ListMetrics& metrics);  // how far the box starts left of the cell, or 0

// The rectangles of an entry, in client pixels.
struct EntryRects {
    CRect cell, caption;  // rcItem, rcText
    CRect hit, focus;     // rcMState, rcFState: the state rectangles

    friend bool operator==(const EntryRects&, const EntryRects&) = default;
};

CRect NoPlace();  // all four -1
bool IsPlaced(const CRect& cell);

// Set the state rectangles from the cell and the measured caption, whose extents may be `known`.
void MeasureHit(const ListMeasure& measure, std::u16string_view text, EntryRects& rects,
                CaptionExtents* known = nullptr);
void MeasureFocus(const ListMeasure& measure, std::u16string_view text, EntryRects& rects,
                  CaptionExtents* known = nullptr);

// Whether cell and caption bound the hit rectangle before it is measured, and the rectangle that holds it.
bool HasHitCover(const ListMeasure& measure, const CRect& cell, const CRect& caption);
CRect HitCover(const ListMetrics& metrics, const CRect& cell, const CRect& caption);

// What the pixels that an entry touches follow from, but for the entry.
struct DrawnMetrics {
    ListMetrics metrics;
    SIZE frame;  // the largest of all frame images

    friend bool operator==(const DrawnMetrics&, const DrawnMetrics&) = default;
};
// What of an entry is drawn besides frames.
struct DrawnParts {
    bool focused, icon, caption;
};
// All that drawing a placed entry may touch. `rects.hit`: the hit rectangle or the cover of it.
CRect DrawnBounds(const DrawnMetrics& drawn, const DrawnParts& parts, const EntryRects& rects);

}  // namespace qkui
