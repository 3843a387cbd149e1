#include "dialog/display_list.h"

#include <algorithm>

#include "dialog/region.h"

namespace qkui {

void DisplayList::Clear() {
    values_.clear();
    steps_.clear();
}

void DisplayList::Begin() {
    steps_.push_back({values_.size(), CRect()});
}

void DisplayList::Add(const RECT& rect) {
    for (const LONG value : {rect.left, rect.top, rect.right, rect.bottom})
        values_.push_back(static_cast<std::uint64_t>(value));
}

void DisplayList::Touches(const RECT& rect) {
    CRect& touched = steps_.back().touched;
    touched.UnionRect(CRect(touched), rect);
}

void DisplayList::Fills(const RECT& rect) {
    steps_.back().touched = rect;
    steps_.back().fills = true;
}

std::size_t DisplayList::End(std::size_t step) const {
    return step + 1 < steps_.size() ? steps_[step + 1].first : values_.size();
}

bool DisplayList::SameNumbers(const DisplayList& other, std::size_t step) const {
    const auto at = [](const DisplayList& inputs, std::size_t index) {
        return inputs.values_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    return std::equal(at(*this, steps_[step].first), at(*this, End(step)),
                      at(other, other.steps_[step].first), at(other, other.End(step)));
}

void DisplayList::Difference(const DisplayList& before, const DisplayList& after, HRGN region) {
    // A region of many rectangles costs more than the pixels it saves: beyond this many, their box counts.
    constexpr std::size_t kMaxRects = 32;
    std::vector<CRect> changed;
    const auto add = [&](const CRect& touched) {
        if (changed.size() < kMaxRects)
            changed.push_back(touched);
        else
            changed.back().UnionRect(CRect(changed.back()), touched);
    };
    const std::size_t steps = std::max(before.steps_.size(), after.steps_.size());
    const auto addUncommon = [&](const CRect& a, const CRect& b) {
        const Region first, second;
        first.Set(a);
        second.Set(b);
        CombineRgn(first, first, second, RGN_XOR);
        first.ForEachRect(add);
    };
    for (std::size_t i = 0; i < steps; ++i) {
        const Step* const was = i < before.steps_.size() ? &before.steps_[i] : nullptr;
        const Step* const is = i < after.steps_.size() ? &after.steps_[i] : nullptr;
        const bool sameNumbers = was && is && before.SameNumbers(after, i);
        if (sameNumbers && was->touched == is->touched && was->fills == is->fills) continue;
        if (sameNumbers && was->fills && is->fills) {
            addUncommon(was->touched, is->touched);
            continue;
        }
        if (was) add(was->touched);
        if (is) add(is->touched);
    }
    if (changed.empty()) return;
    const Region rect;
    for (const CRect& touched : changed) {
        rect.Set(touched);
        CombineRgn(region, region, rect, RGN_OR);
    }
}

}  // namespace qkui
