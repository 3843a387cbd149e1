// A button with a closure behind its click, and the strips that the gallery's buttons are cut from.
#pragma once

#include <functional>

#include <QKUILib.h>

namespace gallery {

class PushButton : public QKButton {
  public:
    PushButton() = default;
    PushButton(const PushButton&) = delete;  // the callback holds on to this object
    PushButton& operator=(const PushButton&) = delete;

    // A vertical strip from the program's resources, placed with its top left corner at (x, y).
    void Load(UINT picture, int frames);
    // A strip from a file of the skin.
    void Load(const char* file, int frames, QKBT_TYPE layout);
    void PlaceAt(int x, int y);
    CRect Place() const;

    void OnClick(std::function<void()> action);

  private:
    std::function<void()> action_;
};

}  // namespace gallery
