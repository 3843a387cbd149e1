#include "dialog/frame_screen.h"

#include "support/test_dialog.h"

namespace kit {

bool OpenFrameScreen() {
    return Headless::Use(640 * kScale, 480 * kScale, 96 * kScale) && SetScreenScale(kScale);
}

Headless::Picture Shown(HWND window) {
    Headless::RunPending();
    return Headless::Capture(window);
}

bool HasExactClock() {
    return true;
}

}  // namespace kit
