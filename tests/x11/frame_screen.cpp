// No window manager, so that what is asked of the server is done when the next answer comes; and a
// compositor, which keeps the pixels of windows apart.
#include "dialog/frame_screen.h"

#include <QKUILib.h>

#include <string>

#include "x11/x_session.h"

namespace kit {

namespace {

std::unique_ptr<xtest::XSession> session;

}  // namespace

bool OpenFrameScreen() {
    session = xtest::XSession::Start({.compositor = true});
    return session && session->MovePointer(1279, 799);
}

Headless::Picture Shown(HWND window) {
    const std::string title = "frame " + std::to_string(window.ToParam());
    SetWindowTextW(window, CString(title.c_str()));
    for (int round = 0; round < 2; ++round) {  // a window that is new, or of another size, asks for pixels
        Headless::RunPending();
        POINT at;
        GetCursorPos(&at);  // the server has answered: it has done all that came before
    }
    xtest::Picture seen = session->PixelsOf(session->FindByTitle(title));
    return {seen.width, seen.height, std::move(seen.pixels)};
}

bool HasExactClock() {
    return false;
}

}  // namespace kit
