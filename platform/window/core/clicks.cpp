#include "platform/window/core/clicks.h"

#include <cstdlib>

#include <platform/window.h>

#include "platform/window/core/control.h"
#include "platform/window/core/lasting.h"

namespace platform {

namespace {

constexpr UINT kDoubleClickTime = 500;  // milliseconds

// The last press that may become the first half of a double click.
struct FirstPress {
    HWND window;
    int button = 0;
    POINT screen{0, 0};
    std::uint64_t time = 0;
};

}  // namespace

bool IsDoubleClick(const event::Pointer& press, HWND target) {
    const FirstPress& first = Lasting<FirstPress>();
    return first.button == press.button && first.window == target && press.time >= first.time &&
           press.time - first.time <= kDoubleClickTime &&
           std::abs(press.screen.x - first.screen.x) * 2 <= kDoubleClickBox &&
           std::abs(press.screen.y - first.screen.y) * 2 <= kDoubleClickBox;
}

void NotePress(const event::Pointer& press, HWND target) {
    Lasting<FirstPress>() = {target, press.button, press.screen, press.time};
}

void ForgetLastClick() {
    ResetLasting<FirstPress>();
}

}  // namespace platform

using namespace platform;

UINT GetDoubleClickTime() {
    return kDoubleClickTime;
}
