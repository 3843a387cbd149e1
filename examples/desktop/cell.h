// The grid that icons lie in.
#pragma once

#include <compare>
#include <optional>
#include <set>

namespace desktop {

// Counted from the top left.
struct Cell {
    int column = 0;
    int row = 0;
    friend bool operator==(const Cell&, const Cell&) = default;
    friend auto operator<=>(const Cell&, const Cell&) = default;
};

struct GridSize {
    int columns = 0;
    int rows = 0;
};

// The cell itself, or the free one with the least distance from it; nothing when all are taken.
std::optional<Cell> NearestFree(Cell wanted, GridSize size, const std::set<Cell>& taken);

}  // namespace desktop
