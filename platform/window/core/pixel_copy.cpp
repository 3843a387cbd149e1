#include "platform/window/core/pixel_copy.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace platform {

namespace {

// Collects what changes while rows are copied: a few boxes of neighbouring rows, not one that spans all.
class Damage {
  public:
    void AddRow(int y, int left, int right) {
        if (!boxes_.empty() && y <= boxes_.back().bottom + kGap) {
            CRect& box = boxes_.back();
            box.left = std::min<LONG>(box.left, left);
            box.right = std::max<LONG>(box.right, right);
            box.bottom = y + 1;
        } else {
            boxes_.push_back(CRect(left, y, right, y + 1));
        }
    }
    Region Take() const { return Region(std::vector<RECT>(boxes_.begin(), boxes_.end())); }

  private:
    static constexpr int kGap = 8;  // rows; nearer boxes are one
    std::vector<CRect> boxes_;
};

// Copies a row and notes the stretch that differed.
void CopyRow(std::uint32_t* to, const std::uint32_t* from, int count, int x, int y, Damage& damage) {
    const std::size_t bytes = static_cast<std::size_t>(count) * sizeof(std::uint32_t);
    if (std::memcmp(to, from, bytes) == 0) return;
    int left = 0;
    int right = count;
    while (to[left] == from[left])
        ++left;
    while (to[right - 1] == from[right - 1])
        --right;
    std::memcpy(to + left, from + left, static_cast<std::size_t>(right - left) * sizeof(std::uint32_t));
    damage.AddRow(y, x + left, x + right);
}

void ClearRow(std::uint32_t* row, int from, int to, int y, Damage& damage) {
    const auto isSet = [](std::uint32_t pixel) { return pixel != 0; };
    std::uint32_t* first = std::find_if(row + from, row + std::max(from, to), isSet);
    if (first >= row + to) return;
    std::fill(first, row + to, 0);
    damage.AddRow(y, static_cast<int>(first - row), to);
}

}  // namespace

Region CopyPixels(Surface& to, const Surface& from, POINT sourceOrigin, const CRect& part) {
    Damage damage;
    const std::int64_t left = std::max<std::int64_t>(part.left, -std::int64_t{sourceOrigin.x});
    const std::int64_t right =
        std::min<std::int64_t>(part.right, std::int64_t{from.Width()} - sourceOrigin.x);
    const int first = static_cast<int>(std::min<std::int64_t>(left, part.right));
    const int last = static_cast<int>(std::max<std::int64_t>(right, first));
    for (int y = part.top; y < part.bottom; ++y) {
        const std::int64_t sourceY = std::int64_t{y} + sourceOrigin.y;
        std::uint32_t* row = to.Row(y);
        if (sourceY < 0 || sourceY >= from.Height() || last <= first) {
            ClearRow(row, part.left, part.right, y, damage);
            continue;
        }
        ClearRow(row, part.left, first, y, damage);
        CopyRow(row + first, from.Row(static_cast<int>(sourceY)) + (first + sourceOrigin.x), last - first,
                first, y, damage);
        ClearRow(row, last, part.right, y, damage);
    }
    to.Touch();
    return damage.Take();
}

}  // namespace platform
