// A strip of equally sized frames in one picture, one frame for each state of a button.
#pragma once

#include <platform/geometry.h>

struct PLATFORM_API QKFrameStrip {
    int width;  // of the whole picture
    int height;
    int count;      // frames; at least 1
    bool vertical;  // stacked, or side by side

    // The size of one frame, rounded down.
    CSize FrameSize() const;
};

// What decides which frame a button shows. `status` is a QKItemBase::QK_STATUS.
struct QKFrameState {
    int status;
    bool active;
    bool enabled;
};

// The distance in pixels from the strip's start to the frame that shows the state.
//
// The pressed frame starts at twice the rounded step, not at the rounded double of it. Side by side, an
// active button of four frames shows its hover frame under the pointer; stacked, it keeps its active frame.
PLATFORM_API int QKFrameOffset(const QKFrameStrip& strip, const QKFrameState& state);
