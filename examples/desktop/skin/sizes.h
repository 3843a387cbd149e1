// Sizes that the pictures are drawn with and the program places its items by, in pixels.
#pragma once

namespace skin {

// The pane of a menu, whatever its height: a shadow all around, then the padding, then rows.
inline constexpr int kMenuShadow = 18;
inline constexpr int kMenuPadding = 6;
inline constexpr int kMenuRadius = 10;
inline constexpr int kMenuRowWidth = 208;
inline constexpr int kMenuRowHeight = 30;
inline constexpr int kMenuDividerHeight = 9;

// Beside a folder that does not fit.
inline constexpr int kScrollWidth = 10;
inline constexpr int kScrollCap = 12;  // the thumb is never shorter than two of these

}  // namespace skin
