/// @file
/// A label: text in a rectangle.
#pragma once

#include <qkui/items/item_base.h>
#include <qkui/items/item_text.h>

/// The default font is "宋体" of 9 points (a text button's is 12 pixels: the same size at 96 DPI).
class PLATFORM_API QKStaticText : public QKItemBase, public QKItemText {
  public:
    QKStaticText();
};
