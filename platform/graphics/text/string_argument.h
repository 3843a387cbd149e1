// What callers hand over as text and as its rectangle.
#pragma once

#include <platform/gdiplus.h>

#include <cmath>
#include <optional>
#include <string_view>

namespace platform {

// A length of -1 goes up to the terminator; a longer text than that may hold zeros. Nothing for a null text
// or a length below -1.
inline std::optional<std::u16string_view> StringArgument(LPCWSTR text, INT length) {
    if (text == nullptr || length < -1) return std::nullopt;
    if (length == -1) return std::u16string_view(text);
    return std::u16string_view(text, static_cast<std::size_t>(length));
}

inline bool IsPossibleLayout(const Gdiplus::RectF& layout) {
    return std::isfinite(layout.X) && std::isfinite(layout.Y) && std::isfinite(layout.Width) &&
           std::isfinite(layout.Height);
}

}  // namespace platform
