#include "examples/desktop/cell.h"

namespace desktop {

std::optional<Cell> NearestFree(Cell wanted, GridSize size, const std::set<Cell>& taken) {
    std::optional<Cell> nearest;
    int shortest = 0;
    for (int column = 0; column < size.columns; ++column) {
        for (int row = 0; row < size.rows; ++row) {
            const int across = column - wanted.column;
            const int down = row - wanted.row;
            const int distance = across * across + down * down;
            if ((nearest && distance >= shortest) || taken.contains({column, row})) continue;
            nearest = Cell{column, row};
            shortest = distance;
        }
    }
    return nearest;
}

}  // namespace desktop
