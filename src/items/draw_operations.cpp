#include "items/draw_operations.h"

#include <algorithm>
#include <cmath>

#include <qkui/items/button.h>
#include <qkui/items/check_box.h>
#include <qkui/items/image.h>
#include <qkui/items/progress.h>
#include <qkui/items/scroll_bar.h>
#include <qkui/items/static_text.h>
#include <qkui/items/text_button.h>

namespace qkui {

namespace {

// Farther out than any surface reaches, and safe to calculate with.
constexpr float kFar = 1e6F;

CRect WholePixels(const Gdiplus::RectF& rect) {
    const auto pixel = [](float edge) { return static_cast<int>(std::clamp(edge, -kFar, kFar)); };
    return {pixel(std::floor(rect.X)), pixel(std::floor(rect.Y)), pixel(std::ceil(rect.X + rect.Width)),
            pixel(std::ceil(rect.Y + rect.Height))};
}

bool IsWhole(const Gdiplus::RectF& rect) {
    const auto whole = [](float value) { return std::abs(value) <= kFar && std::floor(value) == value; };
    return whole(rect.X) && whole(rect.Y) && whole(rect.Width) && whole(rect.Height);
}

bool ClipsToLayout(const TextOperation& piece) {
    return (piece.format->GetFormatFlags() & Gdiplus::StringFormatFlagsNoClip) == 0 &&
           piece.layout.Width > 0 && piece.layout.Height > 0;
}

}  // namespace

Gdiplus::RectF WholeImage(const Gdiplus::Image* image) {
    return {0, 0, static_cast<float>(image->GetWidth()), static_cast<float>(image->GetHeight())};
}

Gdiplus::RectF ToRectF(const CRect& rect) {
    return {static_cast<float>(rect.left), static_cast<float>(rect.top), static_cast<float>(rect.Width()),
            static_cast<float>(rect.Height())};
}

void RecordItem(const QKItemBase& item, OperationSink& pieces) {
    if (!item.IsShow()) return;
    switch (item.GetType()) {
        case QKUI_STATICTEXT:
            return static_cast<const QKStaticText&>(item).Compose(pieces);
        case QKUI_IMAGE:
        case QKUI_GIFIMAGE:
            return static_cast<const QKImage&>(item).Compose(pieces);
        case QKUI_BUTTON:
            return static_cast<const QKButton&>(item).Compose(pieces);
        case QKUI_TEXTBUTTON:
            return static_cast<const QKTextButton&>(item).Compose(pieces);
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
            static_cast<const QKCheckBox&>(item).Compose(pieces);
            return static_cast<const QKCheckBox&>(item).ComposeText(pieces);
        case QKUI_PROGRESS:
            return static_cast<const QKProgress&>(item).Compose(pieces);
        case QKUI_VSCROLLBAR:
            return static_cast<const QKVScrollBar&>(item).Compose(pieces);
        default:
            return;
    }
}

void OperationPainter::Add(const ImageOperation& piece) {
    Gdiplus::ImageAttributes attributes;
    attributes.SetWrapMode(piece.wrap, Gdiplus::Color(0xFF000000));
    graphics_.DrawImage(piece.image, piece.destination, piece.source.X, piece.source.Y, piece.source.Width,
                        piece.source.Height, Gdiplus::UnitPixel,
                        piece.wrap == Gdiplus::WrapModeClamp ? nullptr : &attributes);
}

void OperationPainter::Add(const TextOperation& piece) {
    if (!piece.text) return;
    const Gdiplus::SolidBrush brush(piece.color);
    graphics_.DrawString(piece.text, piece.length, piece.font, piece.layout, piece.format, &brush);
}

void OperationBounds::Add(const ImageOperation& piece) {
    if (!(piece.destination.Width > 0) || !(piece.destination.Height > 0)) return;
    CRect rect = WholePixels(piece.destination);
    // Between pixels the smoothed edge may reach one further.
    if (!IsWhole(piece.destination)) rect.InflateRect(1, 1);
    Include(rect);
}

void OperationBounds::Add(const TextOperation& piece) {
    if (!piece.text || piece.length == 0 || piece.color.GetA() == 0) return;
    if (ClipsToLayout(piece)) {
        Include(WholePixels(piece.layout));
        return;
    }
    const Gdiplus::Rect ink =
        Gdiplus::GetTextExtent(piece.text, piece.length, piece.font, piece.layout, piece.format).ink;
    Include(CRect(CPoint(ink.X, ink.Y), CSize(ink.Width, ink.Height)));
}

}  // namespace qkui
