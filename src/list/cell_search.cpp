#include "list/cell_search.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace qkui {
namespace {

bool Fits(std::int64_t value) {
    return value >= std::numeric_limits<LONG>::min() && value <= std::numeric_limits<LONG>::max();
}

// Steps needed from `from` to reach `to` or beyond, for a step above zero.
std::int64_t StepsTo(std::int64_t from, std::int64_t to, std::int64_t step) {
    return to <= from ? 0 : (to - from + step - 1) / step;
}

// Steps that lead from `from` out of the stretch [low, high) in which it lies.
std::int64_t StepsPast(std::int64_t from, std::int64_t low, std::int64_t high, std::int64_t step) {
    if (step > 0) return StepsTo(from, high, step);
    return step == 0 || from < low ? 0 : (from - low) / -step + 1;
}

// Whether no cell reaches into another one.
bool AreApart(const CellGrid& grid) {
    const auto [along, across] =
        grid.columns ? std::pair(grid.cell.cy, grid.cell.cx) : std::pair(grid.cell.cx, grid.cell.cy);
    return along > 0 && across > 0 && grid.along >= along && (grid.line == 0 || grid.across >= across);
}

// No list has more cells: so many lie beyond what coordinates hold.
constexpr std::int64_t kMostCells = std::int64_t{1} << 62;

// The number of a line's first cell.
std::int64_t FirstOf(std::int64_t lines, std::int64_t line) {
    return lines > kMostCells / line ? kMostCells : lines * line;
}

}  // namespace

void CellGrid::SetLines(std::int64_t length, std::int64_t size) {
    const std::int64_t room = length - size;  // that the start of a cell may be away from the line's
    line = count = 0;
    if (along > 0) {
        const std::int64_t beyond = length / along + 1;
        if (beyond * along <= room)
            count = beyond;
        else
            line = room < 0 ? 1 : room / along + 1;
    } else if (along > room) {
        line = 1;
        if (length < 0) count = 1;
    }
}

std::optional<std::int64_t> CellGrid::Distinct() const {
    if (count != 0) return count;
    if (line == 0) return along == 0 ? std::optional<std::int64_t>(1) : std::nullopt;
    return across == 0 ? std::optional<std::int64_t>(line) : std::nullopt;
}

std::optional<CRect> CellGrid::Cell(std::int64_t number) const {
    if (number >= kMostCells) return std::nullopt;
    const std::int64_t inLine = line == 0 ? number : number % line;
    const std::int64_t lines = line == 0 ? 0 : number / line;
    const std::int64_t x = corner.x + (columns ? lines * across : inLine * along);
    const std::int64_t y = corner.y + (columns ? inLine * along : lines * across);
    if (!Fits(x) || !Fits(y) || !Fits(x + cell.cx) || !Fits(y + cell.cy)) return std::nullopt;
    return CRect(CPoint(static_cast<LONG>(x), static_cast<LONG>(y)), cell);
}

std::optional<std::int64_t> CellGrid::NumberAt(CPoint point) const {
    const std::int64_t x = std::int64_t{point.x} - corner.x;
    const std::int64_t y = std::int64_t{point.y} - corner.y;
    if (x < 0 || y < 0 || along <= 0 || across <= 0) return std::nullopt;
    const std::int64_t inLine = (columns ? y : x) / along;
    const std::int64_t lines = (columns ? x : y) / across;
    if (line == 0) return lines == 0 ? std::optional(inLine) : std::nullopt;
    return inLine < line ? std::optional(FirstOf(lines, line) + inLine) : std::nullopt;
}

std::int64_t CellGrid::After(std::int64_t number, const CRect& rect) const {
    const std::int64_t inLine = columns ? StepsPast(corner.y, rect.top, rect.bottom, along)
                                        : StepsPast(corner.x, rect.left, rect.right, along);
    if (line == 0) return std::max(inLine, number + 1);
    const std::int64_t lineStart = number - number % line;
    if (along > 0 && inLine < line) return std::max(lineStart + inLine, number + 1);
    if (number != lineStart) return lineStart + line;
    // The whole line is covered, and so is every one up to the rectangle's far edge.
    const std::int64_t lines = columns ? StepsPast(corner.x, rect.left, rect.right, across)
                                       : StepsPast(corner.y, rect.top, rect.bottom, across);
    return std::max(FirstOf(lines, line), lineStart + line);
}

std::optional<CRect> CellSearch::FirstFree(const CellGrid& grid, std::int64_t start,
                                           const Occupant& occupant) {
    if (!(grid == grid_)) {
        const bool isFree = isAll_ && taken_.empty();
        Clear();
        grid_ = grid;
        isAll_ = isFree && AreApart(grid);
    }
    const std::optional<std::int64_t> end = grid.Distinct();
    for (std::int64_t number = start;;) {
        const auto run = taken_.upper_bound(number);
        if (run != taken_.begin() && std::prev(run)->second > number) number = std::prev(run)->second;
        if (end && number >= *end) return std::nullopt;
        const std::optional<CRect> cell = grid.Cell(number);
        if (!cell) return std::nullopt;
        if (isAll_) {
            found_ = {number, *cell};
            return cell;
        }
        const std::optional<CRect> taken = occupant(cell->TopLeft());
        if (!taken) return cell;
        const std::int64_t next = grid.After(number, *taken);
        Take(number, next);
        number = next;
    }
}

void CellSearch::Note(const CRect& rect) {
    if (!isAll_ || rect.IsRectEmpty()) return;
    isAll_ = found_ && found_->cell == rect;
    if (!isAll_) return;
    try {
        Take(found_->number, found_->number + 1);
        found_.reset();  // taken once
    } catch (const std::bad_alloc&) {
        Clear();
    }
}

void CellSearch::Begin() {
    Clear();
    isAll_ = true;
    grid_ = {};
}

void CellSearch::Clear() {
    taken_.clear();
    isAll_ = false;
    found_.reset();
}

void CellSearch::Offset(CPoint by) {
    grid_.corner.Offset(by.x, by.y);
    found_.reset();
}

void CellSearch::Take(std::int64_t begin, std::int64_t end) {
    auto run = taken_.upper_bound(begin);
    if (run != taken_.begin() && std::prev(run)->second >= begin)
        --run;
    else
        run = taken_.emplace_hint(run, begin, end);
    run->second = std::max(run->second, end);
    for (auto next = std::next(run); next != taken_.end() && next->first <= run->second;) {
        run->second = std::max(run->second, next->second);
        next = taken_.erase(next);
    }
}

void CellSearch::Release(std::int64_t begin, std::int64_t end) {
    auto run = taken_.upper_bound(begin);
    if (run != taken_.begin()) --run;
    while (run != taken_.end() && run->first < end) {
        const auto [first, last] = *run;
        run = taken_.erase(run);
        if (last <= begin) continue;
        if (first < begin) taken_.emplace(first, begin);
        if (last > end) taken_.emplace(end, last);
    }
}

void CellSearch::Forget(const CRect& rect) {
    if (taken_.empty() || rect.IsRectEmpty()) return;
    try {
        ReleaseIn(rect);
    } catch (const std::bad_alloc&) {
        Clear();
    }
}

void CellSearch::ReleaseIn(const CRect& rect) {
    constexpr std::int64_t kMostLines = 64;  // beyond, asking again is cheaper
    const CellGrid& grid = grid_;
    if (grid.along <= 0 || (grid.line != 0 && grid.across <= 0)) {
        Clear();
        return;
    }
    const bool columns = grid.columns;
    const auto first = [](LONG corner, LONG edge, int step) { return StepsTo(corner, edge, step); };
    const std::int64_t from =
        first(columns ? grid.corner.y : grid.corner.x, columns ? rect.top : rect.left, grid.along);
    const std::int64_t to =
        first(columns ? grid.corner.y : grid.corner.x, columns ? rect.bottom : rect.right, grid.along);
    if (grid.line == 0) {
        Release(from, to);
        return;
    }
    const std::int64_t firstLine =
        first(columns ? grid.corner.x : grid.corner.y, columns ? rect.left : rect.top, grid.across);
    const std::int64_t endLine =
        first(columns ? grid.corner.x : grid.corner.y, columns ? rect.right : rect.bottom, grid.across);
    if (endLine - firstLine > kMostLines) {
        Clear();
        return;
    }
    for (std::int64_t line = firstLine; line < endLine; ++line)
        Release(FirstOf(line, grid.line) + std::min(from, grid.line),
                FirstOf(line, grid.line) + std::min(to, grid.line));
}

}  // namespace qkui
