// What answers about an entry follow from in its record.
#pragma once

#include <cstring>
#include <type_traits>

#include <qkui/list/list_item.h>
#include "list/list_metrics.h"

namespace qkui {

struct RecordState {
    explicit RecordState(const QKListItem& entry)
        : rects{entry.rcItem, entry.rcText, entry.rcMState, entry.rcFState},
          id(entry.nID),
          mouse(entry.nMouseState),
          focus(entry.nFocusState),
          unselected(entry.nSelState),
          drawn((entry.pImage ? 1 : 0) | (entry.szText[0] ? 2 : 0) | (entry.bShowText ? 4 : 0)) {}
    static void Prefetch(const QKListItem& entry) {
        __builtin_prefetch(&entry.rcText);
        __builtin_prefetch(&entry.rcItem);
        __builtin_prefetch(&entry.bShowText);
        __builtin_prefetch(&entry.szTextCath[8]);
    }
    // In one go: thousands are compared for an answer.
    friend bool operator==(const RecordState& a, const RecordState& b) {
        return std::memcmp(&a, &b, sizeof a) == 0;
    }

    EntryRects rects;
    int id, mouse, focus, unselected;
    int drawn;  // what there is to draw: icon, caption, and whether that is shown
};
static_assert(std::has_unique_object_representations_v<RecordState>);

}  // namespace qkui
