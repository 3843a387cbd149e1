// Which entries of a list are selected, besides what their flags say: records that are no entries, too.
#pragma once

#include <unordered_set>

#include <qkui/list/list_item.h>

namespace qkui {

struct Entry;

struct EntrySelection {
    std::unordered_set<const Entry*> entries;
    std::unordered_set<const QKListItem*> others;  // wherever they stand

    void Clear() {
        entries.clear();
        others.clear();
    }
};

}  // namespace qkui
