// What a user does to windows and sees of them, whatever window system they live on. The contract suite
// speaks to this alone; each window system brings one driver.
#pragma once

#include <platform/headless.h>
#include <platform/window.h>

#include <memory>

namespace windowtest {

class Driver {
  public:
    virtual ~Driver() = default;
    // Screen coordinates. Each call returns when what it caused was dispatched.
    virtual void Move(int x, int y) = 0;
    virtual void Press(int button = 1) = 0;
    virtual void Release(int button = 1) = 0;
    virtual void KeyDown(UINT virtualKey) = 0;
    virtual void KeyUp(UINT virtualKey) = 0;
    void Click(int button = 1) {
        Press(button);
        Release(button);
    }
    void ClickAt(int x, int y, int button = 1) {
        Move(x, y);
        Click(button);
    }
    void Stroke(UINT virtualKey) {
        KeyDown(virtualKey);
        KeyUp(virtualKey);
    }
    virtual void RequestClose(HWND window) = 0;
    // Dispatches until nothing is left to come.
    virtual void Settle() = 0;
    // Lets time go by, dispatching.
    virtual void Pass(unsigned milliseconds) = 0;
    // Time goes by only in Pass. Otherwise the user needs some for everything.
    virtual bool HasExactClock() const = 0;
    // The pixels of the screen, alpha 255.
    virtual Headless::Picture Screen() = 0;
    // Runs `act` as the user while a modal loop of the next call blocks.
    virtual void WhenBlocked(void (*act)(void*), void* argument) = 0;
};

// Connects the process to its window system; null when that cannot be reached.
std::unique_ptr<Driver> MakeDriver();

}  // namespace windowtest
