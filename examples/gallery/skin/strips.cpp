#include "examples/gallery/skin/strips.h"

namespace skin {

Canvas MakeStrip(PictureSize frame, int frames, Layout layout, const FramePainter& paint) {
    const bool vertical = layout == Layout::Vertical;
    Canvas strip(vertical ? frame.width : frame.width * frames,
                 vertical ? frame.height * frames : frame.height);
    for (int i = 0; i < frames; ++i) {
        // Each frame on a canvas of its own, so that no glow reaches into its neighbour.
        Canvas picture(frame.width, frame.height);
        paint(picture, static_cast<State>(i));
        strip.Draw(picture, vertical ? 0 : i * frame.width, vertical ? i * frame.height : 0);
    }
    return strip;
}

}  // namespace skin
