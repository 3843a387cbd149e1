#include "platform/graphics/text/text_format.h"

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

}  // namespace platform
