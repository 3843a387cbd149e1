// Strips of state frames, and the states that they show.
#pragma once

#include "examples/gallery/skin/canvas.h"
#include "examples/gallery/skin/skin_sizes.h"

namespace skin {

// In strip order: frame i of a strip shows State i.
enum class State { Normal, Over, Pressed, Active, Disabled };

enum class Layout { Vertical, Horizontal };

using FramePainter = std::function<void(Canvas&, State)>;

Canvas MakeStrip(PictureSize frame, int frames, Layout layout, const FramePainter& paint);

}  // namespace skin
