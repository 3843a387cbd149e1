// The 8-bit coverage of a laid-out text: what a colour is painted through.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include <platform/geometry.h>

namespace platform {

class TextLayout;

class Coverage {
  public:
    Coverage() = default;  // empty
    // A part of a text's ink, in the text's coordinates; parts of one text show the same values as the whole.
    // Empty without memory.
    static Coverage Render(const TextLayout& text, const CRect& part);
    // A part of whatever `draw` draws, in its coordinates.
    static Coverage Render(const CRect& part, const std::function<void(cairo_t*)>& draw);

    bool IsEmpty() const { return surface_ == nullptr; }
    std::size_t Bytes() const { return stride_ * static_cast<std::size_t>(part_.Height()); }
    // From a pixel of the part on, in the coordinates that it was rendered in.
    const std::uint8_t* At(int x, int y) const {
        return values_ + static_cast<std::size_t>(y - part_.top) * stride_ + (x - part_.left);
    }

  private:
    struct Destroy {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    std::unique_ptr<cairo_surface_t, Destroy> surface_;
    const std::uint8_t* values_ = nullptr;
    std::size_t stride_ = 0;
    CRect part_;
};

}  // namespace platform
