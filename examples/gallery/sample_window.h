// A window that a page shows a picture of, and that a button on the page opens and closes.
#pragma once

#include <memory>

#include "examples/gallery/demo_window.h"
#include "examples/gallery/push_button.h"

namespace gallery {

class Shell;

class SampleWindow {
  public:
    // The picture is painted by a dialog with the looks `onPage` that is never shown. `opensAt` is in the
    // shell's client area. The opener, a button of the page, must outlive this.
    SampleWindow(Shell& shell, PushButton& opener, const DemoLooks& looks, const DemoLooks& onPage,
                 CPoint opensAt);
    SampleWindow(const SampleWindow&) = delete;
    SampleWindow& operator=(const SampleWindow&) = delete;

    Gdiplus::Bitmap* Picture() const { return picture_.get(); }  // null when it could not be painted
    PushButton& Opener() const { return opener_; }
    LPCWSTR Action() const { return window_.IsOpen() ? u"Close" : u"Open"; }  // of the opener

  private:
    void Toggle();

    Shell& shell_;
    PushButton& opener_;
    const CPoint opensAt_;
    DemoWindow window_;
    std::unique_ptr<Gdiplus::Bitmap> picture_;
};

}  // namespace gallery
