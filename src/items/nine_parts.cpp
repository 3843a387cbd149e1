#include <qkui/items/nine_parts.h>

#include <algorithm>

#include "items/item_access.h"

namespace {

// Where the three columns (or rows) of a length begin, and where the last one ends.
std::array<int, 4> Cuts(int length, LONG first, LONG last) {
    const int near = std::clamp<int>(first, 0, length);
    return {0, near, std::max(near, length - std::max<int>(last, 0)), length};
}

// The same on the way to a destination, whose corners keep their size.
std::array<float, 4> Places(float origin, float length, const std::array<int, 4>& cuts) {
    return {origin, origin + static_cast<float>(cuts[1]),
            origin + length - static_cast<float>(cuts[3] - cuts[2]), origin + length};
}

}  // namespace

// Parts of their own, since a part of a larger picture, stretched, is mixed with what lies beside it.
void QKNineParts::Cut(Gdiplus::Image& picture) {
    if (revision_ == picture.GetRevision() && cutAt_ == margins_) return;
    revision_ = picture.GetRevision();
    cutAt_ = margins_;
    const auto columns = Cuts(static_cast<int>(picture.GetWidth()), margins_.left, margins_.right);
    const auto rows = Cuts(static_cast<int>(picture.GetHeight()), margins_.top, margins_.bottom);
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        const std::size_t column = i % 3, row = i / 3;
        const int width = columns[column + 1] - columns[column];
        const int height = rows[row + 1] - rows[row];
        parts_[i].reset();
        if (width < 1 || height < 1) continue;
        const int scale = picture.GetScale();
        parts_[i] = std::make_shared<Gdiplus::Bitmap>(width * scale, height * scale);
        parts_[i]->SetScale(scale);
        Gdiplus::Graphics graphics(parts_[i].get());
        graphics.DrawImage(&picture, Gdiplus::Rect(0, 0, width, height), columns[column], rows[row], width,
                           height, Gdiplus::UnitPixel);
    }
}

void qkui::ItemAccess::Record(QKNineParts& parts, Gdiplus::Image& picture, const Gdiplus::RectF& rect,
                              OperationSink& sink) {
    parts.Cut(picture);
    const RECT& margins = parts.margins_;
    const auto columns =
        Places(rect.X, rect.Width, Cuts(static_cast<int>(picture.GetWidth()), margins.left, margins.right));
    const auto rows =
        Places(rect.Y, rect.Height, Cuts(static_cast<int>(picture.GetHeight()), margins.top, margins.bottom));
    for (std::size_t i = 0; i < parts.parts_.size(); ++i) {
        if (!parts.parts_[i]) continue;
        const std::size_t column = i % 3, row = i / 3;
        const Gdiplus::RectF to(columns[column], rows[row], columns[column + 1] - columns[column],
                                rows[row + 1] - rows[row]);
        if (to.Width > 0 && to.Height > 0)
            sink.Add(
                {parts.parts_[i].get(), to, WholeImage(parts.parts_[i].get()), Gdiplus::WrapModeTileFlipXY});
    }
}

void QKNineParts::Draw(Gdiplus::Graphics& graphics, Gdiplus::Image& picture, const Gdiplus::RectF& rect) {
    qkui::OperationPainter painter(graphics);
    qkui::ItemAccess::Record(*this, picture, rect, painter);
}
