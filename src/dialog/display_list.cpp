#include "dialog/display_list.h"

#include <algorithm>
#include <limits>

#include "dialog/region.h"

namespace qkui {

void DisplayList::Clear() {
    numbers_.clear();
    operations_.clear();
    steps_.clear();
}

void DisplayList::Begin() {
    steps_.push_back({numbers_.size(), operations_.size(), CRect()});
}

void DisplayList::Add(const RECT& rect) {
    for (const LONG value : {rect.left, rect.top, rect.right, rect.bottom})
        numbers_.push_back(static_cast<std::uint64_t>(value));
}

void DisplayList::DrawOnly(const Operation& operation) {
    operations_.resize(steps_.back().operation, operation);
    operations_.push_back(operation);
}

void DisplayList::Touches(const RECT& rect) {
    CRect& touched = steps_.back().touched;
    touched.UnionRect(CRect(touched), rect);
}

void DisplayList::Fills(const RECT& rect) {
    steps_.back().touched = rect;
    steps_.back().fills = true;
}

std::span<const std::uint64_t> DisplayList::NumbersOf(std::size_t step) const {
    const std::size_t first = steps_[step].number;
    return std::span(numbers_).subspan(first, EndOf(step, &Step::number, numbers_.size()) - first);
}

int DisplayList::QuietestRow(int first, int last) const {
    std::vector<int> changes(static_cast<std::size_t>(last - first) + 2);
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        if (steps_[i].operation == EndOf(i, &Step::operation, operations_.size())) continue;
        const int begin = std::max<int>(steps_[i].touched.top + 1, first);
        const int end = std::min<int>(steps_[i].touched.bottom, last + 1);
        if (begin >= end) continue;
        ++changes[static_cast<std::size_t>(begin - first)];
        --changes[static_cast<std::size_t>(end - first)];
    }
    int across = 0, fewest = std::numeric_limits<int>::max(), quietest = last;
    for (int row = first; row <= last; ++row) {
        across += changes[static_cast<std::size_t>(row - first)];
        if (across > fewest) continue;
        fewest = across;
        quietest = row;
    }
    return quietest;
}

std::vector<CRect> DisplayList::Difference(const DisplayList& before, const DisplayList& after) {
    // A region of many rectangles costs more than the pixels it saves: beyond this many, their box counts.
    constexpr std::size_t kMaxRects = 32;
    std::vector<CRect> changed;
    const auto add = [&](const CRect& touched) {
        if (changed.size() < kMaxRects)
            changed.push_back(touched);
        else
            changed.back().UnionRect(CRect(changed.back()), touched);
    };
    const auto addUncommon = [&](const CRect& a, const CRect& b) {
        const Region first, second;
        first.Set(a);
        second.Set(b);
        CombineRgn(first, first, second, RGN_XOR);
        first.ForEachRect(add);
    };
    const std::size_t steps = std::max(before.steps_.size(), after.steps_.size());
    for (std::size_t i = 0; i < steps; ++i) {
        const Step* const was = i < before.steps_.size() ? &before.steps_[i] : nullptr;
        const Step* const is = i < after.steps_.size() ? &after.steps_[i] : nullptr;
        const bool same = was && is && std::ranges::equal(before.NumbersOf(i), after.NumbersOf(i));
        if (same && was->touched == is->touched && was->fills == is->fills) continue;
        if (same && was->fills && is->fills) {
            addUncommon(was->touched, is->touched);
            continue;
        }
        if (was) add(was->touched);
        if (is) add(is->touched);
    }
    return changed;
}

}  // namespace qkui
