#include "list/caption_extents.h"

namespace qkui {
namespace {

std::uint64_t RevisionOf(const CaptionStyle& style) {
    return style.font ? style.font->GetRevision() : 0;
}

}  // namespace

Gdiplus::RectF MeasureCaption(const CaptionStyle& style, std::u16string_view text, float width,
                              float height) {
    if (text.empty()) text = u"0";
    return Gdiplus::GetTextExtent(text.data(), static_cast<int>(text.size()), style.font.get(),
                                  {0, 0, width, height}, &style.format)
        .box;
}

bool CaptionExtents::IsOf(const CaptionStyle& style, std::u16string_view text) const {
    return text_ == text && style_ == style && fontRevision_ == RevisionOf(style);
}

Gdiplus::RectF CaptionExtents::Measure(const CaptionStyle& style, std::u16string_view text, float width,
                                       float height) {
    if (!IsOf(style, text)) {
        count_ = 0;
        text_ = text;
        style_ = style;
        fontRevision_ = RevisionOf(style);
    }
    for (std::size_t i = 0; i < count_ && i < extents_.size(); ++i)
        if (extents_[i].width == width && extents_[i].height == height) return extents_[i].box;
    const Gdiplus::RectF box = MeasureCaption(style, text, width, height);
    extents_[count_++ % extents_.size()] = {width, height, box};
    return box;
}

}  // namespace qkui
