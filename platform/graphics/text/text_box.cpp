#include "platform/graphics/text/text_box.h"

#include <algorithm>

namespace platform {

TextFormat::TextFormat(const Gdiplus::StringFormat* format, float boxWidth, float boxHeight)
    : width(std::max(boxWidth, 0.0F)), height(std::max(boxHeight, 0.0F)) {
    if (format == nullptr) return;
    flags = format->GetFormatFlags();
    alignment = format->GetAlignment();
    lineAlignment = format->GetLineAlignment();
    trimming = format->GetTrimming();
}

PixelBox PixelBox::Cut(const PixelBox& by) const {
    return {std::max(left, by.left), std::max(top, by.top), std::min(right, by.right),
            std::min(bottom, by.bottom)};
}

void PixelBox::Include(const PixelBox& other) {
    if (other.IsEmpty()) return;
    if (IsEmpty()) {
        *this = other;
        return;
    }
    *this = {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
             std::max(bottom, other.bottom)};
}

}  // namespace platform
