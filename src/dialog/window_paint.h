// One WM_PAINT of a window: from BeginPaint to EndPaint.
#pragma once

#include <platform/window.h>

namespace qkui {

class WindowPaint {
  public:
    explicit WindowPaint(HWND window) : window_(window), context_(BeginPaint(window, &paint_)) {}
    ~WindowPaint() { EndPaint(window_, &paint_); }
    WindowPaint(const WindowPaint&) = delete;
    WindowPaint& operator=(const WindowPaint&) = delete;
    HDC Context() const { return context_; }

  private:
    const HWND window_;
    PAINTSTRUCT paint_;
    const HDC context_;
};

}  // namespace qkui
