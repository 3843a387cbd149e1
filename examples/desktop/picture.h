// Pictures from files, as large as an icon.
#pragma once

#include <memory>
#include <string>

#include <QKUILib.h>

#include "examples/desktop/glib.h"

namespace desktop {

// Every icon and thumbnail is a square of this many pixels.
constexpr int kIconSide = 64;

using Pixels = Owned<GdkPixbuf>;
using Picture = std::shared_ptr<Gdiplus::Image>;

// A picture in its own aspect ratio, upright, within a square of `side` pixels, and not larger than it is
// unless it is drawn (SVG). Null for what is no picture, or one that would take too much memory. For any
// thread.
Pixels LoadPixels(const std::string& path, int side);

// In the middle of a transparent square.
Picture IconFrom(const Pixels& pixels);
// The same, framed like a photograph. The pixels leave room for the frame: see kThumbnailSide.
Picture ThumbnailFrom(const Pixels& pixels);
constexpr int kThumbnailSide = kIconSide - 8;

}  // namespace desktop
