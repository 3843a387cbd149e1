// Draw operations on their way into a display list.
#pragma once

#include "dialog/display_list.h"
#include "items/draw_operations.h"

namespace qkui {

// Adds operations, and the numbers that they depend on, to a step that was begun, and finds the pixels that
// all may touch.
class Recorder final : public OperationBounds {
  public:
    explicit Recorder(DisplayList& list) : list_(list) {}
    void Add(const ImageOperation& operation) override;
    void Add(const TextOperation& operation) override;
    void Add(const CatchOperation& operation);

  private:
    DisplayList& list_;
};

}  // namespace qkui
