// Finds the first free cell of a grid, in filling order, without asking again for cells known to be taken.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

#include <platform/geometry.h>

namespace qkui {

// The cells of a grid, numbered in filling order: along a line, then along the next one.
struct CellGrid {
    CPoint corner;  // top left of cell 0
    SIZE cell;
    int along, across;   // from one cell of a line to the next, from one line to the next
    bool columns;        // lines run down, and follow each other to the right; else they run right
    std::int64_t line;   // cells of a line; 0 without end
    std::int64_t count;  // cells in all; 0 without end

    friend bool operator==(const CellGrid& a, const CellGrid& b) {
        return a.corner == b.corner && a.cell.cx == b.cell.cx && a.cell.cy == b.cell.cy &&
               a.along == b.along && a.across == b.across && a.columns == b.columns && a.line == b.line &&
               a.count == b.count;
    }

    // Sets `line` and `count` for lines of `length`, no shorter than a step, with cells `size` long. The
    // first cell of a line always fits. A search goes to the next line where a cell would end beyond this
    // one, and ends where one would start beyond it: that comes before it for cells of a negative size.
    void SetLines(std::int64_t length, std::int64_t size);
    // The cells after which positions repeat or end; nothing where they never do.
    std::optional<std::int64_t> Distinct() const;
    // The cell's rectangle; nothing beyond what coordinates hold.
    std::optional<CRect> Cell(std::int64_t number) const;
    // The cell whose area, gaps included, holds a point.
    std::optional<std::int64_t> NumberAt(CPoint point) const;
    // The first cell after `number` that is not known to lie in `rect`, which holds that cell's corner.
    std::int64_t After(std::int64_t number, const CRect& rect) const;
};

// While every rectangle that is occupied was found here, and each takes up one cell, it knows all of them;
// else it asks.
class CellSearch {
  public:
    // A rectangle of any entry that holds the point.
    using Occupant = std::function<std::optional<CRect>(CPoint)>;

    // The first free cell from `start` on. Nothing when every cell that the steps lead to is taken.
    std::optional<CRect> FirstFree(const CellGrid& grid, std::int64_t start, const Occupant& occupant);
    // A rectangle is occupied from now on.
    void Note(const CRect& rect);
    // A rectangle is no longer occupied, or not by the same entry.
    void Forget(const CRect& rect);
    // Nothing is occupied.
    void Begin();
    // Anything may be occupied.
    void Clear();
    void Offset(CPoint by);

  private:
    void Take(std::int64_t begin, std::int64_t end);
    void Release(std::int64_t begin, std::int64_t end);
    void ReleaseIn(const CRect& rect);

    CellGrid grid_ = {};
    std::map<std::int64_t, std::int64_t> taken_;  // runs of cells known to be occupied: first, one past last
    bool isAll_ = true;                           // no others are
    struct Found {
        std::int64_t number;
        CRect cell;
    };
    std::optional<Found> found_;  // the last free cell
};

}  // namespace qkui
