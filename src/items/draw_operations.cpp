#include "items/draw_operations.h"

#include <algorithm>
#include <cmath>

#include "items/item_access.h"

namespace qkui {

namespace {

// Farther out than any surface reaches, and safe to calculate with.
constexpr float kFar = 1e6F;

// A rectangle whose edges are whole numbers within kFar, which most are; then `pixels` is it.
bool IsWhole(const Gdiplus::RectF& rect, CRect& pixels) {
    const auto whole = [](float value, LONG& number) {
        if (!(std::abs(value) <= kFar)) return false;
        number = static_cast<LONG>(value);
        return static_cast<float>(number) == value;
    };
    LONG width = 0, height = 0;
    if (!whole(rect.X, pixels.left) || !whole(rect.Y, pixels.top) || !whole(rect.Width, width) ||
        !whole(rect.Height, height))
        return false;
    pixels.right = pixels.left + width;
    pixels.bottom = pixels.top + height;
    return true;
}

CRect WholePixels(const Gdiplus::RectF& rect) {
    CRect pixels;
    if (IsWhole(rect, pixels)) return pixels;
    const auto pixel = [](float edge) { return static_cast<int>(std::clamp(edge, -kFar, kFar)); };
    return {pixel(std::floor(rect.X)), pixel(std::floor(rect.Y)), pixel(std::ceil(rect.X + rect.Width)),
            pixel(std::ceil(rect.Y + rect.Height))};
}

bool ClipsToLayout(const TextOperation& operation) {
    return (operation.format->GetFormatFlags() & Gdiplus::StringFormatFlagsNoClip) == 0 &&
           operation.layout.Width > 0 && operation.layout.Height > 0;
}

}  // namespace

Gdiplus::RectF WholeImage(const Gdiplus::Image* image) {
    return {0, 0, static_cast<float>(image->GetWidth()), static_cast<float>(image->GetHeight())};
}

Gdiplus::RectF ToRectF(const CRect& rect) {
    return {static_cast<float>(rect.left), static_cast<float>(rect.top), static_cast<float>(rect.Width()),
            static_cast<float>(rect.Height())};
}

void RecordItem(const QKItemBase& item, OperationSink& sink) {
    if (!item.IsShow()) return;
    switch (item.GetType()) {
        case QKUI_STATICTEXT:
            return ItemAccess::Record(static_cast<const QKStaticText&>(item), sink);
        case QKUI_IMAGE:
        case QKUI_GIFIMAGE:
            return ItemAccess::Record(static_cast<const QKImage&>(item), sink);
        case QKUI_BUTTON:
            return ItemAccess::Record(static_cast<const QKButton&>(item), sink);
        case QKUI_TEXTBUTTON:
            return ItemAccess::Record(static_cast<const QKTextButton&>(item), sink);
        case QKUI_CHECKBOX:
        case QKUI_RADIO:
            ItemAccess::Record(static_cast<const QKCheckBox&>(item), sink);
            return ItemAccess::RecordText(static_cast<const QKCheckBox&>(item), sink);
        case QKUI_PROGRESS:
            return ItemAccess::Record(static_cast<const QKProgress&>(item), sink);
        case QKUI_VSCROLLBAR:
            return ItemAccess::Record(static_cast<const QKVScrollBar&>(item), sink);
        default:
            return;
    }
}

void OperationPainter::Add(const ImageOperation& operation) {
    const auto& [image, destination, source, wrap] = operation;
    Gdiplus::ImageAttributes attributes;
    attributes.SetWrapMode(wrap, Gdiplus::Color(0xFF000000));
    graphics_.DrawImage(image, destination, source.X, source.Y, source.Width, source.Height,
                        Gdiplus::UnitPixel, wrap == Gdiplus::WrapModeClamp ? nullptr : &attributes);
}

void OperationPainter::Add(const TextOperation& operation) {
    if (!operation.text) return;
    const Gdiplus::SolidBrush brush(operation.color);
    graphics_.DrawString(operation.text, operation.length, operation.font, operation.layout, operation.format,
                         &brush);
}

void OperationBounds::Add(const ImageOperation& operation) {
    const Gdiplus::RectF& place = operation.destination;
    if (!(place.Width > 0) || !(place.Height > 0)) return;
    CRect rect;
    if (!IsWhole(place, rect)) {
        rect = WholePixels(place);
        rect.InflateRect(1, 1);  // between pixels the smoothed edge may reach one further
    }
    Include(rect);
}

void OperationBounds::Add(const TextOperation& operation) {
    if (!operation.text || operation.length == 0 || operation.color.GetA() == 0) return;
    if (ClipsToLayout(operation)) {
        Include(WholePixels(operation.layout));
        return;
    }
    const Gdiplus::Rect ink = Gdiplus::GetTextExtent(operation.text, operation.length, operation.font,
                                                     operation.layout, operation.format)
                                  .ink;
    Include(CRect(CPoint(ink.X, ink.Y), CSize(ink.Width, ink.Height)));
}

}  // namespace qkui
