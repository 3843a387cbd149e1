// One WM_PAINT of a window: from BeginPaint to EndPaint.
#pragma once

#include <platform/window.h>

class QKWindowPaint {
  public:
    explicit QKWindowPaint(HWND window) : window_(window), context_(BeginPaint(window, &paint_)) {}
    ~QKWindowPaint() { EndPaint(window_, &paint_); }
    QKWindowPaint(const QKWindowPaint&) = delete;
    QKWindowPaint& operator=(const QKWindowPaint&) = delete;
    HDC Context() const { return context_; }

  private:
    const HWND window_;
    PAINTSTRUCT paint_;
    const HDC context_;
};
