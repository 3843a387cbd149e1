#include "examples/gallery/demo_window.h"

#include <memory>

#include "examples/gallery/resource.h"

namespace gallery {
namespace {

constexpr COLORREF kKey = RGB(255, 0, 255);

// A bitmap in a context of its own.
class MemoryPicture {
  public:
    explicit MemoryPicture(CSize size)
        : context_(CreateCompatibleDC(HDC())), bitmap_(CreateCompatibleBitmap(HDC(), size.cx, size.cy)) {
        SelectObject(context_, bitmap_);
    }
    ~MemoryPicture() {
        DeleteDC(context_);
        DeleteObject(bitmap_);
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;

    HDC Context() const { return context_; }
    HBITMAP Bitmap() const { return bitmap_; }

  private:
    HDC context_;
    HBITMAP bitmap_;
};

}  // namespace

BEGIN_MESSAGE_MAP(DemoWindow, CQKDialogBase)
ON_WM_DESTROY()
ON_WM_MOVE()
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

DemoWindow::DemoWindow(const DemoLooks& looks) : CQKDialogBase(IDD_DEMO), looks_(looks) {
    if (looks.close.x < 0) return;
    close_.Load(IDP_CLOSE, 3);
    close_.SetMouseMoveHand(1);
    close_.PlaceAt(looks.close.x, looks.close.y);
    close_.OnClick([this] { CloseQKDlg(); });
    added_.Add(&close_);
}

DemoWindow::~DemoWindow() {
    End();
}

void DemoWindow::End() {
    closed = moved = pressed = nullptr;
    Close();
}

void DemoWindow::Add(PushButton* button) {
    added_.Add(button);
}

bool DemoWindow::Prepare(CWnd* owner, CPoint place) {
    if (!IsOpen() && !Create(IDD_DEMO, owner)) return false;
    SetWindowPos(HWND(), place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

bool DemoWindow::Open(CWnd* owner, CPoint place) {
    if (!Prepare(owner, place)) return false;
    ShowWindow(SW_SHOWNOACTIVATE);
    UpdateView();
    return true;
}

void DemoWindow::Close() {
    if (IsOpen()) DestroyWindow();
}

BOOL DemoWindow::OnInitDialog() {
    CQKDialogBase::OnInitDialog();
    SetWindowPos(HWND(), 0, 0, looks_.size.cx, looks_.size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowText(u"QKUILib demonstration");
    ApplyStyle();
    SetBack(looks_.background, looks_.keepRatio, looks_.cached);
    SetBackColor(looks_.fill, looks_.filled);
    if (looks_.corners.cx > 0) SetRngDlg(looks_.corners.cx, looks_.corners.cy);
    SetMouseTranOver(!looks_.catches);
    SetSelRect(looks_.band);
    SetNoMove(looks_.band);
    for (PushButton* button : added_)
        AddQKItem(button);
    return TRUE;
}

void DemoWindow::ApplyStyle() {
    switch (looks_.style) {
        case LAY_NONE:
            SetNoLayDlg();
            break;
        case LAY_COLORKEY:
            Set_COLORKEYDlg(kKey);
            break;
        case LAY_ALPHA:
            Set_ALPHADlg(looks_.alpha);
            break;
        case LAY_OPAQUE:
            Set_OPAQUEDlg(looks_.alpha);
            break;
    }
}

void DemoWindow::DrawSurface(HDC dc, int width, int height, int buffer) {
    CQKDialogBase::DrawSurface(dc, width, height, buffer);
    if (!draw) return;
    Ink ink(dc);
    draw(ink);
}

void DemoWindow::OnDestroy() {
    CQKDialogBase::OnDestroy();
    if (closed) closed();
}

void DemoWindow::OnMove(int x, int y) {
    CQKDialogBase::OnMove(x, y);
    if (moved) moved();
}

void DemoWindow::OnLButtonDown(UINT flags, CPoint point) {
    if (pressed) pressed();
    CQKDialogBase::OnLButtonDown(flags, point);
}

std::unique_ptr<Gdiplus::Bitmap> PictureOf(DemoWindow& window) {
    const DemoLooks& looks = window.Looks();
    const MemoryPicture picture(looks.size);
    if (looks.corners.cx > 0) {
        const HRGN shape =
            CreateRoundRectRgn(0, 0, looks.size.cx, looks.size.cy, looks.corners.cx, looks.corners.cy);
        SelectClipRgn(picture.Context(), shape);
        DeleteObject(shape);
    }
    window.DrawSurface(picture.Context(), looks.size.cx, looks.size.cy, 0);
    return std::make_unique<Gdiplus::Bitmap>(picture.Bitmap());
}

}  // namespace gallery
