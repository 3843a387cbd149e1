// What a list keeps that is moved by keys.
#pragma once

#include <cstdint>

namespace qkui {

// An entry as it was when it was last looked at: it may be elsewhere or gone by now.
struct EntryMark {
    int index = -1;
    int id = -1;
};

struct ListKeys {
    bool on = false;
    EntryMark caret;   // where the focus is, or was last
    EntryMark anchor;  // where a selection by Shift begins
    // The selection is the one from the anchor to the caret, if the collection is still of this generation.
    bool ranged = false;
    std::uint64_t generation = 0;
};

}  // namespace qkui
