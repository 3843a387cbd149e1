// What the picture that pieces make depends on.
#pragma once

#include <string_view>

#include "dialog/display_list.h"
#include "items/draw_operations.h"

namespace qkui {

// Adds the numbers of each piece to a step that was begun, and finds the pixels that all may touch.
class Recorder final : public OperationBounds {
  public:
    explicit Recorder(DisplayList& inputs) : inputs_(inputs) {}
    void Add(const ImageOperation& piece) override;
    void Add(const TextOperation& piece) override;

  private:
    void Add(const Gdiplus::RectF& rect);
    void Add(std::u16string_view text);

    DisplayList& inputs_;
};

}  // namespace qkui
