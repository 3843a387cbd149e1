#include "dialog/frame_inputs.h"

#include <algorithm>

#include "dialog/owned_region.h"

void QKFrameInputs::Clear() {
    values_.clear();
    steps_.clear();
}

void QKFrameInputs::Begin() {
    steps_.push_back({values_.size(), CRect()});
}

void QKFrameInputs::Add(const RECT& rect) {
    for (const LONG value : {rect.left, rect.top, rect.right, rect.bottom})
        values_.push_back(static_cast<std::uint64_t>(value));
}

void QKFrameInputs::Touches(const RECT& rect) {
    CRect& touched = steps_.back().touched;
    touched.UnionRect(CRect(touched), rect);
}

std::size_t QKFrameInputs::End(std::size_t step) const {
    return step + 1 < steps_.size() ? steps_[step + 1].first : values_.size();
}

bool QKFrameInputs::SameStep(const QKFrameInputs& other, std::size_t step) const {
    const auto at = [](const QKFrameInputs& inputs, std::size_t index) {
        return inputs.values_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    return steps_[step].touched == other.steps_[step].touched &&
           std::equal(at(*this, steps_[step].first), at(*this, End(step)),
                      at(other, other.steps_[step].first), at(other, other.End(step)));
}

void QKFrameInputs::Difference(const QKFrameInputs& before, const QKFrameInputs& after, HRGN region) {
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
    for (std::size_t i = 0; i < steps; ++i) {
        const bool inBoth = i < before.steps_.size() && i < after.steps_.size();
        if (inBoth && before.SameStep(after, i)) continue;
        if (i < before.steps_.size()) add(before.steps_[i].touched);
        if (i < after.steps_.size()) add(after.steps_[i].touched);
    }
    if (changed.empty()) return;
    const QKRegion rect;
    for (const CRect& touched : changed) {
        rect.Set(touched);
        CombineRgn(region, region, rect, RGN_OR);
    }
}
