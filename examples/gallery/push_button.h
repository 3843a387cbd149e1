// Buttons with a closure behind their click, and the strips that the gallery's buttons are cut from.
#pragma once

#include "examples/gallery/clickable.h"
#include "examples/gallery/skin_files.h"

namespace gallery {

template <class Button>
class ButtonOfSkin : public Clickable<Button> {
  public:
    // A vertical strip from the program's resources, placed with its top left corner at (x, y).
    void Load(UINT picture, int frames) {
        this->SetImage(picture, u"PNG", static_cast<QKButton::QKBT_IMGS>(frames), QKButton::QKBT_VERTICAL);
    }
    // A strip from a file of the skin.
    void Load(const char* file, int frames, QKButton::QKBT_TYPE layout) {
        this->SetImage(SkinFile(file), static_cast<QKButton::QKBT_IMGS>(frames), layout);
    }
    void PlaceAt(int x, int y) {
        this->SetRect(x, y, 0, 0);
        CRect frame;
        this->GetButtonRect(frame);
        this->SetRect(x, y, frame.Width(), frame.Height());
    }
};

using PushButton = ButtonOfSkin<QKButton>;
using TextButton = ButtonOfSkin<QKTextButton>;

}  // namespace gallery
