// The geometry of an entry: where its parts lie in its cell, how far its caption reaches, what drawing it
// touches.
#pragma once

#include <platform/geometry.h>

#include "list/caption_extents.h"
#include "list/list_item.h"

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

bool QKIsPlaced(const QKListItem& entry);
void QKUnplace(QKListItem& entry);
// Moves all rectangles of a placed entry.
void QKOffset(QKListItem& entry, CPoint by);

// Set rcMState and rcFState from the cell and the measured caption, whose extents may be `known`.
void QKMeasureHit(const QKListMeasure& measure, QKListItem& entry, QKCaptionExtents* known = nullptr);
void QKMeasureFocus(const QKListMeasure& measure, QKListItem& entry, QKCaptionExtents* known = nullptr);

// Whether the caption's cell bounds the hit rectangle before it is measured, and the rectangle that holds it.
bool QKHasHitCover(const QKListMeasure& measure, const QKListItem& entry);
CRect QKHitCover(const QKListMetrics& metrics, const QKListItem& entry);

// What the pixels that an entry touches follow from, but for the entry.
struct QKDrawnMetrics {
    QKListMetrics metrics;
    SIZE frame;  // the largest of all frame images

    friend bool operator==(const QKDrawnMetrics&, const QKDrawnMetrics&) = default;
};
// All that drawing the entry may touch. `hit`: its hit rectangle or the cover of it.
CRect QKDrawnBounds(const QKDrawnMetrics& drawn, const QKListItem& entry, const CRect& hit);
