// What a frame is drawn with: recorded once, held against the frame before, replayed where the two differ.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

#include <platform/gdi.h>
#include <platform/geometry.h>

#include "items/draw_operations.h"

class QKListCtrl;

namespace qkui {

struct Entry;

// An area that catches the pointer and stays invisible.
struct CatchOperation {
    Gdiplus::Rect area;
};

// An entry that its list draws.
struct EntryOperation {
    QKListCtrl* list;
    Entry* entry;
};

using Operation = std::variant<ImageOperation, TextOperation, CatchOperation, EntryOperation>;

// Steps in drawing order, each with the numbers that its picture depends on, the rectangle that it may touch
// and what draws it. Equal numbers mean an equal picture. Operations point into items: they are good until
// code of the host runs again, the numbers for as long as the list lives.
class DisplayList {
  public:
    void Clear();
    // Begins a step; everything up to Fills belongs to it.
    void Begin();
    void Add(std::uint64_t number) { numbers_.push_back(number); }
    void Add(std::span<const std::uint64_t> numbers) {
        numbers_.insert(numbers_.end(), numbers.begin(), numbers.end());
    }
    void Add(const RECT& rect);
    void Draw(const Operation& operation) { operations_.push_back(operation); }
    // In place of what the step was to draw.
    void DrawOnly(const Operation& operation);
    void Touches(const RECT& rect);
    // The step does the same to each pixel of a rectangle, and nothing else: where it did before, it still
    // does.
    void Fills(const RECT& rect);

    // Calls draw(operation) for all operations of each step whose rectangle `meets` says is drawn.
    template <class Meets, class Draw>
    void Replay(const Meets& meets, const Draw& draw) const {
        for (std::size_t i = 0; i < steps_.size(); ++i) {
            const Step& step = steps_[i];
            const std::size_t end = EndOf(i, &Step::operation, operations_.size());
            if (step.operation == end || !meets(step.touched)) continue;
            for (std::size_t at = step.operation; at < end; ++at)
                draw(operations_[at]);
        }
    }

    // The row, of those from `first` to `last`, that the fewest steps which draw lie across; the last of
    // equals.
    int QuietestRow(int first, int last) const;

    // The rectangles in which two frames differ; a few large ones in place of very many.
    static std::vector<CRect> Difference(const DisplayList& before, const DisplayList& after);

  private:
    struct Step {
        std::size_t number;     // the first of its numbers,
        std::size_t operation;  // and of its operations
        CRect touched;
        bool fills = false;
    };
    std::size_t EndOf(std::size_t step, std::size_t Step::*first, std::size_t all) const {
        return step + 1 < steps_.size() ? steps_[step + 1].*first : all;
    }
    std::span<const std::uint64_t> NumbersOf(std::size_t step) const;

    std::vector<std::uint64_t> numbers_;
    std::vector<Operation> operations_;
    std::vector<Step> steps_;
};

}  // namespace qkui
