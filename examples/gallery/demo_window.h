// A window that shows one ability of a dialog. The pages open them over and beside the gallery's own window.
#pragma once

#include <functional>

#include <QKUILib.h>

#include "examples/gallery/ink.h"
#include "examples/gallery/push_button.h"

namespace gallery {

struct DemoLooks {
    CSize size{280, 180};
    QKLayStyle style = LAY_NONE;
    int alpha = 255;
    CString background;  // a file; empty for none
    bool keepRatio = false;
    bool cached = false;
    bool filled = false;  // with `fill`, below the picture
    Gdiplus::Color fill;
    CSize corners{0, 0};   // width and height of the corners' ellipse; 0 leaves them square
    CPoint close{-1, -1};  // of the close button; none when negative
    bool catches = false;  // the whole window takes the pointer, transparent or not
    bool band = false;     // a rubber band instead of moving
};

class DemoWindow : public CQKDialogBase {
  public:
    explicit DemoWindow(const DemoLooks& looks);
    ~DemoWindow() override;

    // What is drawn above the background.
    std::function<void(Ink&)> draw;
    // Called when the window is gone, whoever closed it, and when it moved or was pressed by the pointer.
    std::function<void()> closed, moved, pressed;

    const DemoLooks& Looks() const { return looks_; }
    // An item of the window's own, registered each time it opens. It must outlive the window.
    void Add(PushButton* button);

    // Creates the window with its top left corner at a place on the screen, above its owner. False with the
    // last error; an open window is moved.
    bool Open(CWnd* owner, CPoint place);
    // The same, not shown: for a picture of it.
    bool Prepare(CWnd* owner, CPoint place);
    void Close();
    bool IsOpen() const { return IsWindow(m_hWnd) != FALSE; }

    BOOL OnInitDialog() override;
    void DrawSurface(HDC dc, int width, int height, int buffer) override;

  protected:
    // Closes the window and tells nobody: in the destructor of whoever owns items that it shows.
    void End();
    void OnDestroy();
    void OnMove(int x, int y);
    void OnLButtonDown(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

  private:
    void ApplyStyle();

    DemoLooks looks_;
    PushButton close_;
    CArray<PushButton*> added_;
};

// Paints a window as it would look, whether it is shown or not, cut to its corners.
std::unique_ptr<Gdiplus::Bitmap> PictureOf(DemoWindow& window);

}  // namespace gallery
