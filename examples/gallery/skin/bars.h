// Progress bars and scroll bars. Progress bars are stretched to their items; the parts of a thumb are not
// wider.
#pragma once

#include "examples/gallery/skin/strips.h"

namespace skin {

enum class ProgressLook { Dusk, Cool };
Canvas ProgressBack(PictureSize size);
Canvas ProgressBar(PictureSize size, ProgressLook look);

enum class ThumbPart { Top, Middle, Bottom };
FramePainter Thumb(ThumbPart part);
Canvas ScrollTrack();

}  // namespace skin
