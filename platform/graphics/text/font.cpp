#include <platform/gdiplus.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <new>

#include "platform/graphics/gdi_objects.h"
#include "platform/graphics/text/font_data.h"
#include "platform/graphics/text/text_shaper.h"

namespace Gdiplus {
namespace {

// Pixels at 96 to the inch.
REAL PixelsOf(REAL size, Unit unit) {
    return unit == UnitPoint ? size * 4 / 3 : size;
}

bool IsFontUnit(Unit unit) {
    return unit == UnitWorld || unit == UnitPixel || unit == UnitPoint;
}

}  // namespace

FontFamily::FontFamily(LPCWSTR name) {
    try {
        name_ = name;
    } catch (const std::bad_alloc&) {
        name_.Empty();
    }
}

Font::Font(LPCWSTR family, REAL emSize, INT style, Unit unit)
    : size_(emSize), style_(style), unit_(unit), status_(InvalidParameter) {
    if (IsFontUnit(unit)) Load(family != nullptr ? family : std::u16string_view(), PixelsOf(emSize, unit));
}

Font::Font(const FontFamily* family, REAL emSize, INT style, Unit unit)
    : size_(emSize), style_(style), unit_(unit), status_(InvalidParameter) {
    if (family == nullptr) return;
    if (!family->IsAvailable()) {
        status_ = FontFamilyNotFound;
    } else if (IsFontUnit(unit)) {
        Load(family->name_.View(), PixelsOf(emSize, unit));
    }
}

Font::Font(HDC context, const LOGFONTW* font) : unit_(UnitWorld), status_(InvalidParameter) {
    if (!platform::ShareContext(context) || font == nullptr) return;
    constexpr LONG kBold = 700;
    const WCHAR* const end = std::find(std::begin(font->lfFaceName), std::end(font->lfFaceName), u'\0');
    size_ = std::abs(static_cast<REAL>(font->lfHeight));
    style_ = (font->lfWeight >= kBold ? FontStyleBold : 0) | (font->lfItalic ? FontStyleItalic : 0) |
             (font->lfUnderline ? FontStyleUnderline : 0) | (font->lfStrikeOut ? FontStyleStrikeout : 0);
    Load({font->lfFaceName, static_cast<std::size_t>(end - font->lfFaceName)}, size_);
}

void Font::Load(std::u16string_view family, REAL pixels) try {
    family_ = CString(family);
    data_ = platform::FontData::Get(family, pixels, style_);
    status_ = data_ ? Ok : InvalidParameter;
    if (data_) revision_ = data_->revision;
} catch (const std::bad_alloc&) {
    status_ = OutOfMemory;
}

Font::~Font() = default;

Font* Font::Clone() const try {
    std::unique_ptr<Font> copy(new Font);
    copy->family_ = family_;
    copy->size_ = size_;
    copy->style_ = style_;
    copy->unit_ = unit_;
    copy->status_ = status_;
    copy->revision_ = revision_;
    copy->data_ = data_;
    return copy.release();
} catch (const std::bad_alloc&) {
    return nullptr;
}

Status Font::GetFamily(FontFamily* family) const try {
    if (family == nullptr) return InvalidParameter;
    if (status_ != Ok) return status_;
    family->name_ = family_.IsEmpty() ? CString(data_->Family().c_str()) : family_;
    return Ok;
} catch (const std::bad_alloc&) {
    return OutOfMemory;
}

REAL Font::GetHeight() const try {
    return data_ ? platform::TextShaper::OfThread().LineHeight(*data_) : 0;
} catch (const std::bad_alloc&) {
    return 0;
}

}  // namespace Gdiplus
