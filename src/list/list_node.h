// A place in a list's collection, and what the list knows about the entry there.
#pragma once

#include <cstdint>
#include <list>
#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

#include "list/caption_extents.h"
#include "list/list_item.h"

struct QKListNode {
    QKListItem* item = nullptr;
    std::uint64_t order = 0;  // grows along the collection

    // As last read from the record. The rectangles are seen from the entries' common origin.
    CRect cell;   // rcItem
    CRect hit;    // rcMState; while that is not measured, a rectangle that holds it
    CRect drawn;  // whatever drawing the entry touches
    int id = -1;
    int mouse = 0;
    int focus = 1;
    int unselected = 1;  // nSelState

    CPoint origin;                   // that the record's rectangles were last written for
    std::uint64_t captionEpoch = 0;  // that the record's rendered caption was last emptied for
    bool placed = true;
    bool measured = true;         // the record's state rectangles are what its caption makes them
    bool handedOut = false;       // the host holds the record and may change it at any time
    bool lookedAt = false;        // the host holds the record and may read it at any time
    std::size_t handedOutAt = 0;  // among those
    std::unique_ptr<QKCaptionExtents> extents;  // of what the host holds, once measured

    // The rendered caption, while it is kept.
    bool hasCaption = false;
    std::list<QKListNode*>::iterator captionSeen;
    std::uint64_t captionFrame = 0;
    std::size_t captionBytes = 0;
    // How it was rendered, so that one dropped for lack of room comes back the same.
    struct Rendering {
        SIZE size = {0, 0};
        Gdiplus::StringTrimming trimming = Gdiplus::StringTrimmingNone;
        std::uint64_t age = 0;
    };
    bool droppedCaption = false;
    Rendering rendering;
};
