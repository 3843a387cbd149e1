/// @file
/// An image button with a caption on its frame.
#pragma once

#include <qkui/items/button.h>
#include <qkui/items/item_text.h>

/// The caption is laid into the drawn frame, centred both ways at first, and shows only with an image below
/// it. The default font is "宋体" of 12 pixels.
class PLATFORM_API QKTextButton : public QKButton, public QKItemText {
  public:
    QKTextButton();
};
