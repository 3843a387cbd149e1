// What lies below all items of a dialog: a colour, and a picture on it.
#pragma once

#include <memory>

#include <platform/gdiplus.h>
#include <platform/geometry.h>

class QKNineParts;

namespace qkui {

class DisplayList;

// What a frame is composed on: pixels that it lies on top of, or some that it takes the place of.
enum class Under { Pixels, Nothing };

struct Background {
    Gdiplus::Image* picture;  // null: none
    QKNineParts& parts;       // of the picture; empty: it is one
    bool keepsRatio;
    bool fills;  // with the colour
    Gdiplus::ARGB color;

    void Draw(Gdiplus::Graphics& graphics, CSize client, Under under) const;
    // Whether drawing it on nothing leaves no pixel of the client as it was.
    bool Covers(CSize client) const;
    // Adds the numbers that it depends on to a step that was begun.
    void Record(DisplayList& list) const;
    // The client's pixels, upside down, as a per-pixel surface wants them.
    std::unique_ptr<Gdiplus::Bitmap> Render(CSize client) const;

  private:
    Gdiplus::Rect Source(CSize client) const;
};

}  // namespace qkui
