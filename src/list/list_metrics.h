// The geometry of an entry: where its parts lie in its cell, how far its caption reaches, what drawing it
// touches.
#pragma once

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "list/list_item.h"

// The settings of a list that place the parts of an entry, in pixels.
struct QKListMetrics {
    int type;  // a QKListType, or any other number: laid out as an icon grid
    int itemWidth, itemHeight;
    int imageWidth, imageHeight;
    int innerTop, textGap;
    SIZE frameSize;  // the largest of all frame images

    bool Rows() const { return type == 2; }
    friend bool operator==(const QKListMetrics& a, const QKListMetrics& b) {
        return a.type == b.type && a.itemWidth == b.itemWidth && a.itemHeight == b.itemHeight &&
               a.imageWidth == b.imageWidth && a.imageHeight == b.imageHeight && a.innerTop == b.innerTop &&
               a.textGap == b.textGap && a.frameSize == b.frameSize;
    }
};

// What captions are measured with.
struct QKCaptionStyle {
    const Gdiplus::Font* font;
    const Gdiplus::StringFormat* format;  // cuts by an ellipsis
};

CRect QKGridCaptionCell(const QKListMetrics& metrics, const CRect& cell);
CRect QKCaptionCell(const QKListMetrics& metrics, const CRect& cell);  // by the type
CRect QKIconBox(const QKListMetrics& metrics, const CRect& cell);

bool QKIsPlaced(const QKListItem& entry);
void QKUnplace(QKListItem& entry);
// Moves all rectangles of a placed entry.
void QKOffset(QKListItem& entry, CPoint by);

// Set rcMState and rcFState from the cell and the measured caption.
void QKMeasureHit(const QKListMetrics& metrics, const QKCaptionStyle& style, QKListItem& entry);
void QKMeasureFocus(const QKListMetrics& metrics, const QKCaptionStyle& style, QKListItem& entry);

// Whether the caption's cell bounds the hit rectangle before it is measured, and the rectangle that holds it.
bool QKHasHitCover(const QKListItem& entry);
CRect QKHitCover(const QKListMetrics& metrics, const QKListItem& entry);

// All that drawing the entry may touch. `hit`: its hit rectangle or the cover of it.
CRect QKDrawnBounds(const QKListMetrics& metrics, const QKListItem& entry, const CRect& hit);
