// The box that a text is laid into, and what the format says about it.
#pragma once

#include <platform/gdiplus.h>

namespace platform {

// What the placing of a text depends on, besides the text and its font. The box stands at (0, 0); a width of
// 0 does not wrap, a height of 0 does not limit.
struct TextFormat {
    TextFormat() = default;
    // Sizes below zero count as 0. A null format is the default one.
    TextFormat(const Gdiplus::StringFormat* format, float boxWidth, float boxHeight);

    bool RightToLeft() const { return (flags & Gdiplus::StringFormatFlagsDirectionRightToLeft) != 0; }
    bool Wraps() const { return width > 0 && (flags & Gdiplus::StringFormatFlagsNoWrap) == 0; }
    bool WholeLines() const { return (flags & Gdiplus::StringFormatFlagsLineLimit) != 0; }
    bool Clips() const { return (flags & Gdiplus::StringFormatFlagsNoClip) == 0; }
    bool LimitsHeight() const { return height > 0 && (WholeLines() || Clips()); }
    bool HasEllipsis() const {
        return trimming == Gdiplus::StringTrimmingEllipsisCharacter ||
               trimming == Gdiplus::StringTrimmingEllipsisWord;
    }
    bool TrimsAtWords() const {
        return trimming == Gdiplus::StringTrimmingWord || trimming == Gdiplus::StringTrimmingEllipsisWord;
    }
    friend bool operator==(const TextFormat&, const TextFormat&) = default;

    int flags = 0;
    Gdiplus::StringAlignment alignment = Gdiplus::StringAlignmentNear;
    Gdiplus::StringAlignment lineAlignment = Gdiplus::StringAlignmentNear;
    Gdiplus::StringTrimming trimming = Gdiplus::StringTrimmingCharacter;
    float width = 0;
    float height = 0;
};

}  // namespace platform
