// Linked to each program of the pages: it runs on the screen in memory, where the windows that it waits with
// are looked at and closed, some times over; then it is told to quit. A program that showed nothing fails.
#include <QKUILib.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace {

int asked = 0;
bool shown = false;

void Close(void* /*unused*/) {
    constexpr int kMost = 6;
    const HWND window = GetActiveWindow();
    const Headless::Picture picture = Headless::Capture(window);
    const auto& pixels = picture.argb;
    if (std::adjacent_find(pixels.begin(), pixels.end(), std::not_equal_to<>()) != pixels.end()) shown = true;
    CString file;
    file.Format(u"/%d.png", asked);
    if (const char* folder = std::getenv("PICTURES")) picture.SavePng(FromUtf8(folder) + file);
    if (++asked < kMost) Headless::WhenIdle(&Close, nullptr);
    Headless::RequestClose(window);
}

const bool ready = [] {
    std::atexit([] {
        if (!shown) std::_Exit(99);
    });
    const bool used = Headless::Use(640, 480);
    Headless::WhenIdle(&Close, nullptr);
    return used;
}();

}  // namespace
