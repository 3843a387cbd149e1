// A strip of equally sized frames in one picture, one frame for each state of a button.
#pragma once

#include <platform/geometry.h>

class QKButton;

namespace qkui {

struct PLATFORM_API SpriteStrip {
    int width;  // of the whole picture
    int height;
    int count;      // frames; at least 1
    bool vertical;  // stacked, or side by side

    // The size of one frame, rounded down.
    CSize FrameSize() const;
};

// What decides which frame a button shows. `status` is a QKItemBase::QK_STATUS.
struct SpriteState {
    int status;
    bool active;
    bool enabled;
};

// The distance in pixels from the strip's start to the frame that shows the state.
//
// The pressed frame starts at twice the rounded step, not at the rounded double of it. Side by side, an
// active button of four frames shows its hover frame under the pointer; stacked, it keeps its active frame.
PLATFORM_API int SpriteOffset(const SpriteStrip& strip, const SpriteState& state);

// The strip of a button that has a picture.
SpriteStrip StripOf(const QKButton& button);

// What a button draws now: a part of its strip and the place it goes to, both of one size. An empty source
// when there is nothing to draw.
struct Sprite {
    CRect source;
    CPoint destination;
    CRect Place() const { return {destination, source.Size()}; }
};
PLATFORM_API Sprite SpriteOf(const QKButton& button);

}  // namespace qkui
