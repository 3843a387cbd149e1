// A user of windows in memory.
#pragma once

#include "window/driver.h"

namespace windowtest {

class HeadlessDriver final : public Driver {
  public:
    void Move(int x, int y) override { Headless::MovePointer(x, y); }
    void Press(int button) override { Headless::ButtonDown(button); }
    void Release(int button) override { Headless::ButtonUp(button); }
    void KeyDown(UINT virtualKey) override { Headless::KeyDown(virtualKey); }
    void KeyUp(UINT virtualKey) override { Headless::KeyUp(virtualKey); }
    void RequestClose(HWND window) override { Headless::RequestClose(window); }
    void Settle() override { Headless::RunPending(); }
    void Pass(unsigned milliseconds) override { Headless::Advance(milliseconds); }
    bool HasExactClock() const override { return true; }
    Headless::Picture Screen() override { return Headless::CaptureScreen(); }
    void WhenBlocked(void (*act)(void*), void* argument) override { Headless::WhenIdle(act, argument); }
};

}  // namespace windowtest
