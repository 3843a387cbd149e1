/// @file
/// A frame of nine parts out of one picture: margins say where its corners end.
#pragma once

#include <array>
#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

namespace qkui {
struct ItemAccess;
}  // namespace qkui

/// Corners are drawn at their own size, edges stretched along the sides, the centre both ways. The parts are
/// cut when they are first drawn, and again when the picture has changed. Copies share them.
class PLATFORM_API QKNineParts {
  public:
    ///@{
    /// How far the corners reach into the picture, in its pixels, from each side; negative counts as 0.
    /// Margins that meet leave no centre.
    void SetMargins(const RECT& margins) { margins_ = margins; }
    const RECT& GetMargins() const { return margins_; }
    ///@}
    /// Without margins a picture has no parts: it is one.
    bool IsEmpty() const { return margins_ == RECT{0, 0, 0, 0}; }

    /// Draws `picture` as a frame into `rect`. In one smaller than its corners, these lie over each other.
    void Draw(Gdiplus::Graphics& graphics, Gdiplus::Image& picture, const Gdiplus::RectF& rect);

  private:
    void Cut(Gdiplus::Image& picture);

    RECT margins_ = {0, 0, 0, 0};
    std::uint64_t revision_ = 0;  ///< of the picture that the parts were cut from
    RECT cutAt_ = {0, 0, 0, 0};
    std::array<std::shared_ptr<Gdiplus::Bitmap>, 9> parts_;  ///< row by row; null where there is nothing

    friend struct qkui::ItemAccess;
};
