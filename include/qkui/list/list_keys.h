// What a list keeps that is moved by keys.
#pragma once

#include <cstdint>

// An entry as it was when it was last looked at: it may be elsewhere or gone by now.
struct QKListMark {
    int index = -1;
    int id = -1;
};

struct QKListKeys {
    bool on = false;
    QKListMark caret;   // where the focus is, or was last
    QKListMark anchor;  // where a selection by Shift begins
    // The selection is the one from the anchor to the caret, if the collection is still of this generation.
    bool ranged = false;
    std::uint64_t generation = 0;
};
