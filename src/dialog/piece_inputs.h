// What the picture that pieces make depends on.
#pragma once

#include <string_view>

#include "dialog/frame_inputs.h"
#include "items/pieces.h"

// Adds the numbers of each piece to a step that was begun, and finds the pixels that all may touch.
class QKPieceInputs final : public QKPieceBounds {
  public:
    explicit QKPieceInputs(QKFrameInputs& inputs) : inputs_(inputs) {}
    void Add(const QKImagePiece& piece) override;
    void Add(const QKTextPiece& piece) override;

  private:
    void Add(const Gdiplus::RectF& rect);
    void Add(std::u16string_view text);

    QKFrameInputs& inputs_;
};
