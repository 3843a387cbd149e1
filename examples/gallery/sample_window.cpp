#include "examples/gallery/sample_window.h"

#include "examples/gallery/resource.h"
#include "examples/gallery/shell.h"

namespace gallery {

SampleWindow::SampleWindow(Shell& shell, PushButton& opener, const DemoLooks& looks, const DemoLooks& onPage,
                           CPoint opensAt)
    : shell_(shell), opener_(opener), opensAt_(opensAt), window_(looks) {
    DemoWindow painter(onPage);
    if (painter.Prepare(&shell, CPoint())) picture_ = PictureOf(painter);
    opener_.Load(IDP_WIDE, 4);
    opener_.SetMouseMoveHand(1);
    opener_.OnClick([this] { Toggle(); });
    window_.closed = [this] {
        opener_.SetActive(0);
        shell_.UpdateView();
    };
}

void SampleWindow::Toggle() {
    if (window_.IsOpen())
        window_.Close();
    else
        opener_.SetActive(window_.Open(&shell_, shell_.ToScreen(opensAt_)));
    shell_.UpdateView();
}

}  // namespace gallery
