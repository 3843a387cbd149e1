// A layout of all entries of a list.
#pragma once

#include <cstdint>

#include "list/list_metrics.h"

namespace qkui {

// Where an entry is put: its cell, and its caption's.
struct CellPlace {
    CRect cell, caption;
};

// What the cells of a layout followed from, but for the place of its corner, and how large the list became.
// While the entries are still those of `generation`, the same inputs give the same cells.
struct ListLayout {
    ListMeasure measure;
    int gapX, gapY;
    int arrange;
    SIZE given;
    std::uint64_t generation;
    SIZE grown;
    CPoint corner;
};

}  // namespace qkui
