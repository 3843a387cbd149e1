// Texts in tests: laid out, read back line by line, and the ink that they leave.
#pragma once

#include <pango/pango.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <platform/gdiplus.h>

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

// What each line says, without the blanks at its end.
inline std::vector<std::u16string> LinesOf(const platform::TextLayout& laid) {
    std::vector<std::u16string> lines;
    for (const platform::TextLine& line : laid.Lines()) {
        const std::string_view all = pango_layout_get_text(line.layout.get());
        std::string_view part = all.substr(static_cast<std::size_t>(line.line->start_index),
                                           static_cast<std::size_t>(line.line->length));
        while (!part.empty() && part.back() == ' ')
            part.remove_suffix(1);
        lines.emplace_back(FromUtf8(part).View());
    }
    return lines;
}

// For comparisons that can be read when they fail.
inline std::vector<std::string> InUtf8(const std::vector<std::u16string>& lines) {
    std::vector<std::string> texts;
    for (const std::u16string& line : lines)
        texts.push_back(ToUtf8(line));
    return texts;
}

// Around every pixel with coverage, in the text's coordinates; all zero for none.
inline CRect PaintedBox(const platform::TextLayout& laid) {
    if (laid.Ink().IsRectEmpty()) return CRect();
    CRect around = laid.Ink();
    around.InflateRect(8, 8);
    const platform::Coverage coverage = platform::Coverage::Render(laid, around);
    CRect box;
    for (int y = around.top; y < around.bottom; ++y)
        for (int x = around.left; x < around.right; ++x)
            if (*coverage.At(x, y) != 0) box.UnionRect(box, CRect(x, y, x + 1, y + 1));
    return box;
}

}  // namespace kit

inline std::ostream& operator<<(std::ostream& out, const RECT& r) {
    return out << r.left << "," << r.top << " - " << r.right << "," << r.bottom;
}
