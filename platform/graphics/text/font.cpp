#include <platform/gdiplus.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

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

FontFamily::FontFamily(LPCWSTR name) : name_(name) {}

Font::Font(LPCWSTR family, REAL emSize, INT style, Unit unit)
    : family_(family), size_(emSize), style_(style), unit_(unit) {
    if (IsFontUnit(unit)) {
        data_ = platform::FontData::Get(family_.View(), PixelsOf(emSize, unit), style);
    }
    if (data_) {
        revision_ = data_->revision;
    } else {
        status_ = InvalidParameter;
    }
}

Font::Font(const FontFamily* family, REAL emSize, INT style, Unit unit)
    : Font(family != nullptr ? family->GetFamilyName().GetString() : nullptr, emSize, style, unit) {
    if (family == nullptr || !family->IsAvailable()) {
        status_ = family == nullptr ? InvalidParameter : FontFamilyNotFound;
        data_.reset();
    }
}

Font::Font(HDC context, const LOGFONTW* font) : unit_(UnitWorld), status_(InvalidParameter) {
    if (!platform::ShareContext(context) || font == nullptr) return;
    constexpr LONG kBold = 700;
    const WCHAR* const end = std::find(std::begin(font->lfFaceName), std::end(font->lfFaceName), u'\0');
    family_ = CString(font->lfFaceName, static_cast<int>(end - font->lfFaceName));
    size_ = std::abs(static_cast<REAL>(font->lfHeight));
    style_ = (font->lfWeight >= kBold ? FontStyleBold : 0) | (font->lfItalic ? FontStyleItalic : 0) |
             (font->lfUnderline ? FontStyleUnderline : 0) | (font->lfStrikeOut ? FontStyleStrikeout : 0);
    data_ = platform::FontData::Get(family_.View(), size_, style_);
    if (!data_) return;
    revision_ = data_->revision;
    status_ = Ok;
}

Font::~Font() = default;

Font* Font::Clone() const {
    std::unique_ptr<Font> copy(new Font);
    copy->family_ = family_;
    copy->size_ = size_;
    copy->style_ = style_;
    copy->unit_ = unit_;
    copy->status_ = status_;
    copy->revision_ = revision_;
    copy->data_ = data_;
    return copy.release();
}

Status Font::GetFamily(FontFamily* family) const {
    if (family == nullptr) return InvalidParameter;
    if (status_ != Ok) return status_;
    *family = family_.IsEmpty() ? FontFamily(CString(data_->family.c_str())) : FontFamily(family_);
    return Ok;
}

REAL Font::GetHeight() const {
    return data_ ? platform::TextShaper::OfThread().LineHeight(*data_) : 0;
}

}  // namespace Gdiplus
