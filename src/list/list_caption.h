// Glowing captions of list entries.
#pragma once

#include <memory>
#include <string_view>

#include <platform/gdiplus.h>

namespace qkui {

struct CaptionLook {
    const Gdiplus::Font& font;
    const Gdiplus::StringFormat& format;
    Gdiplus::Color text, glow;
    Gdiplus::PointF origin;  // of the glow's layout
    float factor;            // of the glow
};

// The caption of a text, `size` pixels large. Null for a size that no picture has.
std::unique_ptr<Gdiplus::Image> RenderCaption(std::u16string_view text, const CaptionLook& look,
                                              const SIZE& size);

}  // namespace qkui
