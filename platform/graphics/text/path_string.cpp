// Text as outlines.
#include <cairo.h>
#include <platform/gdiplus.h>

#include <new>

#include "platform/graphics/cairo_paint.h"
#include "platform/graphics/graphics_data.h"
#include "platform/graphics/text/string_argument.h"
#include "platform/graphics/text/text_layout.h"
#include "platform/graphics/text/text_shaper.h"

namespace Gdiplus {

Status GraphicsPath::AddString(LPCWSTR text, INT length, const FontFamily* family, INT style, REAL emSize,
                               const RectF& layout, const StringFormat* format) try {
    const std::optional<std::u16string_view> units = platform::StringArgument(text, length);
    if (!units || family == nullptr || !platform::IsPossibleLayout(layout) ||
        !platform::IsNear(static_cast<double>(layout.X)) ||
        !platform::IsNear(static_cast<double>(layout.Y))) {
        return InvalidParameter;
    }
    if (!family->IsAvailable()) return FontFamilyNotFound;
    const std::shared_ptr<platform::FontData> font =
        platform::FontData::Get(family->GetFamilyName().View(), emSize, style);
    if (!font) return InvalidParameter;
    const platform::TextFormat box(format, layout.Width, layout.Height);
    const auto laid = platform::TextShaper::OfThread().Cache().Get(*units, font, box);
    laid->layout->AddOutline(data_->outline, static_cast<double>(layout.X), static_cast<double>(layout.Y));
    return cairo_status(data_->outline) == CAIRO_STATUS_SUCCESS ? Ok : OutOfMemory;
} catch (const std::bad_alloc&) {
    return OutOfMemory;
}

Status GraphicsPath::AddString(LPCWSTR text, INT length, const FontFamily* family, INT style, REAL emSize,
                               const Rect& layout, const StringFormat* format) {
    return AddString(text, length, family, style, emSize,
                     RectF(static_cast<REAL>(layout.X), static_cast<REAL>(layout.Y),
                           static_cast<REAL>(layout.Width), static_cast<REAL>(layout.Height)),
                     format);
}

}  // namespace Gdiplus
