// How far a caption reaches, kept as long as what that follows from is the same.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <platform/gdiplus.h>

namespace qkui {

// What captions are measured with.
struct CaptionStyle {
    std::shared_ptr<const Gdiplus::Font> font;  // may be null: no caption has a size then
    Gdiplus::StringFormat format;               // cuts by an ellipsis

    friend bool operator==(const CaptionStyle& a, const CaptionStyle& b) {
        return a.font == b.font && a.format.GetFormatFlags() == b.format.GetFormatFlags() &&
               a.format.GetAlignment() == b.format.GetAlignment() &&
               a.format.GetLineAlignment() == b.format.GetLineAlignment();
    }
};

// Of one caption in a room of `width` by `height`. An empty one still has a line.
Gdiplus::RectF MeasureCaption(const CaptionStyle& style, std::u16string_view text, float width, float height);

// The last two extents of a caption: of the two rooms that each entry is measured for.
class CaptionExtents {
  public:
    Gdiplus::RectF Measure(const CaptionStyle& style, std::u16string_view text, float width, float height);

  private:
    struct Extent {
        float width, height;
        Gdiplus::RectF box;
    };
    bool IsOf(const CaptionStyle& style, std::u16string_view text) const;

    CaptionStyle style_;
    std::uint64_t fontRevision_ = 0;
    std::u16string text_;
    std::array<Extent, 2> extents_{};
    std::size_t count_ = 0;  // ever measured of this text
};

}  // namespace qkui
