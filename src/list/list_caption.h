// Glowing captions of list entries, rendered once and kept in the entry.
#pragma once

#include <string_view>

#include <platform/gdiplus.h>

#include "list/list_item.h"

struct QKCaptionLook {
    const Gdiplus::Font& font;
    const Gdiplus::StringFormat& format;
    Gdiplus::Color text, glow;
    Gdiplus::PointF origin;  // of the glow's layout
    float factor;            // of the glow
};

// The entry's caption for a text: the one it has, or one rendered now, `size` pixels large. Null for a size
// that no picture has.
Gdiplus::Image* QKCaption(QKListItem& entry, std::u16string_view text, const QKCaptionLook& look,
                          const SIZE& size);
// Whether the entry has it.
bool QKHasCaption(const QKListItem& entry, std::u16string_view text);
