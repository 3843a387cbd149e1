// The in-memory window system: a screen composed of windows, injected input and a clock that moves only
// when told to. For tests, servers and screenshots.
#pragma once

#include <cstdint>
#include <vector>

#include <platform/text.h>
#include <platform/types.h>

namespace Headless {

struct PLATFORM_API Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> argb;  // premultiplied, top-down

    // 0 outside the picture.
    std::uint32_t At(int x, int y) const;
    // Straight-alpha PNG. False when the file cannot be written.
    bool SavePng(const CString& path) const;
};

// Chooses this window system for the process, with a screen of the given size. Call it before the process's
// first window; later calls resize the screen and change nothing else. False when windows of another window
// system exist already.
PLATFORM_API bool Use(int screenWidth = 1280, int screenHeight = 800);

// Input. Coordinates are pixels of the screen; what the input causes is dispatched before the call returns.
PLATFORM_API void MovePointer(int x, int y);
PLATFORM_API void ButtonDown(int button = 1);  // 1 left, 2 middle, 3 right
PLATFORM_API void ButtonUp(int button = 1);
PLATFORM_API void KeyDown(UINT virtualKey);
PLATFORM_API void KeyUp(UINT virtualKey);
// The request that a window manager's close button makes.
PLATFORM_API void RequestClose(HWND window);

// Moves the clock step by step to each timer that falls due, and delivers what each causes.
PLATFORM_API void Advance(unsigned milliseconds);
// Dispatches until no message and no update region is left. Timers need Advance. A window that invalidates
// itself in every paint is given up on after a thousand paints in a row.
PLATFORM_API void RunPending();
// Runs `step` from inside the next wait of a loop (a modal dialog, GetMessageW) that has nothing else to do.
// Steps run in the order given, one per wait: this is how a test acts while DoModal blocks. A loop that
// would wait with neither a step nor a timer left ends as if WM_QUIT had come, instead of hanging.
PLATFORM_API void WhenIdle(void (*step)(void*), void* argument);

// What a window shows: its pixels as composed on the screen, before it is blended with what lies behind.
PLATFORM_API Picture Capture(HWND window);
PLATFORM_API Picture CaptureScreen();  // over an opaque 0xFF3A6EA5 desktop
// The resource identifier of the cursor shown (32512 arrow, 32649 hand).
PLATFORM_API UINT CursorShown();

}  // namespace Headless
