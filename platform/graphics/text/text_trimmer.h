// Cutting a line of text to a width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/graphics/text/text_shaper.h"

namespace platform {

struct TrimRequest {
    int width;                // pixels
    std::size_t mostBytes;    // of the text, that are looked at
    bool atWords;             // cut between words, where one word fits at all
    bool ellipsis;            // end with an ellipsis
    bool ellipsisEvenIfFits;  // more text follows that is not part of the line
    bool rightToLeft;
};

// The longest start of `text` (UTF-8, one paragraph) that fits, the ellipsis included. Without an ellipsis it
// keeps at least one character; with one, at least that.
std::string TrimText(std::string_view text, TextShaper& shaper, const FontData& font,
                     const TrimRequest& request);

}  // namespace platform
