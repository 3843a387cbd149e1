// Texts in tests: laid out, read back line by line, and the ink that they leave.
#pragma once

#include <pango/pango.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <platform/gdiplus.h>

#include "graphics/picture_kit.h"
#include "platform/graphics/text/coverage.h"
#include "platform/graphics/text/text_layout.h"

namespace kit {

inline std::shared_ptr<platform::FontData> TestFont(float pixels = 12, int style = 0,
                                                    std::u16string_view family = u"DejaVu Sans") {
    return platform::FontData::Get(family, pixels, style);
}

struct Box {
    float width = 0, height = 0;
    int flags = 0;
    Gdiplus::StringTrimming trimming = Gdiplus::StringTrimmingCharacter;
    Gdiplus::StringAlignment alignment = Gdiplus::StringAlignmentNear;
    Gdiplus::StringAlignment lineAlignment = Gdiplus::StringAlignmentNear;

    platform::TextFormat Format() const {
        Gdiplus::StringFormat format(flags);
        format.SetTrimming(trimming);
        format.SetAlignment(alignment);
        format.SetLineAlignment(lineAlignment);
        return platform::TextFormat(&format, width, height);
    }
};

inline std::shared_ptr<const platform::TextLayout> Laid(
    std::u16string_view text, const Box& box = {},
    const std::shared_ptr<platform::FontData>& font = TestFont()) {
    return platform::TextLayout::LayOut(text, *font, box.Format());
}

inline int WidthOf(std::u16string_view text, const std::shared_ptr<platform::FontData>& font = TestFont()) {
    return static_cast<int>(Laid(text, {}, font)->Box().Width);
}

// What each line says in UTF-8, without the blanks at its end.
inline std::vector<std::string> LinesOf(const platform::TextLayout& laid) {
    std::vector<std::string> lines;
    for (const platform::TextLine& line : laid.Lines()) {
        const std::string_view all = pango_layout_get_text(line.layout.get());
        std::string_view part = all.substr(static_cast<std::size_t>(line.line->start_index),
                                           static_cast<std::size_t>(line.line->length));
        while (!part.empty() && part.back() == ' ')
            part.remove_suffix(1);
        lines.emplace_back(part);
    }
    return lines;
}

// Around every pixel with coverage, in the text's coordinates; all zero for none.
inline CRect PaintedBox(const platform::TextLayout& laid) {
    if (laid.Ink().IsRectEmpty()) return CRect();
    CRect around = laid.Ink();
    around.InflateRect(8, 8);
    const platform::Coverage coverage = platform::Coverage::Render(laid, around);
    Pixels pixels(around.Width(), around.Height());
    for (int y = 0; y < pixels.height; ++y)
        std::copy_n(coverage.At(around.left, around.top + y), pixels.width, &pixels.At(0, y));
    CRect box = InkOf(pixels);
    box.OffsetRect(around.left, around.top);
    return box;
}

}  // namespace kit
