#include "items/nine_patch.h"

#include <algorithm>
#include <array>

#include <qkui/dialog/dialog_base.h>
#include "items/draw_operations.h"

namespace {

struct Extent {
    float width = 0, height = 0;
};

// The parts of a frame, by their place in the array.
enum Part { kTopLeft, kTop, kTopRight, kLeft, kCentre, kRight, kBottomLeft, kBottom, kBottomRight };

class Frame {
  public:
    Frame(Gdiplus::Image* const* images, const Gdiplus::RectF& rect, qkui::OperationSink& sink)
        : images_(images), rect_(rect), sink_(sink) {
        for (std::size_t i = 0; i < sizes_.size(); ++i) {
            if (!images[i]) continue;
            const Gdiplus::RectF whole = qkui::WholeImage(images[i]);
            sizes_[i] = {whole.Width, whole.Height};
        }
    }

    const Extent& Size(Part part) const { return sizes_[part]; }
    float Right(Part part) const { return rect_.X + rect_.Width - sizes_[part].width; }
    float Bottom(Part part) const { return rect_.Y + rect_.Height - sizes_[part].height; }

    void Corner(Part part, float x, float y) {
        const auto [width, height] = sizes_[part];
        if (images_[part]) sink_.Add({images_[part], {x, y, width, height}, {0, 0, width, height}});
    }
    void Stretched(Part part, const Gdiplus::RectF& to, float sourceHeight) {
        if (images_[part])
            sink_.Add(
                {images_[part], to, {0, 0, sizes_[part].width, sourceHeight}, Gdiplus::WrapModeTileFlipXY});
    }
    void Stretched(Part part, const Gdiplus::RectF& to) { Stretched(part, to, sizes_[part].height); }

  private:
    Gdiplus::Image* const* images_;
    const Gdiplus::RectF& rect_;
    qkui::OperationSink& sink_;
    std::array<Extent, 9> sizes_;
};

}  // namespace

void qkui::RecordNinePatch(Gdiplus::Image* const* images, const Gdiplus::RectF& rect,
                           qkui::OperationSink& sink) {
    if (!images) return;
    Frame frame(images, rect, sink);
    const auto& [x, y, width, height] = rect;
    const auto size = [&](Part part) -> const Extent& { return frame.Size(part); };

    frame.Corner(kTopLeft, x, y);
    frame.Corner(kTopRight, frame.Right(kTopRight), y);
    frame.Stretched(kTop, {x + size(kTopLeft).width, y, width - size(kTopRight).width - size(kTopLeft).width,
                           size(kTop).height});
    frame.Corner(kBottomLeft, x, frame.Bottom(kBottomLeft));
    frame.Stretched(kLeft, {x, y + size(kTopLeft).height, size(kLeft).width,
                            height - size(kBottomLeft).height - size(kTopLeft).height});
    frame.Corner(kBottomRight, frame.Right(kBottomRight), frame.Bottom(kBottomRight));
    frame.Stretched(kBottom,
                    {x + size(kBottomLeft).width, frame.Bottom(kBottom),
                     width - size(kBottomRight).width - size(kBottomLeft).width, size(kBottom).height});
    frame.Stretched(kRight, {frame.Right(kRight), y + size(kTopRight).height, size(kRight).width,
                             height - size(kBottomRight).height - size(kTopRight).height});
    const Gdiplus::RectF centre(x + size(kRight).width, y + size(kTop).height,
                                width - size(kLeft).width - size(kRight).width,
                                height - size(kTop).height - size(kBottom).height);
    frame.Stretched(kCentre, centre, images[kRight] ? size(kRight).height : size(kCentre).height);
}

void CQKDialogBase::DrawStateImage(Gdiplus::Graphics* graphics, Gdiplus::Image** images,
                                   const Gdiplus::RectF& rect) {
    qkui::OperationPainter painter(*graphics);
    qkui::RecordNinePatch(images, rect, painter);
}

void CQKDialogBase::DrawStateImage(Gdiplus::Graphics* graphics, Gdiplus::Bitmap** images,
                                   const Gdiplus::RectF& rect) {
    if (!images) return;
    std::array<Gdiplus::Image*, 9> plain;
    std::copy_n(images, plain.size(), plain.begin());
    DrawStateImage(graphics, plain.data(), rect);
}
