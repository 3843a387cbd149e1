// What answers about an entry follow from in its record.
#pragma once

#include "list/list_item.h"
#include "list/list_metrics.h"

struct QKRecordState {
    explicit QKRecordState(const QKListItem& entry)
        : rects{entry.rcItem, entry.rcText, entry.rcMState, entry.rcFState},
          id(entry.nID),
          mouse(entry.nMouseState),
          focus(entry.nFocusState),
          unselected(entry.nSelState),
          hasImage(entry.pImage != nullptr),
          hasText(entry.szText[0] != 0),
          showsText(entry.bShowText != 0) {}
    static void Prefetch(const QKListItem& entry) {
        __builtin_prefetch(&entry.rcText);
        __builtin_prefetch(&entry.rcItem);
        __builtin_prefetch(&entry.bShowText);
    }
    friend bool operator==(const QKRecordState&, const QKRecordState&) = default;

    QKEntryRects rects;
    int id, mouse, focus, unselected;
    bool hasImage, hasText, showsText;
};
