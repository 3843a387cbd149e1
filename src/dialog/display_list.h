// What a frame is drawn from, as numbers that can be held against those of the frame before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <platform/gdi.h>
#include <platform/geometry.h>

namespace qkui {

// What one frame is drawn from: a list of steps in drawing order, each with the numbers that its picture
// depends on and the rectangle that it may touch. Equal numbers mean an equal picture.
class DisplayList {
  public:
    void Clear();
    // Begins a step; Add and Touches belong to it.
    void Begin();
    void Add(std::uint64_t value) { values_.push_back(value); }
    void Add(const RECT& rect);
    void Touches(const RECT& rect);
    // The step does the same to each pixel of a rectangle, and nothing else: where it did before, it still
    // does.
    void Fills(const RECT& rect);

    // Adds to `region` what differs between the two frames.
    static void Difference(const DisplayList& before, const DisplayList& after, HRGN region);

  private:
    struct Step {
        std::size_t first;  // of its numbers
        CRect touched;
        bool fills = false;
    };
    bool SameNumbers(const DisplayList& other, std::size_t step) const;
    std::size_t End(std::size_t step) const;

    std::vector<std::uint64_t> values_;
    std::vector<Step> steps_;
};

}  // namespace qkui
