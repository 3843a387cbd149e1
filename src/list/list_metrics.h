// The geometry of an entry: where its parts lie in its cell, how far its caption reaches, what drawing it
// touches.
#pragma once

#include <string_view>

#include <platform/geometry.h>

#include "list/caption_extents.h"

// Measured rectangles are sums of floats: whole numbers for coordinates up to here.
constexpr int QKExactPixels = 1 << 22;

// The settings of a list that place the parts of an entry, in pixels.
struct QKListMetrics {
    int type;  // a QKListType, or any other number: laid out as an icon grid
    int itemWidth, itemHeight;
    int imageWidth, imageHeight;
    int innerTop, textGap;

    bool Rows() const { return type == 2; }
    friend bool operator==(const QKListMetrics&, const QKListMetrics&) = default;
};

// All that the state rectangles of a placed entry follow from, but for the entry.
struct QKListMeasure {
    QKListMetrics metrics{};
    QKCaptionStyle style;

    friend bool operator==(const QKListMeasure&, const QKListMeasure&) = default;
};

CRect QKGridCaptionCell(const QKListMetrics& metrics, const CRect& cell);
CRect QKCaptionCell(const QKListMetrics& metrics, const CRect& cell);  // by the type
CRect QKIconBox(const QKListMetrics& metrics, const CRect& cell);
int QKIconOverhang(const QKListMetrics& metrics);  // how far the box starts left of the cell, or 0

// The rectangles of an entry, in client pixels.
struct QKEntryRects {
    CRect cell, caption;  // rcItem, rcText
    CRect hit, focus;     // rcMState, rcFState: the state rectangles

    friend bool operator==(const QKEntryRects&, const QKEntryRects&) = default;
};

CRect QKNoPlace();  // all four -1
bool QKIsPlaced(const CRect& cell);

// Set the state rectangles from the cell and the measured caption, whose extents may be `known`.
void QKMeasureHit(const QKListMeasure& measure, std::u16string_view text, QKEntryRects& rects,
                  QKCaptionExtents* known = nullptr);
void QKMeasureFocus(const QKListMeasure& measure, std::u16string_view text, QKEntryRects& rects,
                    QKCaptionExtents* known = nullptr);

// Whether cell and caption bound the hit rectangle before it is measured, and the rectangle that holds it.
bool QKHasHitCover(const QKListMeasure& measure, const CRect& cell, const CRect& caption);
CRect QKHitCover(const QKListMetrics& metrics, const CRect& cell, const CRect& caption);

// What the pixels that an entry touches follow from, but for the entry.
struct QKDrawnMetrics {
    QKListMetrics metrics;
    SIZE frame;  // the largest of all frame images

    friend bool operator==(const QKDrawnMetrics&, const QKDrawnMetrics&) = default;
};
// What of an entry is drawn besides frames.
struct QKDrawnParts {
    bool focused, icon, caption;
};
// All that drawing a placed entry may touch. `rects.hit`: the hit rectangle or the cover of it.
CRect QKDrawnBounds(const QKDrawnMetrics& drawn, const QKDrawnParts& parts, const QKEntryRects& rects);
